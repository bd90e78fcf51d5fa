// The library's event cache as this agent uses it: how proxies are numbered as its
// clients, which of them are still to be served, and the one way in and out. Safe
// on any thread.
#ifndef ZK_AGENT_CHANNEL_EVENTCACHE_H
#define ZK_AGENT_CHANNEL_EVENTCACHE_H

#include <atomic>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "agent/channel/gate.h"
#include "zk_quornex/idl/events.h"
#include "zk_quornex/messages/listsignal.h"
#include "zk_quornex/platform/services.h"
#include "zk_quornex/platform/threadsafety.h"

namespace zk::agent {

// The session's id is in the upper bits, so that the cache's question about a
// client is one about its session. Proxy numbers run from 1 to 65535.
constexpr long PROXIES_PER_SESSION = 65536;

constexpr long clientIdOf(long session, long proxy) {
  return session * PROXIES_PER_SESSION + proxy;
}
constexpr long sessionOf(long clientId) { return clientId / PROXIES_PER_SESSION; }

// Answers the event cache from the live sessions: what a dead session left in the
// cache is gone with the next event.
class ClientValidity : public NS_SECURITY_SERVICE1::SecurityIF {
 public:
  // isAlive is asked for every client on every event, under locks of the cache:
  // it must be quick and must not call into the cache.
  explicit ClientValidity(std::function<bool(long session)> isAlive)
      : isAlive_(std::move(isAlive)) {}

  bool IsClientValid(long clientId, long, const char*, const char*, const char*) override {
    return isAlive_(sessionOf(clientId));
  }

 private:
  const std::function<bool(long)> isAlive_;
};

class EventCache {
 public:
  // Events of every type go into this message class, one of the two that the
  // manager starts with: the cache keeps an order among the events of one class
  // only, and a client costs a thread in each class. 10 and not 8, so that the
  // cache's class for alarms never holds anything else.
  static constexpr long MESSAGE_CLASS = 10;

  // Offers the event to the gates, and a copy of it to the clients of those that
  // let it in; there is no copy when no gate wants its type. Called by one thread
  // at a time. When the validity service is missing, the message class is out of
  // use for good, as the cache says, and so it is here: nothing more is pushed to
  // it, and nobody waits for its lock.
  // What it throws, for lack of memory, leaves open who has the event.
  void push(const CosNotification::StructuredEvent& event);

  // Tells the events apart that are pushed, for the rules of the gates.
  std::uint64_t turn() const { return turn_; }

  // Events flow through the gate from now on. The signal tells of them, and of
  // the client's end; never null. Throws CORBA::NO_RESOURCES without a thread for
  // the client.
  std::shared_ptr<NS_QUORCORBA::NXListSignal> subscribe(long client,
                                                        const std::shared_ptr<Gate>& gate);
  // The client's events are dropped. Waits for the client's thread, not for any
  // consumer. An unknown client is fine.
  void unsubscribe(long client);

  // All events kept for the client, oldest first; null when the cache is out of
  // use and when the client is gone.
  std::unique_ptr<notifications::EventList_T> takeList(long client);

 private:
  using Gates = std::vector<std::pair<long, std::shared_ptr<Gate>>>;

  Gates wanting(const CosNotification::EventType& type) const;
  void offer(std::unique_ptr<CosNotification::StructuredEvent> event,
             const AdmittedClients& admitted);

  std::atomic<bool> blocked_{false};
  std::atomic<std::uint64_t> turn_{0};
  mutable Mutex mutex_;  // before the gates'; not held while the cache is called
  std::map<long, std::shared_ptr<Gate>> gates_ ZK_GUARDED_BY(mutex_);
};

// One client's events, for whoever delivers them.
class EventSource {
 public:
  using State = NS_QUORCORBA::NXListSignal::State;

  virtual ~EventSource() = default;
  // Waits for events, for the client's end, or until then.
  virtual State wait(Gate::Clock::time_point until) = 0;
  // All events kept, oldest first; null when there are none any more.
  virtual std::unique_ptr<notifications::EventList_T> takeList() = 0;
  // How many events will never be in a list, though they came in, since it was
  // asked last; wait tells when there are any.
  virtual unsigned long takeMissed() { return 0; }
};

// One client of the cache, from its making to end().
class CacheClient : public EventSource {
 public:
  CacheClient(std::shared_ptr<EventCache> cache, long client, const std::shared_ptr<Gate>& gate);
  ~CacheClient() override;
  CacheClient(const CacheClient&) = delete;
  CacheClient& operator=(const CacheClient&) = delete;

  State wait(Gate::Clock::time_point until) override;
  std::unique_ptr<notifications::EventList_T> takeList() override;
  unsigned long takeMissed() override { return signal_->takeMissed(); }
  // Ends every wait at once. May be called again.
  void end();

 private:
  const std::shared_ptr<EventCache> cache_;
  const long client_;
  const std::shared_ptr<NS_QUORCORBA::NXListSignal> signal_;
  std::atomic<bool> ended_{false};
};

}  // namespace zk::agent

#endif
