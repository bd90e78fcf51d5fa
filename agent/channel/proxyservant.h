// What the four kinds of proxies have in common, as clients call them. Safe on
// any thread.
#ifndef ZK_AGENT_CHANNEL_PROXYSERVANT_H
#define ZK_AGENT_CHANNEL_PROXYSERVANT_H

#include <memory>
#include <utility>

#include "agent/channel/offeredtypes.h"
#include "agent/channel/proxy.h"
#include "agent/channel/servantparts.h"
#include "agent/channel/sessionchannel.h"

namespace zk::agent {

template <class Skeleton>
class ProxyServant : public QosPart<Skeleton>,
                     public SelectionPart<Skeleton>,
                     public MappingPart<Skeleton>,
                     public virtual PortableServer::RefCountServantBase {
 public:
  ProxyServant(std::shared_ptr<SessionChannel> channel, std::shared_ptr<Proxy> proxy)
      : channel_(std::move(channel)), proxy_(std::move(proxy)) {}

  CosNotifyChannelAdmin::ProxyType MyType() override { return proxy_->type(); }
  CosNotifyChannelAdmin::ConsumerAdmin_ptr MyAdmin() override {
    return channel_->admins().find(proxy_->admin().id);
  }

  // What the EMS sends never changes: no consumer is ever called about it,
  // whatever the mode asks for.
  CosNotification::EventTypeSeq* obtain_offered_types(
      CosNotifyChannelAdmin::ObtainInfoMode mode) override {
    return offeredTypes(mode);
  }

  void validate_event_qos(const CosNotification::QoSProperties& wanted,
                          CosNotification::NamedPropertyRangeSeq_out available) override {
    available = validateEventQos(wanted);
  }

 protected:
  Qos& qos() override { return proxy_->qos(); }
  Selection& selection() override { return proxy_->selection(); }
  Filters& filters() override { return channel_->filters(); }

  const ChannelSettings& settings() const { return channel_->parts().settings; }
  Proxy& proxy() { return *proxy_; }

  // The client's own end of the proxy.
  void disconnect() {
    channel_->proxies().close(static_cast<CosNotifyChannelAdmin::ProxyID>(proxy_->number()),
                              Proxy::Ending::ByClient);
  }

 private:
  const std::shared_ptr<SessionChannel> channel_;
  const std::shared_ptr<Proxy> proxy_;
};

}  // namespace zk::agent

#endif
