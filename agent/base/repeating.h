// A thread that repeats one short step until it is stopped.
#ifndef ZK_AGENT_BASE_REPEATING_H
#define ZK_AGENT_BASE_REPEATING_H

#include <chrono>
#include <functional>
#include <optional>
#include <thread>

#include "zk_quornex/platform/threadsafety.h"

namespace zk::agent {

class Repeating {
 public:
  using Clock = std::chrono::steady_clock;

  // Does what is due and says when to be called next; without a time, only wake
  // calls it again.
  using Step = std::function<std::optional<Clock::time_point>()>;

  // step is called at once, then when it said and after each wake, which may be
  // early: on the thread's own time, never twice at once, with no lock held.
  // What it throws is logged, and counts as having said no time.
  explicit Repeating(Step step);
  // A step once a period, the first after one; what it throws is logged and the
  // next turn follows.
  Repeating(std::chrono::milliseconds period, std::function<void()> step);
  // Waits for a step in progress; none begins afterwards.
  ~Repeating();
  Repeating(const Repeating&) = delete;
  Repeating& operator=(const Repeating&) = delete;

  // Lets the step be called now, or once more when one is in progress. Any
  // thread may call, the step too.
  void wake();

 private:
  void run();
  void awaitTurn(const std::optional<Clock::time_point>& due) ZK_REQUIRES(mutex_);

  const Step step_;
  Mutex mutex_;  // not held during a step
  Condition changed_;
  bool woken_ ZK_GUARDED_BY(mutex_) = true;
  bool stopping_ ZK_GUARDED_BY(mutex_) = false;
  std::thread thread_;  // last: it uses the others
};

}  // namespace zk::agent

#endif
