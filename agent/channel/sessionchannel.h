// The event channel of one session: everything that its NMS made of it, and the
// end of it all. Safe on any thread.
#ifndef ZK_AGENT_CHANNEL_SESSIONCHANNEL_H
#define ZK_AGENT_CHANNEL_SESSIONCHANNEL_H

#include <memory>
#include <string>

#include "agent/channel/consumeradmins.h"
#include "agent/channel/filters.h"
#include "agent/channel/proxies.h"
#include "agent/channel/qos.h"
#include "agent/channel/settings.h"

namespace zk::agent {

// Its servants keep it alive; whoever opened it closes it.
class SessionChannel : public std::enable_shared_from_this<SessionChannel> {
 public:
  static std::shared_ptr<SessionChannel> open(std::shared_ptr<const ChannelParts> parts);

  // The caller owns the results.
  CosNotifyChannelAdmin::EventChannel_ptr reference() const;
  CosNotifyFilter::FilterFactory_ptr filterFactory() const;

  // Ends every proxy and takes every servant away. Waits for no consumer: the
  // push threads end on their own, consumers are told on others. Calls that
  // wait for events end with Disconnected. May be called again.
  void close();

  // Tells every proxy that events were lost before they came to it.
  void miss(const std::string& time);

  // For the servants.
  const ChannelParts& parts() const { return *parts_; }
  Qos& qos() { return qos_; }
  const FixedProperties& properties() const { return properties_; }
  Filters& filters() { return filters_; }
  ConsumerAdmins& admins() { return admins_; }
  Proxies& proxies() { return proxies_; }
  Proxy::GivenUp whenGivenUp();

 private:
  explicit SessionChannel(std::shared_ptr<const ChannelParts> parts);
  void activate();
  void giveUp(long proxy, const std::string& why);

  const std::shared_ptr<const ChannelParts> parts_;
  const FixedProperties properties_;
  Qos qos_;
  Filters filters_;
  ConsumerAdmins admins_;
  Proxies proxies_;

  // Set once, by open.
  CosNotifyChannelAdmin::EventChannel_var reference_;
  CosNotifyFilter::FilterFactory_var filterFactory_;
  ServantHome::Ticket channelTicket_ = 0;
  ServantHome::Ticket factoryTicket_ = 0;
};

}  // namespace zk::agent

#endif
