// The events of one proxy, in the order in which the cache was offered them, for
// whoever delivers them. Safe on any thread.
#ifndef ZK_AGENT_CHANNEL_EVENTQUEUE_H
#define ZK_AGENT_CHANNEL_EVENTQUEUE_H

#include <array>
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

  EventQueue(std::shared_ptr<Gate> gate, std::shared_ptr<ListSource> source);

  // One step, which never waits: adds events that have arrived in the cache's lists
  // to batch, which then holds up to most, and returns how many were added.
  CORBA::ULong take(CORBA::ULong most, Batch& batch);

  // Puts up to most events into batch, in place of what it held, and returns how
  // many. Waits until then for at least so many; for events that the gate has let
  // in already in any case, as long as the cache's thread may need. 0 also once
  // the gate is closed.
  CORBA::ULong fetch(CORBA::ULong most, Batch& batch, Clock::time_point until,
                     CORBA::ULong atLeast = 1);

 private:
  // A list on its way out, and when the next may be asked for.
  struct Kept {
    std::unique_ptr<notifications::EventList_T> list;
    CORBA::ULong at = 0;
    Clock::time_point nextAt{};

    CORBA::ULong left() const { return list ? list->length() - at : 0; }
  };

  // These need the mutex.
  bool refill(EventKind kind);
  bool handOverWhole(Kept& kept, CORBA::ULong length, Batch& batch);

  const std::shared_ptr<Gate> gate_;
  const std::shared_ptr<ListSource> source_;
  std::mutex mutex_;
  std::array<Kept, EVENT_KINDS> kept_;
};

}  // namespace zk::agent

#endif
