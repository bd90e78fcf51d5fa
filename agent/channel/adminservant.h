// A consumer admin, as clients call it. Safe on any thread.
#ifndef ZK_AGENT_CHANNEL_ADMINSERVANT_H
#define ZK_AGENT_CHANNEL_ADMINSERVANT_H

#include <memory>

#include "agent/channel/admin.h"
#include "agent/channel/servantparts.h"

namespace zk::agent {

class SessionChannel;

// Hands out proxies for structured events and sequences of them, each a consumer
// of its own. Untyped ones are not offered.
class AdminServant : public QosPart<POA_CosNotifyChannelAdmin::ConsumerAdmin>,
                     public SelectionPart<POA_CosNotifyChannelAdmin::ConsumerAdmin>,
                     public MappingPart<POA_CosNotifyChannelAdmin::ConsumerAdmin>,
                     public virtual PortableServer::RefCountServantBase {
 public:
  AdminServant(std::shared_ptr<SessionChannel> channel, std::shared_ptr<Admin> admin);

  CosNotifyChannelAdmin::AdminID MyID() override { return admin_->id; }
  CosNotifyChannelAdmin::EventChannel_ptr MyChannel() override;
  CosNotifyChannelAdmin::InterFilterGroupOperator MyOperator() override {
    return admin_->combination;
  }

  CosNotifyChannelAdmin::ProxyIDSeq* pull_suppliers() override;
  CosNotifyChannelAdmin::ProxyIDSeq* push_suppliers() override;
  CosNotifyChannelAdmin::ProxySupplier_ptr get_proxy_supplier(
      CosNotifyChannelAdmin::ProxyID id) override;
  CosNotifyChannelAdmin::ProxySupplier_ptr obtain_notification_pull_supplier(
      CosNotifyChannelAdmin::ClientType type, CosNotifyChannelAdmin::ProxyID_out id) override;
  CosNotifyChannelAdmin::ProxySupplier_ptr obtain_notification_push_supplier(
      CosNotifyChannelAdmin::ClientType type, CosNotifyChannelAdmin::ProxyID_out id) override;

  // Ends its proxies, too. The default admin stays as long as its channel:
  // NO_PERMISSION.
  void destroy() override;

  CosEventChannelAdmin::ProxyPushSupplier_ptr obtain_push_supplier() override;
  CosEventChannelAdmin::ProxyPullSupplier_ptr obtain_pull_supplier() override;

 protected:
  Qos& qos() override { return admin_->qos; }
  Selection& selection() override { return *admin_->selection; }
  Filters& filters() override;

 private:
  CosNotifyChannelAdmin::ProxySupplier_ptr obtain(CosNotifyChannelAdmin::ClientType asked,
                                                  CosNotifyChannelAdmin::ProxyType structured,
                                                  CosNotifyChannelAdmin::ProxyType sequence,
                                                  CosNotifyChannelAdmin::ProxyID_out id);

  const std::shared_ptr<SessionChannel> channel_;
  const std::shared_ptr<Admin> admin_;
};

}  // namespace zk::agent

#endif
