// What one session may cost the agent: memory, judging, threads. Safe on any
// thread unless said otherwise.
#ifndef ZK_AGENT_CHANNEL_BUDGET_H
#define ZK_AGENT_CHANNEL_BUDGET_H

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <unordered_map>

#include "agent/base/workers.h"
#include "agent/constraint/constraint.h"

namespace zk::agent {

class ByteBudget {
 public:
  explicit ByteBudget(std::size_t most) : most_(most) {}

  bool hasRoomFor(std::size_t bytes) const;
  // take does not ask whether there is room.
  void take(std::size_t bytes) { taken_ += bytes; }
  void giveBack(std::size_t bytes) { taken_ -= bytes; }
  std::size_t taken() const { return taken_; }

 private:
  const std::size_t most_;
  std::atomic<std::size_t> taken_{0};
};

// Something that is kept, and counts for as long as this lives.
class Charge {
 public:
  Charge() = default;
  // Throws CORBA::NO_RESOURCES when there is no room.
  Charge(std::shared_ptr<ByteBudget> budget, std::size_t bytes);
  ~Charge();
  Charge(Charge&& other) noexcept;
  Charge& operator=(Charge&& other) noexcept;

 private:
  std::shared_ptr<ByteBudget> budget_;
  std::size_t bytes_ = 0;
};

// The judging of events on behalf of one session. It has units of work to spend,
// up to so many, that come back with time; a single event may cost a twentieth
// of the most. A session that has none left is judged no further until half of them are
// back: the events meanwhile are lost to those of its proxies that were not
// judged. Equal constraints are judged once an event. For the thread that feeds
// the cache.
class FilterWork {
 public:
  using Clock = std::function<std::chrono::steady_clock::time_point()>;

  // perSecond is asked on every event.
  FilterWork(std::int64_t most, std::function<std::int64_t()> perSecond, Clock clock);

  // Begins with an event unless this is the number of the one before.
  void beginWith(std::uint64_t number);

  // Whether the event holds; false as well when there is no work left for it.
  bool holds(const std::shared_ptr<const Constraint>& constraint,
             const CosNotification::StructuredEvent& event);
  // For other looks at the event; false when there is no work left for it.
  bool spend(std::size_t units);
  bool isSpent() const { return event_.isSpent(); }

  static constexpr std::int64_t EVENTS_IN_MOST = 20;

 private:
  void refill();

  const std::int64_t most_;
  const std::function<std::int64_t()> perSecond_;
  const Clock clock_;
  std::chrono::steady_clock::time_point filled_;
  std::int64_t left_;
  bool waiting_ = false;  // for half to be back
  std::uint64_t number_ = 0;
  etcl::Work event_;
  // Held, so that none of them makes place for another while the event is judged.
  std::unordered_map<std::shared_ptr<const Constraint>, bool> judged_;
};

// Threads that work for one session, so many at a time. Workers are shared by all.
class SessionThreads : public std::enable_shared_from_this<SessionThreads> {
 public:
  SessionThreads(std::shared_ptr<Workers> workers, std::size_t most)
      : workers_(std::move(workers)), most_(most) {}

  // As Workers::start; false as well when there are as many as there may be.
  bool start(std::function<void()> work);
  std::size_t running() const { return running_; }

 private:
  const std::shared_ptr<Workers> workers_;
  const std::size_t most_;
  std::atomic<std::size_t> running_{0};
};

}  // namespace zk::agent

#endif
