// The proxies of one session, over all its admins. Safe on any thread.
#ifndef ZK_AGENT_CHANNEL_PROXIES_H
#define ZK_AGENT_CHANNEL_PROXIES_H

#include <functional>
#include <map>
#include <memory>
#include <mutex>

#include "agent/channel/channelparts.h"
#include "agent/channel/proxy.h"

namespace zk::agent {

class SessionChannel;

class Proxies {
 public:
  explicit Proxies(std::shared_ptr<const ChannelParts> parts) : parts_(std::move(parts)) {}

  // Makes a proxy and its servant. Throws AdminLimitExceeded when the session has
  // as many as it may, OBJECT_NOT_EXIST once closed. The caller owns the result.
  CosNotifyChannelAdmin::ProxySupplier_ptr open(const std::shared_ptr<SessionChannel>& channel,
                                                const std::shared_ptr<Admin>& admin,
                                                CosNotifyChannelAdmin::ProxyType type,
                                                CosNotifyChannelAdmin::ProxyID& id);

  // Throws ProxyNotFound unless the admin has it.
  CosNotifyChannelAdmin::ProxySupplier_ptr find(CosNotifyChannelAdmin::AdminID admin,
                                                CosNotifyChannelAdmin::ProxyID id) const;
  CosNotifyChannelAdmin::ProxyIDSeq* ids(CosNotifyChannelAdmin::AdminID admin, bool push) const;
  std::size_t count() const;

  // Calls for each proxy, under the mutex.
  void forEach(const std::function<void(Proxy&)>& visit) const;

  // Returns whether it was there.
  bool close(CosNotifyChannelAdmin::ProxyID id, Proxy::Ending ending);
  void closeOf(CosNotifyChannelAdmin::AdminID admin);
  // None opens any more.
  void closeAll();

 private:
  struct Entry {
    std::shared_ptr<Proxy> proxy;
    CosNotifyChannelAdmin::ProxySupplier_var reference;
    ServantHome::Ticket ticket = 0;
  };
  using Entries = std::map<CosNotifyChannelAdmin::ProxyID, Entry>;

  CosNotifyChannelAdmin::ProxyID freeId();  // needs the mutex
  void end(const Entry& entry, Proxy::Ending ending);

  const std::shared_ptr<const ChannelParts> parts_;
  mutable std::mutex mutex_;
  Entries entries_;
  CosNotifyChannelAdmin::ProxyID lastId_ = 0;
  bool closed_ = false;
};

}  // namespace zk::agent

#endif
