// The event channel, as clients call it. Safe on any thread.
#ifndef ZK_AGENT_CHANNEL_CHANNELSERVANT_H
#define ZK_AGENT_CHANNEL_CHANNELSERVANT_H

#include <memory>

#include "agent/channel/servantparts.h"

namespace zk::agent {

class SessionChannel;

// The consumer side alone: the EMS is the only supplier, and it comes by no
// proxy. Whatever belongs to suppliers or to the untyped event service is
// refused with NO_IMPLEMENT.
class ChannelServant : public QosPart<POA_CosNotifyChannelAdmin::EventChannel>,
                       public virtual PortableServer::RefCountServantBase {
 public:
  explicit ChannelServant(std::shared_ptr<SessionChannel> channel);

  // Nil: the session made the channel.
  CosNotifyChannelAdmin::EventChannelFactory_ptr MyFactory() override;
  CosNotifyChannelAdmin::ConsumerAdmin_ptr default_consumer_admin() override;
  CosNotifyFilter::FilterFactory_ptr default_filter_factory() override;
  CosNotifyChannelAdmin::ConsumerAdmin_ptr new_for_consumers(
      CosNotifyChannelAdmin::InterFilterGroupOperator combination,
      CosNotifyChannelAdmin::AdminID_out id) override;
  CosNotifyChannelAdmin::ConsumerAdmin_ptr get_consumeradmin(
      CosNotifyChannelAdmin::AdminID id) override;
  CosNotifyChannelAdmin::AdminIDSeq* get_all_consumeradmins() override;

  CosNotifyChannelAdmin::SupplierAdmin_ptr default_supplier_admin() override;
  CosNotifyChannelAdmin::SupplierAdmin_ptr new_for_suppliers(
      CosNotifyChannelAdmin::InterFilterGroupOperator combination,
      CosNotifyChannelAdmin::AdminID_out id) override;
  // There is none: AdminNotFound, and an empty list.
  CosNotifyChannelAdmin::SupplierAdmin_ptr get_supplieradmin(
      CosNotifyChannelAdmin::AdminID id) override;
  CosNotifyChannelAdmin::AdminIDSeq* get_all_supplieradmins() override;

  CosNotification::AdminProperties* get_admin() override;
  void set_admin(const CosNotification::AdminProperties& wanted) override;

  CosEventChannelAdmin::ConsumerAdmin_ptr for_consumers() override;
  CosEventChannelAdmin::SupplierAdmin_ptr for_suppliers() override;
  // The channel ends with its session: NO_PERMISSION.
  void destroy() override;

 protected:
  Qos& qos() override;

 private:
  const std::shared_ptr<SessionChannel> channel_;
};

}  // namespace zk::agent

#endif
