// What stands between the event cache and one proxy: decides for every event
// whether the proxy gets it, counts those it let in, and holds up whoever delivers
// them while the proxy is suspended. Safe on any thread.
#ifndef ZK_AGENT_CHANNEL_GATE_H
#define ZK_AGENT_CHANNEL_GATE_H

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "agent/channel/budget.h"
#include "agent/channel/constraintlist.h"
#include "agent/channel/losses.h"
#include "zk_quornex/idl/events.h"
#include "zk_quornex/messages/filter.h"
#include "zk_quornex/platform/threadsafety.h"

namespace zk::agent {

// An event counts as waiting from its coming in until it was delivered: in the
// cache's queue, in its list, and in the hands of whoever delivers it. As many
// as limit() says may wait, and as much as the session's budget has room for; the
// newest is refused then. So is an event that could not be judged. That begins a
// loss, which is over once everything that came in before the last refusal has
// been delivered, and events are judged again: nothing older than the gap is then
// still on its way to the consumer.
class Gate {
 public:
  using Clock = std::chrono::steady_clock;

  // Called on the thread that feeds the cache.
  struct Rules {
    std::function<bool(const CosNotification::EventType&)> isSubscribed;
    std::function<Verdict(const CosNotification::StructuredEvent&)> judge;  // PASS or not
    std::function<long()> limit;
  };

  // losses may be null.
  Gate(long proxy, Rules rules, std::shared_ptr<ByteBudget> budget, std::shared_ptr<Losses> losses);
  ~Gate();
  Gate(const Gate&) = delete;
  Gate& operator=(const Gate&) = delete;

  // Whether the proxy may want an event of this type.
  bool wants(const CosNotification::EventType& type) const;
  // Whether the event, of a type that it wants, may come in; one for which there
  // is no room is lost. The event belongs to the calling thread; bytes is its size.
  bool accept(const CosNotification::StructuredEvent& event, std::size_t bytes);
  // An accepted event comes in: it will reach the cache's list. On the thread that
  // had it accepted, before the next.
  void enter();
  // Events were lost before they came here.
  void miss(const std::string& time, const std::string& notificationId);

  // That many events that came in have left the cache's list.
  void fetched(CORBA::ULong count);
  // That many fetched ones are the consumer's now.
  void delivered(CORBA::ULong count);
  // That many events that came in will never be in the cache's list.
  void lost(CORBA::ULong count);
  // Events that came in and were not fetched yet.
  std::size_t waiting() const;

  // Each waits for its condition, for close() or until then; true when the
  // condition holds and the gate is open.
  bool awaitWaiting(std::size_t atLeast, Clock::time_point until) const;
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
  bool hasRoomFor(std::size_t bytes);
  void noteJudged(bool judged);
  void lose(const CosNotification::StructuredEvent& event);
  void leave(CORBA::ULong count) ZK_REQUIRES(mutex_);
  void endLossWhenHealed() ZK_REQUIRES(mutex_);

  const long proxy_;
  const Rules rules_;
  const std::shared_ptr<ByteBudget> budget_;
  const std::shared_ptr<Losses> losses_;

  mutable Mutex mutex_;
  mutable Condition changed_;
  unsigned long entered_ ZK_GUARDED_BY(mutex_) = 0;
  unsigned long fetched_ ZK_GUARDED_BY(mutex_) = 0;
  unsigned long delivered_ ZK_GUARDED_BY(mutex_) = 0;
  unsigned long healedAt_ ZK_GUARDED_BY(mutex_) = 0;  // the count of deliveries that ends the loss
  // Of what waits; one that leaves is taken for one of average size.
  std::size_t bytes_ ZK_GUARDED_BY(mutex_) = 0;
  std::size_t offeredBytes_ ZK_GUARDED_BY(mutex_) = 0;
  bool unjudged_ ZK_GUARDED_BY(mutex_) = false;
  bool losing_ ZK_GUARDED_BY(mutex_) = false;
  bool suspended_ ZK_GUARDED_BY(mutex_) = false;
  bool closed_ ZK_GUARDED_BY(mutex_) = false;
};

// Whose gates have accepted an event: clients of the event cache, ascending. The
// context of a push.
using AdmittedClients = std::vector<long>;

// A gate as the event cache's filter, which the cache owns: lets through what the
// gate has accepted, which comes in thereby, and nothing without a context.
class GateFilter : public NS_QUORCORBA::NXMessageFilter {
 public:
  using Numbers = std::vector<long>;
  using Texts = std::vector<std::string>;
  using Time = NS_QUORCORBA::stDateTimeType;

  GateFilter(long client, std::shared_ptr<Gate> gate);
  // The cache lets go of the client: the gate is closed.
  ~GateFilter() override;

  bool isFiltered(const void* context) override;

  // There are no criteria. The beginning of time stands as the start, since the
  // cache asks no filter that reports nothing.
  int GetFilter(Numbers&, Texts&, Numbers&, Numbers&, Time& start, Time&, Texts&) override;
  // Refused: -1.
  int suspendFilter(Numbers&, Numbers&, Numbers&, Numbers&, Time&, Time&, Texts&) override;
  int resumeFilter(Numbers&, Numbers&, Numbers&, Numbers&, Time&, Time&, Texts&) override;
  int cancelFilter(Numbers&, Numbers&, Numbers&, Numbers&, Time&, Time&, Texts&) override;

 private:
  const long client_;
  const std::shared_ptr<Gate> gate_;
};

}  // namespace zk::agent

#endif
