// What stands between the event cache and one proxy: decides for every event
// whether the proxy gets it, keeps the order of those it let in, and wakes
// whoever delivers them. Safe on any thread.
#ifndef ZK_AGENT_CHANNEL_GATE_H
#define ZK_AGENT_CHANNEL_GATE_H

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>

#include "agent/channel/eventfields.h"
#include "agent/channel/losses.h"
#include "zk_quornex/idl/events.h"

namespace zk::agent {

// An event counts as waiting from its acceptance until it was delivered: in the
// cache's queue, in its list, and in the hands of whoever delivers it. As many
// as limit() says may wait; the newest is refused then. That begins a loss, which
// is over once everything accepted before the last refusal has been delivered:
// nothing older than the gap is then still on its way to the consumer.
class Gate {
 public:
  using Clock = std::chrono::steady_clock;
  using Admits = std::function<bool(const CosNotification::StructuredEvent&)>;
  using Limit = std::function<long()>;

  // admits and limit are called on the threads that push; losses may be null.
  Gate(long proxy, Admits admits, Limit limit, std::shared_ptr<Losses> losses);

  // Whether the event is let in; it must then reach the cache's list of its kind,
  // in the order of these calls. The event belongs to the calling thread.
  bool accept(EventKind kind, const CosNotification::StructuredEvent& event);
  // Events were lost before they came here.
  void miss(const std::string& time, const std::string& notificationId);

  struct Run {
    EventKind kind = EventKind::Object;
    CORBA::ULong length = 0;
  };
  // The events to fetch next: as many of the same kind as follow each other.
  Run next(CORBA::ULong most) const;
  // That many of them have left the cache's lists.
  void fetched(CORBA::ULong count);
  // That many fetched ones are the consumer's now.
  void delivered(CORBA::ULong count);
  // Events accepted and not fetched yet.
  std::size_t waiting() const;

  // Each waits for its condition, for close() or until then; true when the
  // condition holds and the gate is open.
  bool awaitEvents(Clock::time_point until, std::size_t atLeast = 1) const;
  bool awaitResumed() const;
  // Waits for close() or until then.
  void pause(Clock::duration time) const;

  // A suspended gate lets events in as before.
  void suspend(bool suspended);
  bool isSuspended() const;

  // Lets nothing in any more and ends every wait.
  void close();
  bool isClosed() const;

 private:
  bool tryAccept(EventKind kind);
  void endLossWhenHealed();  // needs the mutex

  const long proxy_;
  const Admits admits_;
  const Limit limit_;
  const std::shared_ptr<Losses> losses_;

  mutable std::mutex mutex_;
  mutable std::condition_variable changed_;
  std::deque<EventKind> order_;  // of the events accepted and not fetched
  unsigned long accepted_ = 0;
  unsigned long delivered_ = 0;
  unsigned long healedAt_ = 0;  // the count of deliveries that ends the loss
  bool losing_ = false;
  bool suspended_ = false;
  bool closed_ = false;
};

}  // namespace zk::agent

#endif
