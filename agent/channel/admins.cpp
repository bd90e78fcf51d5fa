#include "agent/channel/admins.h"

#include "agent/channel/adminservant.h"

namespace zk::agent {

using CosNotifyChannelAdmin::AdminID;
using CosNotifyChannelAdmin::AdminIDSeq;
using CosNotifyChannelAdmin::ConsumerAdmin;
using CosNotifyChannelAdmin::ConsumerAdmin_ptr;
using Guard = std::lock_guard<std::mutex>;

ConsumerAdmin_ptr Admins::open(const std::shared_ptr<SessionChannel>& channel,
                               CosNotifyChannelAdmin::InterFilterGroupOperator combination,
                               const QosValues& initial, AdminID& id) {
  const Guard guard(mutex_);
  if (entries_.size() >= parts_->settings.admins) {
    throw CORBA::IMP_LIMIT();
  }
  id = nextId_;
  auto admin = std::make_shared<Admin>(id, combination, parts_->settings, initial);
  const PortableServer::ServantBase_var servant = new AdminServant(channel, admin);
  Entry entry;
  const CORBA::Object_var object = parts_->home->open(servant.in(), entry.ticket);
  entry.reference = ConsumerAdmin::_narrow(object.in());
  entries_.emplace(id, entry);
  ++nextId_;
  return ConsumerAdmin::_duplicate(entry.reference.in());
}

ConsumerAdmin_ptr Admins::find(AdminID id) const {
  const Guard guard(mutex_);
  const auto found = entries_.find(id);
  if (found == entries_.end()) {
    throw CosNotifyChannelAdmin::AdminNotFound();
  }
  return ConsumerAdmin::_duplicate(found->second.reference.in());
}

AdminIDSeq* Admins::ids() const {
  const Guard guard(mutex_);
  CosNotifyChannelAdmin::AdminIDSeq_var list = new AdminIDSeq;
  list->length(static_cast<CORBA::ULong>(entries_.size()));
  CORBA::ULong next = 0;
  for (const auto& [id, entry] : entries_) {
    list[next++] = id;
  }
  return list._retn();
}

void Admins::close(AdminID id) {
  std::map<AdminID, Entry>::node_type closing;
  {
    const Guard guard(mutex_);
    closing = entries_.extract(id);
  }
  if (!closing.empty()) {
    parts_->home->close(closing.mapped().ticket);
  }
}

void Admins::closeAll() {
  std::map<AdminID, Entry> closing;
  {
    const Guard guard(mutex_);
    closing.swap(entries_);
  }
  for (const auto& [id, entry] : closing) {
    parts_->home->close(entry.ticket);
  }
}

}  // namespace zk::agent
