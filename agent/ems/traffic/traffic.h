// The embedded EMS's made-up traffic: so many changes a second. Safe on any
// thread.
#ifndef ZK_AGENT_EMS_TRAFFIC_TRAFFIC_H
#define ZK_AGENT_EMS_TRAFFIC_TRAFFIC_H

#include <chrono>
#include <functional>
#include <optional>

#include "agent/base/repeating.h"
#include "agent/ems/traffic/changer.h"
#include "zk_quornex/platform/threadsafety.h"

namespace zk::agent {

inline constexpr double HIGHEST_RATE = 10000;

// When the next step is due. Steps that were late are made up for, but no more
// than a second's worth: after a stall there is no burst without end. For one
// thread.
class Pace {
 public:
  using Clock = Repeating::Clock;

  void start(Clock::time_point now, double perSecond);
  Clock::time_point due() const { return due_; }
  void stepped(Clock::time_point now);

 private:
  Clock::duration period_{};
  Clock::time_point due_;
};

// A thread that takes a step so many times a second.
class Paced {
 public:
  // With a rate of 0 nothing is done until another is set. step is called on the
  // thread's own time, never twice at once; what it throws is logged, and the
  // rate is 0 from then on. Throws std::invalid_argument for a rate out of range.
  // The end waits for a step in progress; none begins afterwards.
  Paced(double perSecond, std::function<void()> step);

  // Holds from the next step on. Throws std::invalid_argument unless the rate is
  // 0 to HIGHEST_RATE.
  void setRate(double perSecond);
  double rate() const;

 private:
  std::optional<Pace::Clock::time_point> turn();
  bool step() const;

  const std::function<void()> step_;
  mutable Mutex mutex_;  // not held during a step
  double rate_ ZK_GUARDED_BY(mutex_) = 0;
  Pace pace_ ZK_GUARDED_BY(mutex_);
  unsigned long changes_ ZK_GUARDED_BY(mutex_) = 0;  // of the rate
  Repeating thread_;                                 // last: it uses the others
};

struct TrafficOptions {
  double rate = 0;  // changes a second, 0 to HIGHEST_RATE; 0: none
  unsigned seed = 1;
};

class Traffic {
 public:
  // inventory must outlive this object. It is looked through with the first
  // change. Throws std::invalid_argument for a rate out of range.
  Traffic(Inventory& inventory, const TrafficOptions& options);

  // Throws std::invalid_argument for a rate out of range.
  void setRate(double perSecond) { paced_.setRate(perSecond); }
  double rate() const { return paced_.rate(); }

 private:
  void step();

  Inventory& inventory_;
  const unsigned seed_;
  std::optional<Changer> changer_;
  Paced paced_;  // last: its thread uses the others
};

}  // namespace zk::agent

#endif
