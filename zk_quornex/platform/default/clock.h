// The clock behind TimeChange::getUTCTime.
#ifndef ZK_PLATFORM_DEFAULT_CLOCK_H
#define ZK_PLATFORM_DEFAULT_CLOCK_H

#include <chrono>
#include <string>

namespace zk::platform {

class Clock {
 public:
  virtual ~Clock() = default;
  virtual std::chrono::system_clock::time_point now() = 0;
};

// Puts another clock in place; null puts the system's back. See Replaceable.
Clock* install(Clock* replacement);

// The time as TMF 814 writes it: yyyyMMddhhmmss.sZ.
std::string timeText(std::chrono::system_clock::time_point time);

}  // namespace zk::platform

#endif
