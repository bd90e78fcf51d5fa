#include "agent/channel/sessionchannel.h"

#include <utility>

#include "agent/base/log.h"
#include "agent/channel/losses.h"
#include "agent/channel/servants.h"

namespace zk::agent {

namespace {

using namespace CosNotifyChannelAdmin;

// The consumer side alone: the EMS is the only supplier, and it comes by no
// proxy. Whatever belongs to suppliers or to the untyped event service is
// refused with NO_IMPLEMENT.
class ChannelServant : public QosPart<POA_CosNotifyChannelAdmin::EventChannel>,
                       public virtual PortableServer::RefCountServantBase {
 public:
  explicit ChannelServant(std::shared_ptr<SessionChannel> channel) : channel_(std::move(channel)) {}

  // Nil: the session made the channel.
  EventChannelFactory_ptr MyFactory() override { return EventChannelFactory::_nil(); }
  ConsumerAdmin_ptr default_consumer_admin() override { return channel_->admins().find(0); }
  CosNotifyFilter::FilterFactory_ptr default_filter_factory() override {
    return channel_->filterFactory();
  }

  ConsumerAdmin_ptr new_for_consumers(InterFilterGroupOperator combination,
                                      AdminID_out id) override {
    AdminID number = 0;
    ConsumerAdmin_var admin =
        channel_->admins().open(channel_, combination, channel_->qos().values(), number);
    id = number;
    return admin._retn();
  }
  ConsumerAdmin_ptr get_consumeradmin(AdminID id) override { return channel_->admins().find(id); }
  AdminIDSeq* get_all_consumeradmins() override { return channel_->admins().ids(); }

  SupplierAdmin_ptr default_supplier_admin() override { throw CORBA::NO_IMPLEMENT(); }
  SupplierAdmin_ptr new_for_suppliers(InterFilterGroupOperator, AdminID_out) override {
    throw CORBA::NO_IMPLEMENT();
  }
  SupplierAdmin_ptr get_supplieradmin(AdminID) override { throw AdminNotFound(); }
  AdminIDSeq* get_all_supplieradmins() override { return new AdminIDSeq; }

  CosNotification::AdminProperties* get_admin() override { return channel_->properties().get(); }
  void set_admin(const CosNotification::AdminProperties& wanted) override {
    channel_->properties().check(wanted);
  }

  CosEventChannelAdmin::ConsumerAdmin_ptr for_consumers() override { throw CORBA::NO_IMPLEMENT(); }
  CosEventChannelAdmin::SupplierAdmin_ptr for_suppliers() override { throw CORBA::NO_IMPLEMENT(); }
  // The channel ends with its session.
  void destroy() override { throw CORBA::NO_PERMISSION(); }

 protected:
  Qos& qos() override { return channel_->qos(); }

 private:
  const std::shared_ptr<SessionChannel> channel_;
};

}  // namespace

SessionChannel::SessionChannel(std::shared_ptr<const ChannelParts> parts)
    : parts_(std::move(parts)),
      properties_(static_cast<CORBA::Long>(parts_->settings.proxies)),
      qos_(QosValues(), Qos::mostOf(parts_->settings)),
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
  const PortableServer::ServantBase_var factory = makeFilterFactory(self);
  AdminID id = 0;
  const ConsumerAdmin_var first = admins_.open(self, AND_OP, qos_.values(), id);
  const CORBA::Object_var factoryObject = parts_->home->open(factory.in(), factoryTicket_);
  filterFactory_ = CosNotifyFilter::FilterFactory::_narrow(factoryObject.in());
  const CORBA::Object_var channelObject = parts_->home->open(channel.in(), channelTicket_);
  reference_ = EventChannel::_narrow(channelObject.in());
}

EventChannel_ptr SessionChannel::reference() const {
  return EventChannel::_duplicate(reference_.in());
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
  if (proxies_.close(static_cast<ProxyID>(proxy), Proxy::Ending::BY_CLIENT)) {
    logFailure("session " + std::to_string(parts_->session) + ": push proxy " +
               std::to_string(proxy) + " destroyed: its consumer failed with " + why);
  }
}

}  // namespace zk::agent
