// What bounds a client's use of the agent. Read-only once the agent serves.
#ifndef ZK_AGENT_MANAGERS_LIMITS_H
#define ZK_AGENT_MANAGERS_LIMITS_H

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>

namespace zk::agent {

struct Limits {
  // Sessions at a time; a further login is refused.
  std::size_t sessions = 64;
  // Open iterators of one session; a further query that needs one is refused.
  std::size_t iterators = 20;
  // An iterator that nobody has used for this long is destroyed.
  std::chrono::seconds iteratorIdle{900};
  // The most entries in one answer, whatever the client asks for. With records
  // of a few hundred bytes this stays well below the 2 MiB that ORBs accept in
  // one message by default.
  std::uint32_t page = 1000;
};

// The clock that idle times are measured by; tests put their own in its place.
using SteadyClock = std::function<std::chrono::steady_clock::time_point()>;

}  // namespace zk::agent

#endif
