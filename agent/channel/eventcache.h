// The library's event cache as this agent uses it: alarms in class 8, everything
// else in class 10, each proxy a client of both. Safe on any thread.
#ifndef ZK_AGENT_CHANNEL_EVENTCACHE_H
#define ZK_AGENT_CHANNEL_EVENTCACHE_H

#include <array>
#include <atomic>
#include <memory>

#include "agent/channel/gate.h"
#include "zk_quornex/idl/events.h"

namespace zk::agent {

// The client's lists, for whoever delivers from them.
class ListSource {
 public:
  virtual ~ListSource() = default;
  // All events kept of this kind, oldest first; never null.
  virtual std::unique_ptr<notifications::EventList_T> takeList(EventKind kind) = 0;
};

class EventCache {
 public:
  // Offers a copy of the event to every client. When the validity service is
  // missing, the event's class is out of use for good, as the cache says, and so
  // it is here: nothing more is pushed to it, and nobody waits for its lock.
  void push(const CosNotification::StructuredEvent& event);

  // Events flow to the gate from now on.
  void subscribe(long client, const std::shared_ptr<Gate>& gate);
  // The client's events are dropped. Waits for the client's threads, not for any
  // consumer. An unknown client is fine.
  void unsubscribe(long client);

  std::unique_ptr<notifications::EventList_T> takeList(EventKind kind, long client);

 private:
  bool isUsable(EventKind kind) const { return !blocked_[indexOf(kind)].load(); }

  std::array<std::atomic<bool>, EVENT_KINDS> blocked_{};
};

// One client of the cache, from its making to end().
class CacheClient : public ListSource {
 public:
  CacheClient(std::shared_ptr<EventCache> cache, long client, const std::shared_ptr<Gate>& gate);
  ~CacheClient() override;
  CacheClient(const CacheClient&) = delete;
  CacheClient& operator=(const CacheClient&) = delete;

  std::unique_ptr<notifications::EventList_T> takeList(EventKind kind) override;
  void end();

 private:
  const std::shared_ptr<EventCache> cache_;
  const long client_;
};

}  // namespace zk::agent

#endif
