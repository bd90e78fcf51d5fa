// A thread that takes a step so many times a second.
#ifndef ZK_AGENT_EMS_TRAFFIC_PACED_H
#define ZK_AGENT_EMS_TRAFFIC_PACED_H

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace zk::agent {

inline constexpr double HIGHEST_RATE = 10000;

// When the next step is due. Steps that were late are made up for, but no more
// than a second's worth: after a stall there is no burst without end.
class Pace {
 public:
  using Clock = std::chrono::steady_clock;

  void start(Clock::time_point now, double perSecond);
  Clock::time_point due() const { return due_; }
  void stepped(Clock::time_point now);

 private:
  Clock::duration period_{};
  Clock::time_point due_;
};

class Paced {
 public:
  // With a rate of 0 nothing is done until another is set. step is called on the
  // thread's own time, never twice at once; what it throws is logged, and the
  // rate is 0 from then on. Throws std::invalid_argument for a rate out of range.
  Paced(double perSecond, std::function<void()> step);
  // Waits for a step in progress; none begins afterwards.
  ~Paced();
  Paced(const Paced&) = delete;
  Paced& operator=(const Paced&) = delete;

  // Holds from the next step on. Throws std::invalid_argument unless the rate is
  // 0 to HIGHEST_RATE.
  void setRate(double perSecond);
  double rate() const;

 private:
  void run();
  void takeStep(std::unique_lock<std::mutex>& lock);

  const std::function<void()> step_;
  mutable std::mutex mutex_;  // protects what follows, not held during a step
  std::condition_variable changed_;
  double rate_;
  Pace pace_;
  unsigned long changes_ = 0;  // of the rate
  bool stopping_ = false;
  std::thread thread_;  // last: it uses the others
};

}  // namespace zk::agent

#endif
