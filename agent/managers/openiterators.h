// The open iterators of one session: a bounded number, and those that nobody
// uses any more are destroyed. Safe on any thread.
#ifndef ZK_AGENT_MANAGERS_OPENITERATORS_H
#define ZK_AGENT_MANAGERS_OPENITERATORS_H

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>

#include "agent/orb/servanthome.h"
#include "zk_quornex/platform/threadsafety.h"

namespace zk::agent {

// What bounds a client's use of lists.
struct ListLimits {
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

class OpenIterators {
 public:
  using Ticket = ServantHome::Ticket;

  OpenIterators(std::shared_ptr<ServantHome> home, const ListLimits& limits, SteadyClock clock);

  // Makes an iterator reachable. Throws Refusal, too many open iterators, when
  // the session has as many as it may. The caller owns the result.
  CORBA::Object_ptr open(PortableServer::Servant iterator, Ticket& ticket);
  // Notes that the iterator was used now.
  void touch(Ticket ticket);
  void close(Ticket ticket);

  // Destroys those idle for longer than allowed; returns how many.
  std::size_t reap();

 private:
  const std::shared_ptr<ServantHome> home_;
  const std::size_t most_;
  const std::chrono::seconds idle_;
  const SteadyClock clock_;
  Mutex mutex_;
  std::map<Ticket, std::chrono::steady_clock::time_point> lastUse_ ZK_GUARDED_BY(mutex_);
};

}  // namespace zk::agent

#endif
