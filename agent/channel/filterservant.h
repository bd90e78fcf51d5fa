// Filter objects and their factory, as clients call them. Safe on any thread.
#ifndef ZK_AGENT_CHANNEL_FILTERSERVANT_H
#define ZK_AGENT_CHANNEL_FILTERSERVANT_H

#include <memory>

#include "agent/channel/constraintlist.h"
#include "agent/orb/servanthome.h"
#include "zk_quornex/idl/channel.h"
#include "zk_quornex/idl/events.h"

namespace zk::agent {

class SessionChannel;

// Only structured events are filtered here; callbacks, which tell suppliers what
// is wanted, have nobody to tell.
class FilterServant : public virtual POA_CosNotifyFilter::Filter,
                      public virtual PortableServer::RefCountServantBase {
 public:
  FilterServant(std::shared_ptr<SessionChannel> channel,
                std::shared_ptr<ConstraintList> constraints);

  // Called once, before any client knows the filter.
  void setTicket(ServantHome::Ticket ticket) { ticket_ = ticket; }

  char* constraint_grammar() override;
  CosNotifyFilter::ConstraintInfoSeq* add_constraints(
      const CosNotifyFilter::ConstraintExpSeq& list) override;
  void modify_constraints(const CosNotifyFilter::ConstraintIDSeq& removed,
                          const CosNotifyFilter::ConstraintInfoSeq& changed) override;
  CosNotifyFilter::ConstraintInfoSeq* get_constraints(
      const CosNotifyFilter::ConstraintIDSeq& ids) override;
  CosNotifyFilter::ConstraintInfoSeq* get_all_constraints() override;
  void remove_all_constraints() override;
  void destroy() override;

  CORBA::Boolean match(const CORBA::Any& data) override;
  CORBA::Boolean match_structured(const CosNotification::StructuredEvent& data) override;
  CORBA::Boolean match_typed(const CosNotification::PropertySeq& data) override;

  CosNotifyFilter::CallbackID attach_callback(CosNotifyComm::NotifySubscribe_ptr callback) override;
  void detach_callback(CosNotifyFilter::CallbackID callback) override;
  CosNotifyFilter::CallbackIDSeq* get_callbacks() override;

 private:
  const std::shared_ptr<SessionChannel> channel_;
  const std::shared_ptr<ConstraintList> constraints_;
  ServantHome::Ticket ticket_ = 0;
};

class FilterFactoryServant : public virtual POA_CosNotifyFilter::FilterFactory,
                             public virtual PortableServer::RefCountServantBase {
 public:
  explicit FilterFactoryServant(std::shared_ptr<SessionChannel> channel);

  // EXTENDED_TCL alone is spoken here.
  CosNotifyFilter::Filter_ptr create_filter(const char* grammar) override;
  CosNotifyFilter::MappingFilter_ptr create_mapping_filter(const char* grammar,
                                                           const CORBA::Any& value) override;

 private:
  const std::shared_ptr<SessionChannel> channel_;
};

}  // namespace zk::agent

#endif
