#include "agent/channel/adminservant.h"

#include <utility>

#include "agent/channel/sessionchannel.h"

namespace zk::agent {

using namespace CosNotifyChannelAdmin;

AdminServant::AdminServant(std::shared_ptr<SessionChannel> channel, std::shared_ptr<Admin> admin)
    : channel_(std::move(channel)), admin_(std::move(admin)) {}

EventChannel_ptr AdminServant::MyChannel() { return channel_->reference(); }

Filters& AdminServant::filters() { return channel_->filters(); }

ProxyIDSeq* AdminServant::pull_suppliers() { return channel_->proxies().ids(admin_->id, false); }

ProxyIDSeq* AdminServant::push_suppliers() { return channel_->proxies().ids(admin_->id, true); }

ProxySupplier_ptr AdminServant::get_proxy_supplier(ProxyID id) {
  return channel_->proxies().find(admin_->id, id);
}

ProxySupplier_ptr AdminServant::obtain_notification_pull_supplier(ClientType type, ProxyID_out id) {
  return obtain(type, PULL_STRUCTURED, PULL_SEQUENCE, id);
}

ProxySupplier_ptr AdminServant::obtain_notification_push_supplier(ClientType type, ProxyID_out id) {
  return obtain(type, PUSH_STRUCTURED, PUSH_SEQUENCE, id);
}

ProxySupplier_ptr AdminServant::obtain(ClientType asked, ProxyType structured, ProxyType sequence,
                                       ProxyID_out id) {
  if (asked != STRUCTURED_EVENT && asked != SEQUENCE_EVENT) {
    throw CORBA::NO_IMPLEMENT();
  }
  ProxyID number = 0;
  ProxySupplier_var proxy = channel_->proxies().open(
      channel_, admin_, asked == STRUCTURED_EVENT ? structured : sequence, number);
  id = number;
  return proxy._retn();
}

void AdminServant::destroy() {
  if (admin_->id == 0) {
    throw CORBA::NO_PERMISSION();
  }
  channel_->admins().close(admin_->id);
  channel_->proxies().closeOf(admin_->id);
}

CosEventChannelAdmin::ProxyPushSupplier_ptr AdminServant::obtain_push_supplier() {
  throw CORBA::NO_IMPLEMENT();
}

CosEventChannelAdmin::ProxyPullSupplier_ptr AdminServant::obtain_pull_supplier() {
  throw CORBA::NO_IMPLEMENT();
}

}  // namespace zk::agent
