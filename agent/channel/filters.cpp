#include "agent/channel/filters.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>

#include "agent/base/log.h"
#include "agent/channel/sessionchannel.h"
#include "agent/constraint/eventtypes.h"

namespace zk::agent {

namespace {

using CosNotification::StructuredEvent;
using CosNotifyFilter::ConstraintExp;
using CosNotifyFilter::ConstraintExpSeq;
using CosNotifyFilter::ConstraintID;
using CosNotifyFilter::ConstraintIDSeq;
using CosNotifyFilter::ConstraintInfoSeq;
using CosNotifyFilter::ConstraintInfoSeq_var;

constexpr const char* GRAMMAR = "EXTENDED_TCL";  // spoken here, and no other

void append(ConstraintInfoSeq& list, ConstraintID id, const ConstraintExp& expression) {
  const CORBA::ULong last = list.length();
  list.length(last + 1);
  list[last].constraint_id = id;
  list[last].constraint_expression = expression;
}

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

ConstraintList::ConstraintList(const ChannelSettings& settings,
                               DynamicAny::DynAnyFactory_ptr factory)
    : mostConstraints_(settings.constraints),
      mostEventTypes_(settings.eventTypes),
      factory_(DynamicAny::DynAnyFactory::_duplicate(factory)) {}

ConstraintList::Entry ConstraintList::parse(const ConstraintExp& expression) const {
  if (expression.event_types.length() > mostEventTypes_) {
    throw CORBA::IMP_LIMIT();
  }
  try {
    const std::string text(expression.constraint_expr);
    return {expression, Constraint::parse(text, factory_.in())};
  } catch (const InvalidConstraintText& wrong) {
    logCourse(std::string("a filter's constraint was refused: ") + wrong.what());
    throw CosNotifyFilter::InvalidConstraint(expression);
  }
}

ConstraintInfoSeq* ConstraintList::add(const ConstraintExpSeq& added) {
  ConstraintInfoSeq_var result = new ConstraintInfoSeq(added.length());
  const MutexLock guard(mutex_);
  auto changed = std::make_shared<Entries>(*entries_);
  ConstraintID id = lastId_;
  for (CORBA::ULong i = 0; i < added.length(); ++i) {
    if (changed->size() >= mostConstraints_) {
      throw CORBA::IMP_LIMIT();
    }
    changed->emplace(++id, parse(added[i]));
    append(result.inout(), id, added[i]);
  }
  lastId_ = id;
  entries_ = std::move(changed);
  return result._retn();
}

void ConstraintList::modify(const ConstraintIDSeq& removed, const ConstraintInfoSeq& infos) {
  const MutexLock guard(mutex_);
  auto changed = std::make_shared<Entries>(*entries_);
  for (CORBA::ULong i = 0; i < removed.length(); ++i) {
    if (changed->erase(removed[i]) == 0) {
      throw CosNotifyFilter::ConstraintNotFound(removed[i]);
    }
  }
  for (CORBA::ULong i = 0; i < infos.length(); ++i) {
    const auto found = changed->find(infos[i].constraint_id);
    if (found == changed->end()) {
      throw CosNotifyFilter::ConstraintNotFound(infos[i].constraint_id);
    }
    found->second = parse(infos[i].constraint_expression);
  }
  entries_ = std::move(changed);
}

void ConstraintList::removeAll() {
  const MutexLock guard(mutex_);
  entries_ = std::make_shared<Entries>();
}

std::shared_ptr<const ConstraintList::Entries> ConstraintList::current() const {
  const MutexLock guard(mutex_);
  return entries_;
}

ConstraintInfoSeq* ConstraintList::get(const ConstraintIDSeq& ids) const {
  const auto entries = current();
  ConstraintInfoSeq_var result = new ConstraintInfoSeq;
  for (CORBA::ULong i = 0; i < ids.length(); ++i) {
    const auto found = entries->find(ids[i]);
    if (found == entries->end()) {
      throw CosNotifyFilter::ConstraintNotFound(ids[i]);
    }
    append(result.inout(), found->first, found->second.expression);
  }
  return result._retn();
}

ConstraintInfoSeq* ConstraintList::getAll() const {
  const auto entries = current();
  ConstraintInfoSeq_var result = new ConstraintInfoSeq;
  for (const auto& [id, entry] : *entries) {
    append(result.inout(), id, entry.expression);
  }
  return result._retn();
}

bool ConstraintList::matches(const StructuredEvent& event) const {
  const auto entries = current();
  return std::any_of(entries->begin(), entries->end(), [&](const auto& item) {
    const Entry& entry = item.second;
    return matchesEventTypes(entry.expression.event_types, event.header.fixed_header.event_type) &&
           entry.constraint->matches(event);
  });
}

CosNotifyFilter::Filter_ptr Filters::make(const std::shared_ptr<SessionChannel>& channel) {
  const MutexLock guard(mutex_);
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
