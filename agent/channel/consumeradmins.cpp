#include "agent/channel/consumeradmins.h"

#include <utility>

#include "agent/channel/servants.h"
#include "agent/channel/sessionchannel.h"

namespace zk::agent {

namespace {

using namespace CosNotifyChannelAdmin;

// Hands out proxies for structured events and sequences of them, each a consumer
// of its own. Untyped ones are not offered.
class ConsumerAdminServant : public QosPart<POA_CosNotifyChannelAdmin::ConsumerAdmin>,
                             public SelectionPart<POA_CosNotifyChannelAdmin::ConsumerAdmin>,
                             public MappingPart<POA_CosNotifyChannelAdmin::ConsumerAdmin>,
                             public virtual PortableServer::RefCountServantBase {
 public:
  ConsumerAdminServant(std::shared_ptr<SessionChannel> channel, std::shared_ptr<ProxyGroup> group)
      : channel_(std::move(channel)), group_(std::move(group)) {}

  AdminID MyID() override { return group_->id; }
  EventChannel_ptr MyChannel() override { return channel_->reference(); }
  InterFilterGroupOperator MyOperator() override { return group_->combination; }

  ProxyIDSeq* pull_suppliers() override { return channel_->proxies().ids(group_->id, false); }
  ProxyIDSeq* push_suppliers() override { return channel_->proxies().ids(group_->id, true); }
  ProxySupplier_ptr get_proxy_supplier(ProxyID id) override {
    return channel_->proxies().find(group_->id, id);
  }
  ProxySupplier_ptr obtain_notification_pull_supplier(ClientType type, ProxyID_out id) override {
    return obtain(type, PULL_STRUCTURED, PULL_SEQUENCE, id);
  }
  ProxySupplier_ptr obtain_notification_push_supplier(ClientType type, ProxyID_out id) override {
    return obtain(type, PUSH_STRUCTURED, PUSH_SEQUENCE, id);
  }

  // Ends its proxies, too. The default admin stays as long as its channel.
  void destroy() override {
    if (group_->id == 0) {
      throw CORBA::NO_PERMISSION();
    }
    channel_->admins().close(group_->id);
    channel_->proxies().closeOf(group_->id);
  }

  CosEventChannelAdmin::ProxyPushSupplier_ptr obtain_push_supplier() override {
    throw CORBA::NO_IMPLEMENT();
  }
  CosEventChannelAdmin::ProxyPullSupplier_ptr obtain_pull_supplier() override {
    throw CORBA::NO_IMPLEMENT();
  }

 protected:
  Qos& qos() override { return group_->qos; }
  Selection& selection() override { return *group_->selection; }
  Filters& filters() override { return channel_->filters(); }

 private:
  ProxySupplier_ptr obtain(ClientType asked, ProxyType structured, ProxyType sequence,
                           ProxyID_out id) {
    if (asked != STRUCTURED_EVENT && asked != SEQUENCE_EVENT) {
      throw CORBA::NO_IMPLEMENT();
    }
    ProxyID number = 0;
    ProxySupplier_var proxy = channel_->proxies().open(
        channel_, group_, asked == STRUCTURED_EVENT ? structured : sequence, number);
    id = number;
    return proxy._retn();
  }

  const std::shared_ptr<SessionChannel> channel_;
  const std::shared_ptr<ProxyGroup> group_;
};

}  // namespace

ProxyGroup::ProxyGroup(AdminID number, InterFilterGroupOperator filters,
                       const ChannelSettings& settings, const QosValues& initial)
    : id(number),
      combination(filters),
      selection(std::make_shared<Selection>(settings)),
      qos(initial, Qos::mostOf(settings)) {}

ConsumerAdmin_ptr ConsumerAdmins::open(const std::shared_ptr<SessionChannel>& channel,
                                       InterFilterGroupOperator combination,
                                       const QosValues& initial, AdminID& id) {
  const MutexLock guard(mutex_);
  if (entries_.size() >= parts_->settings.admins) {
    throw CORBA::IMP_LIMIT();
  }
  id = nextId_;
  auto group = std::make_shared<ProxyGroup>(id, combination, parts_->settings, initial);
  const PortableServer::ServantBase_var servant = new ConsumerAdminServant(channel, group);
  Entry entry;
  const CORBA::Object_var object = parts_->home->open(servant.in(), entry.ticket);
  entry.reference = ConsumerAdmin::_narrow(object.in());
  entries_.emplace(id, entry);
  ++nextId_;
  return ConsumerAdmin::_duplicate(entry.reference.in());
}

ConsumerAdmin_ptr ConsumerAdmins::find(AdminID id) const {
  const MutexLock guard(mutex_);
  const auto found = entries_.find(id);
  if (found == entries_.end()) {
    throw AdminNotFound();
  }
  return ConsumerAdmin::_duplicate(found->second.reference.in());
}

AdminIDSeq* ConsumerAdmins::ids() const {
  const MutexLock guard(mutex_);
  AdminIDSeq_var list = new AdminIDSeq;
  list->length(static_cast<CORBA::ULong>(entries_.size()));
  CORBA::ULong next = 0;
  for (const auto& [id, entry] : entries_) {
    list[next++] = id;
  }
  return list._retn();
}

void ConsumerAdmins::close(AdminID id) {
  std::map<AdminID, Entry>::node_type closing;
  {
    const MutexLock guard(mutex_);
    closing = entries_.extract(id);
  }
  if (!closing.empty()) {
    parts_->home->close(closing.mapped().ticket);
  }
}

void ConsumerAdmins::closeAll() {
  std::map<AdminID, Entry> closing;
  {
    const MutexLock guard(mutex_);
    closing.swap(entries_);
  }
  for (const auto& [id, entry] : closing) {
    parts_->home->close(entry.ticket);
  }
}

}  // namespace zk::agent
