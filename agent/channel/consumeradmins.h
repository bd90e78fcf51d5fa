// The consumer admins of one session, as clients call them. Safe on any thread.
#ifndef ZK_AGENT_CHANNEL_CONSUMERADMINS_H
#define ZK_AGENT_CHANNEL_CONSUMERADMINS_H

#include <map>
#include <memory>

#include "agent/channel/qos.h"
#include "agent/channel/selection.h"
#include "agent/channel/settings.h"
#include "agent/orb/servanthome.h"
#include "zk_quornex/idl/channel.h"
#include "zk_quornex/platform/threadsafety.h"

namespace zk::agent {

class SessionChannel;

// What the proxies of one consumer admin share, and what they start with.
struct ProxyGroup {
  ProxyGroup(CosNotifyChannelAdmin::AdminID number,
             CosNotifyChannelAdmin::InterFilterGroupOperator filters,
             const ChannelSettings& settings, const QosValues& initial);

  const CosNotifyChannelAdmin::AdminID id;
  const CosNotifyChannelAdmin::InterFilterGroupOperator combination;
  const std::shared_ptr<Selection> selection;
  Qos qos;
};

class ConsumerAdmins {
 public:
  explicit ConsumerAdmins(std::shared_ptr<const ChannelParts> parts) : parts_(std::move(parts)) {}

  // The first one made has the id 0 and is the channel's default. Throws
  // CORBA::IMP_LIMIT when the session has as many as it may. The caller owns the
  // results.
  CosNotifyChannelAdmin::ConsumerAdmin_ptr open(
      const std::shared_ptr<SessionChannel>& channel,
      CosNotifyChannelAdmin::InterFilterGroupOperator combination, const QosValues& initial,
      CosNotifyChannelAdmin::AdminID& id);
  // Throws AdminNotFound.
  CosNotifyChannelAdmin::ConsumerAdmin_ptr find(CosNotifyChannelAdmin::AdminID id) const;
  CosNotifyChannelAdmin::AdminIDSeq* ids() const;

  void close(CosNotifyChannelAdmin::AdminID id);
  void closeAll();

 private:
  struct Entry {
    CosNotifyChannelAdmin::ConsumerAdmin_var reference;
    ServantHome::Ticket ticket = 0;
  };

  const std::shared_ptr<const ChannelParts> parts_;
  mutable Mutex mutex_;
  std::map<CosNotifyChannelAdmin::AdminID, Entry> entries_ ZK_GUARDED_BY(mutex_);
  CosNotifyChannelAdmin::AdminID nextId_ ZK_GUARDED_BY(mutex_) = 0;
};

}  // namespace zk::agent

#endif
