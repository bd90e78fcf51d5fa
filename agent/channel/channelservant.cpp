#include "agent/channel/channelservant.h"

#include <utility>

#include "agent/channel/sessionchannel.h"

namespace zk::agent {

using namespace CosNotifyChannelAdmin;

ChannelServant::ChannelServant(std::shared_ptr<SessionChannel> channel)
    : channel_(std::move(channel)) {}

Qos& ChannelServant::qos() { return channel_->qos(); }

EventChannelFactory_ptr ChannelServant::MyFactory() { return EventChannelFactory::_nil(); }

ConsumerAdmin_ptr ChannelServant::default_consumer_admin() { return channel_->admins().find(0); }

CosNotifyFilter::FilterFactory_ptr ChannelServant::default_filter_factory() {
  return channel_->filterFactory();
}

ConsumerAdmin_ptr ChannelServant::new_for_consumers(InterFilterGroupOperator combination,
                                                    AdminID_out id) {
  AdminID number = 0;
  ConsumerAdmin_var admin =
      channel_->admins().open(channel_, combination, channel_->qos().values(), number);
  id = number;
  return admin._retn();
}

ConsumerAdmin_ptr ChannelServant::get_consumeradmin(AdminID id) {
  return channel_->admins().find(id);
}

AdminIDSeq* ChannelServant::get_all_consumeradmins() { return channel_->admins().ids(); }

SupplierAdmin_ptr ChannelServant::default_supplier_admin() { throw CORBA::NO_IMPLEMENT(); }

SupplierAdmin_ptr ChannelServant::new_for_suppliers(InterFilterGroupOperator, AdminID_out) {
  throw CORBA::NO_IMPLEMENT();
}

SupplierAdmin_ptr ChannelServant::get_supplieradmin(AdminID) { throw AdminNotFound(); }

AdminIDSeq* ChannelServant::get_all_supplieradmins() { return new AdminIDSeq; }

CosNotification::AdminProperties* ChannelServant::get_admin() {
  return channel_->adminValues().get();
}

void ChannelServant::set_admin(const CosNotification::AdminProperties& wanted) {
  channel_->adminValues().check(wanted);
}

CosEventChannelAdmin::ConsumerAdmin_ptr ChannelServant::for_consumers() {
  throw CORBA::NO_IMPLEMENT();
}

CosEventChannelAdmin::SupplierAdmin_ptr ChannelServant::for_suppliers() {
  throw CORBA::NO_IMPLEMENT();
}

void ChannelServant::destroy() { throw CORBA::NO_PERMISSION(); }

}  // namespace zk::agent
