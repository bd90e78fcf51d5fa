#include "agent/channel/filters.h"

#include <cstring>
#include <utility>

#include "agent/channel/sessionchannel.h"

namespace zk::agent {

namespace {

using CosNotification::StructuredEvent;
using CosNotifyFilter::ConstraintExpSeq;
using CosNotifyFilter::ConstraintIDSeq;
using CosNotifyFilter::ConstraintInfoSeq;

constexpr const char* GRAMMAR = "EXTENDED_TCL";  // spoken here, and no other

// Only structured events are filtered here; callbacks, which tell suppliers what
// is wanted, have nobody to tell.
class FilterServant : public virtual POA_CosNotifyFilter::Filter,
                      public virtual PortableServer::RefCountServantBase {
 public:
  FilterServant(std::shared_ptr<SessionChannel> channel,
                std::shared_ptr<ConstraintList> constraints)
      : channel_(std::move(channel)), constraints_(std::move(constraints)) {}

  // Called once, before any client knows the filter.
  void setTicket(ServantHome::Ticket ticket) { ticket_ = ticket; }

  char* constraint_grammar() override { return CORBA::string_dup(GRAMMAR); }
  ConstraintInfoSeq* add_constraints(const ConstraintExpSeq& list) override {
    return constraints_->add(list);
  }
  void modify_constraints(const ConstraintIDSeq& removed,
                          const ConstraintInfoSeq& changed) override {
    constraints_->modify(removed, changed);
  }
  ConstraintInfoSeq* get_constraints(const ConstraintIDSeq& ids) override {
    return constraints_->get(ids);
  }
  ConstraintInfoSeq* get_all_constraints() override { return constraints_->getAll(); }
  void remove_all_constraints() override { constraints_->removeAll(); }
  void destroy() override { channel_->filters().close(ticket_); }

  CORBA::Boolean match(const CORBA::Any&) override {
    throw CosNotifyFilter::UnsupportedFilterableData();
  }
  CORBA::Boolean match_structured(const StructuredEvent& data) override {
    return constraints_->matches(data);
  }
  CORBA::Boolean match_typed(const CosNotification::PropertySeq&) override {
    throw CosNotifyFilter::UnsupportedFilterableData();
  }

  CosNotifyFilter::CallbackID attach_callback(CosNotifyComm::NotifySubscribe_ptr) override {
    throw CORBA::NO_IMPLEMENT();
  }
  void detach_callback(CosNotifyFilter::CallbackID) override {
    throw CosNotifyFilter::CallbackNotFound();
  }
  CosNotifyFilter::CallbackIDSeq* get_callbacks() override {
    return new CosNotifyFilter::CallbackIDSeq;
  }

 private:
  const std::shared_ptr<SessionChannel> channel_;
  const std::shared_ptr<ConstraintList> constraints_;
  ServantHome::Ticket ticket_ = 0;
};

class FilterFactoryServant : public virtual POA_CosNotifyFilter::FilterFactory,
                             public virtual PortableServer::RefCountServantBase {
 public:
  explicit FilterFactoryServant(std::shared_ptr<SessionChannel> channel)
      : channel_(std::move(channel)) {}

  CosNotifyFilter::Filter_ptr create_filter(const char* grammar) override {
    if (std::strcmp(grammar, GRAMMAR) != 0) {
      throw CosNotifyFilter::InvalidGrammar();
    }
    return channel_->filters().make(channel_);
  }
  CosNotifyFilter::MappingFilter_ptr create_mapping_filter(const char*,
                                                           const CORBA::Any&) override {
    throw CORBA::NO_IMPLEMENT();
  }

 private:
  const std::shared_ptr<SessionChannel> channel_;
};

}  // namespace

CosNotifyFilter::Filter_ptr Filters::make(const std::shared_ptr<SessionChannel>& channel) {
  const MutexLock guard(mutex_);
  if (filters_.size() >= parts_->settings.filters) {
    throw CORBA::IMP_LIMIT();
  }
  auto constraints =
      std::make_shared<ConstraintList>(parts_->settings, parts_->constraints, parts_->kept);
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
  const MutexLock guard(mutex_);
  for (const auto& [ticket, filter] : filters_) {
    if (!CORBA::is_nil(reference) && filter.reference->_is_equivalent(reference)) {
      return filter;
    }
  }
  throw CORBA::BAD_PARAM();
}

void Filters::close(ServantHome::Ticket ticket) {
  {
    const MutexLock guard(mutex_);
    filters_.erase(ticket);
  }
  parts_->home->close(ticket);
}

void Filters::closeAll() {
  std::map<ServantHome::Ticket, FilterObject> closing;
  {
    const MutexLock guard(mutex_);
    closing.swap(filters_);
  }
  for (const auto& [ticket, filter] : closing) {
    parts_->home->close(ticket);
  }
}

PortableServer::Servant makeFilterFactory(std::shared_ptr<SessionChannel> channel) {
  return new FilterFactoryServant(std::move(channel));
}

}  // namespace zk::agent
