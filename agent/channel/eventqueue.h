// The events of one proxy, in the order in which the cache was offered them, for
// whoever delivers them. Safe on any thread.
#ifndef ZK_AGENT_CHANNEL_EVENTQUEUE_H
#define ZK_AGENT_CHANNEL_EVENTQUEUE_H

#include <condition_variable>
#include <memory>
#include <mutex>

#include "agent/channel/eventcache.h"
#include "agent/channel/gate.h"
#include "zk_quornex/idl/events.h"

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
  using Lock = std::unique_lock<std::mutex>;

  // These need the mutex.
  bool awaitList(Lock& lock, Clock::time_point until);
  void take(CORBA::ULong most, Batch& batch);
  bool refill();
  CORBA::ULong left() const { return list_ ? list_->length() - at_ : 0; }

  const std::shared_ptr<Gate> gate_;
  const std::shared_ptr<EventSource> source_;

  std::mutex mutex_;  // before the cache's locks; not held while waiting
  // One thread waits at the source, and it alone takes the next list; others wait
  // for it, so that none sleeps while another keeps what it could have.
  bool watched_ = false;
  std::condition_variable looked_;
  std::unique_ptr<notifications::EventList_T> list_;  // on its way out
  CORBA::ULong at_ = 0;
};

}  // namespace zk::agent

#endif
