#include "agent/channel/filterservant.h"

#include <cstring>
#include <utility>

#include "agent/channel/sessionchannel.h"

namespace zk::agent {

namespace {

constexpr const char* GRAMMAR = "EXTENDED_TCL";

}  // namespace

FilterServant::FilterServant(std::shared_ptr<SessionChannel> channel,
                             std::shared_ptr<ConstraintList> constraints)
    : channel_(std::move(channel)), constraints_(std::move(constraints)) {}

char* FilterServant::constraint_grammar() { return CORBA::string_dup(GRAMMAR); }

CosNotifyFilter::ConstraintInfoSeq* FilterServant::add_constraints(
    const CosNotifyFilter::ConstraintExpSeq& list) {
  return constraints_->add(list);
}

void FilterServant::modify_constraints(const CosNotifyFilter::ConstraintIDSeq& removed,
                                       const CosNotifyFilter::ConstraintInfoSeq& changed) {
  constraints_->modify(removed, changed);
}

CosNotifyFilter::ConstraintInfoSeq* FilterServant::get_constraints(
    const CosNotifyFilter::ConstraintIDSeq& ids) {
  return constraints_->get(ids);
}

CosNotifyFilter::ConstraintInfoSeq* FilterServant::get_all_constraints() {
  return constraints_->getAll();
}

void FilterServant::remove_all_constraints() { constraints_->removeAll(); }

void FilterServant::destroy() { channel_->filters().close(ticket_); }

CORBA::Boolean FilterServant::match(const CORBA::Any&) {
  throw CosNotifyFilter::UnsupportedFilterableData();
}

CORBA::Boolean FilterServant::match_structured(const CosNotification::StructuredEvent& data) {
  return constraints_->matches(data);
}

CORBA::Boolean FilterServant::match_typed(const CosNotification::PropertySeq&) {
  throw CosNotifyFilter::UnsupportedFilterableData();
}

CosNotifyFilter::CallbackID FilterServant::attach_callback(CosNotifyComm::NotifySubscribe_ptr) {
  throw CORBA::NO_IMPLEMENT();
}

void FilterServant::detach_callback(CosNotifyFilter::CallbackID) {
  throw CosNotifyFilter::CallbackNotFound();
}

CosNotifyFilter::CallbackIDSeq* FilterServant::get_callbacks() {
  return new CosNotifyFilter::CallbackIDSeq;
}

FilterFactoryServant::FilterFactoryServant(std::shared_ptr<SessionChannel> channel)
    : channel_(std::move(channel)) {}

CosNotifyFilter::Filter_ptr FilterFactoryServant::create_filter(const char* grammar) {
  if (std::strcmp(grammar, GRAMMAR) != 0) {
    throw CosNotifyFilter::InvalidGrammar();
  }
  return channel_->filters().make(channel_);
}

CosNotifyFilter::MappingFilter_ptr FilterFactoryServant::create_mapping_filter(const char*,
                                                                               const CORBA::Any&) {
  throw CORBA::NO_IMPLEMENT();
}

}  // namespace zk::agent
