// The proxies of one session, over all its admins: each one consumer's end of the
// channel, with its state, its events, and what delivers them. Safe on any thread.
#ifndef ZK_AGENT_CHANNEL_PROXIES_H
#define ZK_AGENT_CHANNEL_PROXIES_H

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "agent/channel/consumeradmins.h"
#include "agent/channel/eventqueue.h"
#include "agent/channel/pusher.h"
#include "agent/channel/qos.h"
#include "agent/channel/selection.h"
#include "agent/channel/settings.h"
#include "zk_quornex/platform/threadsafety.h"

namespace zk::agent {

class SessionChannel;

// Events come from connecting on. A push proxy delivers on a thread of its own,
// which ends soon after close(), at the latest when the call to its consumer
// does; nobody waits for it.
class Proxy : public std::enable_shared_from_this<Proxy> {
 public:
  using GivenUp = std::function<void(long number, const std::string& why)>;

  // givenUp is called once, on the push thread, when the consumer is given up; for
  // lack of memory also by the thread that pulls.
  Proxy(std::shared_ptr<const ChannelParts> parts, std::shared_ptr<ProxyGroup> group, long number,
        CosNotifyChannelAdmin::ProxyType type, GivenUp givenUp);

  long number() const { return number_; }
  CosNotifyChannelAdmin::ProxyType type() const { return type_; }
  bool isPush() const;
  const ProxyGroup& group() const { return *group_; }
  Selection& selection() { return *selection_; }
  Qos& qos() { return *qos_; }

  // These throw AlreadyConnected, OBJECT_NOT_EXIST once closed, NO_RESOURCES when
  // there is no thread, or the session has as many as it may; the proxy is of no
  // use then. farewell tells the consumer
  // that the channel let go of it.
  void connectPush(const std::shared_ptr<PushTarget>& target);
  void connectPull(std::function<void()> farewell);

  // A suspended proxy keeps its events. These throw NotConnected,
  // ConnectionAlreadyInactive and ConnectionAlreadyActive.
  void suspend();
  void resume();

  // Up to most events, waiting for the first one if told to. They count as
  // delivered. Throws Disconnected, also when it is closed meanwhile, and NO_MEMORY,
  // which ends the proxy and is a loss.
  CORBA::ULong pull(CORBA::ULong most, CosNotification::EventBatch& batch, bool wait);

  // Events were lost before they came here.
  void miss(const std::string& time);

  // Drops its events and ends what delivers them. The consumer is told when the
  // agent is the one to end it.
  enum class Ending { BY_CLIENT, BY_AGENT };
  void close(Ending ending);

 private:
  enum class State { FRESH, CONNECTED, CLOSED };

  void connect(std::function<void()> farewell) ZK_REQUIRES(mutex_);
  void checkConnected() const ZK_REQUIRES(mutex_);
  void deliver(const std::shared_ptr<PushTarget>& target);
  // Returns why the consumer was given up; "" once the proxy is closed.
  std::string pushAll(const std::shared_ptr<PushTarget>& target);
  void loseEvents() noexcept;
  void giveUp(const std::string& why) noexcept;

  const std::shared_ptr<const ChannelParts> parts_;
  const std::shared_ptr<ProxyGroup> group_;
  const long number_;
  const CosNotifyChannelAdmin::ProxyType type_;
  const GivenUp givenUp_;
  const std::shared_ptr<Selection> selection_;
  const std::shared_ptr<Qos> qos_;
  const std::shared_ptr<Gate> gate_;

  mutable Mutex mutex_;  // before the cache's locks
  State state_ ZK_GUARDED_BY(mutex_) = State::FRESH;
  std::function<void()> farewell_ ZK_GUARDED_BY(mutex_);
  std::shared_ptr<CacheClient> client_ ZK_GUARDED_BY(mutex_);
  std::shared_ptr<EventQueue> queue_ ZK_GUARDED_BY(mutex_);
};

class Proxies {
 public:
  explicit Proxies(std::shared_ptr<const ChannelParts> parts) : parts_(std::move(parts)) {}

  // Makes a proxy and its servant. Throws AdminLimitExceeded when the session has
  // as many as it may, OBJECT_NOT_EXIST once closed. The caller owns the result.
  CosNotifyChannelAdmin::ProxySupplier_ptr open(const std::shared_ptr<SessionChannel>& channel,
                                                const std::shared_ptr<ProxyGroup>& group,
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

  CosNotifyChannelAdmin::ProxyID freeId() ZK_REQUIRES(mutex_);
  void end(const Entry& entry, Proxy::Ending ending);

  const std::shared_ptr<const ChannelParts> parts_;
  mutable Mutex mutex_;
  Entries entries_ ZK_GUARDED_BY(mutex_);
  CosNotifyChannelAdmin::ProxyID lastId_ ZK_GUARDED_BY(mutex_) = 0;
  bool closed_ ZK_GUARDED_BY(mutex_) = false;
};

}  // namespace zk::agent

#endif
