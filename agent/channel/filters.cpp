#include "agent/channel/filters.h"

#include "agent/channel/filterservant.h"

namespace zk::agent {

CosNotifyFilter::Filter_ptr Filters::make(const std::shared_ptr<SessionChannel>& channel) {
  const std::lock_guard<std::mutex> guard(mutex_);
  if (filters_.size() >= parts_->settings.filters) {
    throw CORBA::IMP_LIMIT();
  }
  auto constraints = std::make_shared<ConstraintList>(parts_->settings, parts_->dynAnys.in());
  auto* const servant = new FilterServant(channel, constraints);
  const PortableServer::ServantBase_var owner = servant;
  ServantHome::Ticket ticket = 0;
  const CORBA::Object_var object = parts_->home->open(servant, ticket);
  servant->setTicket(ticket);
  FilterObject filter{CosNotifyFilter::Filter::_narrow(object.in()), constraints};
  filters_.emplace(ticket, filter);
  return filter.reference._retn();
}

FilterObject Filters::find(CosNotifyFilter::Filter_ptr reference) const {
  const std::lock_guard<std::mutex> guard(mutex_);
  for (const auto& [ticket, filter] : filters_) {
    if (!CORBA::is_nil(reference) && filter.reference->_is_equivalent(reference)) {
      return filter;
    }
  }
  throw CORBA::BAD_PARAM();
}

void Filters::close(ServantHome::Ticket ticket) {
  {
    const std::lock_guard<std::mutex> guard(mutex_);
    filters_.erase(ticket);
  }
  parts_->home->close(ticket);
}

void Filters::closeAll() {
  std::map<ServantHome::Ticket, FilterObject> closing;
  {
    const std::lock_guard<std::mutex> guard(mutex_);
    closing.swap(filters_);
  }
  for (const auto& [ticket, filter] : closing) {
    parts_->home->close(ticket);
  }
}

}  // namespace zk::agent
