#include "agent/channel/proxies.h"

#include "agent/channel/clientids.h"
#include "agent/channel/propertychecks.h"
#include "agent/channel/proxyservants.h"
#include "agent/channel/sessionchannel.h"

namespace zk::agent {

using CosNotifyChannelAdmin::AdminID;
using CosNotifyChannelAdmin::ProxyID;
using CosNotifyChannelAdmin::ProxyIDSeq;
using CosNotifyChannelAdmin::ProxyIDSeq_var;
using CosNotifyChannelAdmin::ProxySupplier;
using CosNotifyChannelAdmin::ProxySupplier_ptr;
using Guard = std::lock_guard<std::mutex>;

namespace {

constexpr ProxyID MOST_ID = static_cast<ProxyID>(PROXIES_PER_SESSION - 1);

}  // namespace

ProxySupplier_ptr Proxies::open(const std::shared_ptr<SessionChannel>& channel,
                                const std::shared_ptr<Admin>& admin,
                                CosNotifyChannelAdmin::ProxyType type, ProxyID& id) {
  const Guard guard(mutex_);
  if (closed_) {
    throw CORBA::OBJECT_NOT_EXIST();
  }
  if (entries_.size() >= parts_->settings.proxies) {
    CosNotifyChannelAdmin::AdminLimit limit;
    limit.name = CORBA::string_dup("MaxConsumers");
    limit.value = anyOf(static_cast<CORBA::Long>(parts_->settings.proxies));
    throw CosNotifyChannelAdmin::AdminLimitExceeded(limit);
  }
  id = freeId();
  Entry entry;
  entry.proxy = std::make_shared<Proxy>(parts_, admin, id, type, channel->whenGivenUp());
  const PortableServer::ServantBase_var servant = makeProxyServant(channel, entry.proxy);
  const CORBA::Object_var object = parts_->home->open(servant.in(), entry.ticket);
  entry.reference = ProxySupplier::_narrow(object.in());
  entries_.emplace(id, entry);
  return ProxySupplier::_duplicate(entry.reference.in());
}

// Not one that was used lately, as long as there are others: a late call by a
// client must not meet another proxy.
ProxyID Proxies::freeId() {
  do {
    lastId_ = lastId_ % MOST_ID + 1;
  } while (entries_.count(lastId_) != 0);
  return lastId_;
}

ProxySupplier_ptr Proxies::find(AdminID admin, ProxyID id) const {
  const Guard guard(mutex_);
  const auto found = entries_.find(id);
  if (found == entries_.end() || found->second.proxy->admin().id != admin) {
    throw CosNotifyChannelAdmin::ProxyNotFound();
  }
  return ProxySupplier::_duplicate(found->second.reference.in());
}

ProxyIDSeq* Proxies::ids(AdminID admin, bool push) const {
  const Guard guard(mutex_);
  ProxyIDSeq_var list = new ProxyIDSeq;
  for (const auto& [id, entry] : entries_) {
    if (entry.proxy->admin().id == admin && entry.proxy->isPush() == push) {
      const CORBA::ULong last = list->length();
      list->length(last + 1);
      list[last] = id;
    }
  }
  return list._retn();
}

std::size_t Proxies::count() const {
  const Guard guard(mutex_);
  return entries_.size();
}

void Proxies::forEach(const std::function<void(Proxy&)>& visit) const {
  const Guard guard(mutex_);
  for (const auto& [id, entry] : entries_) {
    visit(*entry.proxy);
  }
}

bool Proxies::close(ProxyID id, Proxy::Ending ending) {
  Entries::node_type closing;
  {
    const Guard guard(mutex_);
    closing = entries_.extract(id);
  }
  if (closing.empty()) {
    return false;
  }
  end(closing.mapped(), ending);
  return true;
}

void Proxies::closeOf(AdminID admin) {
  for (const bool push : {true, false}) {
    ProxyIDSeq_var closing = ids(admin, push);
    for (CORBA::ULong i = 0; i < closing->length(); ++i) {
      close(closing[i], Proxy::Ending::ByAgent);
    }
  }
}

void Proxies::closeAll() {
  Entries closing;
  {
    const Guard guard(mutex_);
    closed_ = true;
    closing.swap(entries_);
  }
  for (const auto& [id, entry] : closing) {
    end(entry, Proxy::Ending::ByAgent);
  }
}

// First the events: a call in progress ends then, too.
void Proxies::end(const Entry& entry, Proxy::Ending ending) {
  entry.proxy->close(ending);
  parts_->home->close(entry.ticket);
}

}  // namespace zk::agent
