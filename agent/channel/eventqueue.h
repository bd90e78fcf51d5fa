// The events of one proxy, in the order in which the cache was offered them, for
// whoever delivers them. Safe on any thread.
#ifndef ZK_AGENT_CHANNEL_EVENTQUEUE_H
#define ZK_AGENT_CHANNEL_EVENTQUEUE_H

#include <memory>

#include "agent/channel/eventcache.h"
#include "agent/channel/gate.h"
#include "zk_quornex/idl/events.h"
#include "zk_quornex/platform/threadsafety.h"

namespace zk::agent {

class EventQueue {
 public:
  using Clock = Gate::Clock;
  using Batch = CosNotification::EventBatch;

  EventQueue(std::shared_ptr<Gate> gate, std::shared_ptr<EventSource> source);

  // A time that never comes.
  static Clock::time_point never();

  // Adds events to batch, which then holds up to most, and returns how many it
  // holds. Waits until then for it to hold atLeast; for events that the gate has
  // let in already in any case, as long as the cache's thread may need. Once the
  // client is gone, its gate is closed, the batch is emptied, and 0 is returned.
  CORBA::ULong fetch(CORBA::ULong most, Batch& batch, Clock::time_point until,
                     CORBA::ULong atLeast = 1);

 private:
  bool awaitList(Clock::time_point until) ZK_REQUIRES(mutex_);
  void take(CORBA::ULong most, Batch& batch) ZK_REQUIRES(mutex_);
  bool refill() ZK_REQUIRES(mutex_);
  CORBA::ULong left() const ZK_REQUIRES(mutex_) { return list_ ? list_->length() - at_ : 0; }

  const std::shared_ptr<Gate> gate_;
  const std::shared_ptr<EventSource> source_;

  Mutex mutex_;  // before the cache's locks; not held while waiting
  // One thread waits at the source, and it alone takes the next list; others wait
  // for it, so that none sleeps while another keeps what it could have.
  bool watched_ ZK_GUARDED_BY(mutex_) = false;
  Condition looked_;
  std::unique_ptr<notifications::EventList_T> list_ ZK_GUARDED_BY(mutex_);  // on its way out
  CORBA::ULong at_ ZK_GUARDED_BY(mutex_) = 0;
};

}  // namespace zk::agent

#endif
