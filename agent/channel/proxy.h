// One consumer's end of the channel: its state, its events, and what delivers
// them. Safe on any thread.
#ifndef ZK_AGENT_CHANNEL_PROXY_H
#define ZK_AGENT_CHANNEL_PROXY_H

#include <functional>
#include <memory>
#include <mutex>
#include <string>

#include "agent/channel/admin.h"
#include "agent/channel/channelparts.h"
#include "agent/channel/eventqueue.h"
#include "agent/channel/gate.h"
#include "agent/channel/pushtarget.h"
#include "agent/channel/qos.h"
#include "agent/channel/selection.h"

namespace zk::agent {

// Events come from connecting on. A push proxy delivers on a thread of its own,
// which ends soon after close(), at the latest when the call to its consumer
// does; nobody waits for it.
class Proxy : public std::enable_shared_from_this<Proxy> {
 public:
  using GivenUp = std::function<void(long number, const std::string& why)>;

  // givenUp is called once, on the push thread, when the consumer is given up.
  Proxy(std::shared_ptr<const ChannelParts> parts, std::shared_ptr<Admin> admin, long number,
        CosNotifyChannelAdmin::ProxyType type, GivenUp givenUp);

  long number() const { return number_; }
  CosNotifyChannelAdmin::ProxyType type() const { return type_; }
  bool isPush() const;
  const Admin& admin() const { return *admin_; }
  Selection& selection() { return *selection_; }
  Qos& qos() { return *qos_; }

  // These throw AlreadyConnected, OBJECT_NOT_EXIST once closed, NO_RESOURCES when
  // there is no thread; the proxy is of no use then. farewell tells the consumer that the channel
  // let go of it.
  void connectPush(const std::shared_ptr<PushTarget>& target);
  void connectPull(std::function<void()> farewell);

  // A suspended proxy keeps its events. These throw NotConnected,
  // ConnectionAlreadyInactive and ConnectionAlreadyActive.
  void suspend();
  void resume();

  // Up to most events, waiting for the first one if told to. They count as
  // delivered. Throws Disconnected, also when it is closed meanwhile.
  CORBA::ULong pull(CORBA::ULong most, CosNotification::EventBatch& batch, bool wait);

  // Events were lost before they came here.
  void miss(const std::string& time);

  // Drops its events and ends what delivers them. The consumer is told when the
  // agent is the one to end it.
  enum class Ending { ByClient, ByAgent };
  void close(Ending ending);

 private:
  enum class State { Fresh, Connected, Closed };

  void connect(std::function<void()> farewell);  // needs the mutex
  void checkConnected() const;                   // likewise
  void deliver(const std::shared_ptr<PushTarget>& target);

  const std::shared_ptr<const ChannelParts> parts_;
  const std::shared_ptr<Admin> admin_;
  const long number_;
  const CosNotifyChannelAdmin::ProxyType type_;
  const GivenUp givenUp_;
  const std::shared_ptr<Selection> selection_;
  const std::shared_ptr<Qos> qos_;
  const std::shared_ptr<Gate> gate_;

  mutable std::mutex mutex_;  // before the cache's locks
  State state_ = State::Fresh;
  std::function<void()> farewell_;
  std::shared_ptr<CacheClient> client_;
  std::shared_ptr<EventQueue> queue_;
};

}  // namespace zk::agent

#endif
