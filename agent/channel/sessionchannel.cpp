#include "agent/channel/sessionchannel.h"

#include <utility>

#include "agent/base/log.h"
#include "agent/channel/channelservant.h"
#include "agent/channel/filterservant.h"

namespace zk::agent {

SessionChannel::SessionChannel(std::shared_ptr<const ChannelParts> parts)
    : parts_(std::move(parts)),
      adminValues_(static_cast<CORBA::Long>(parts_->settings.proxies)),
      qos_(QosValues(), Admin::mostOf(parts_->settings)),
      filters_(parts_),
      admins_(parts_),
      proxies_(parts_) {}

std::shared_ptr<SessionChannel> SessionChannel::open(std::shared_ptr<const ChannelParts> parts) {
  std::shared_ptr<SessionChannel> channel(new SessionChannel(std::move(parts)));
  channel->activate();
  return channel;
}

void SessionChannel::activate() {
  const auto self = shared_from_this();
  const PortableServer::ServantBase_var channel = new ChannelServant(self);
  const PortableServer::ServantBase_var factory = new FilterFactoryServant(self);
  CosNotifyChannelAdmin::AdminID id = 0;
  const CosNotifyChannelAdmin::ConsumerAdmin_var first =
      admins_.open(self, CosNotifyChannelAdmin::AND_OP, qos_.values(), id);
  const CORBA::Object_var factoryObject = parts_->home->open(factory.in(), factoryTicket_);
  filterFactory_ = CosNotifyFilter::FilterFactory::_narrow(factoryObject.in());
  const CORBA::Object_var channelObject = parts_->home->open(channel.in(), channelTicket_);
  reference_ = CosNotifyChannelAdmin::EventChannel::_narrow(channelObject.in());
}

CosNotifyChannelAdmin::EventChannel_ptr SessionChannel::reference() const {
  return CosNotifyChannelAdmin::EventChannel::_duplicate(reference_.in());
}

CosNotifyFilter::FilterFactory_ptr SessionChannel::filterFactory() const {
  return CosNotifyFilter::FilterFactory::_duplicate(filterFactory_.in());
}

void SessionChannel::close() {
  parts_->losses->close();
  proxies_.closeAll();
  admins_.closeAll();
  filters_.closeAll();
  parts_->home->close(factoryTicket_);
  parts_->home->close(channelTicket_);
}

void SessionChannel::miss(const std::string& time) {
  proxies_.forEach([&](Proxy& proxy) { proxy.miss(time); });
}

Proxy::GivenUp SessionChannel::whenGivenUp() {
  return [weak = weak_from_this()](long proxy, const std::string& why) {
    if (const auto self = weak.lock()) {
      self->giveUp(proxy, why);
    }
  };
}

void SessionChannel::giveUp(long proxy, const std::string& why) {
  if (proxies_.close(static_cast<CosNotifyChannelAdmin::ProxyID>(proxy), Proxy::Ending::ByClient)) {
    logFailure("session " + std::to_string(parts_->session) + ": push proxy " +
               std::to_string(proxy) + " destroyed: its consumer failed with " + why);
  }
}

}  // namespace zk::agent
