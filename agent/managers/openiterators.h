// The open iterators of one session: a bounded number, and those that nobody
// uses any more are destroyed. Safe on any thread.
#ifndef ZK_AGENT_MANAGERS_OPENITERATORS_H
#define ZK_AGENT_MANAGERS_OPENITERATORS_H

#include <chrono>
#include <cstddef>
#include <map>
#include <memory>
#include <mutex>

#include "agent/managers/limits.h"
#include "agent/orb/servanthome.h"

namespace zk::agent {

class OpenIterators {
 public:
  using Ticket = ServantHome::Ticket;

  OpenIterators(std::shared_ptr<ServantHome> home, const Limits& limits, SteadyClock clock);

  // Makes an iterator reachable. Throws Refusal, too many open iterators, when
  // the session has as many as it may. The caller owns the result.
  CORBA::Object_ptr open(PortableServer::Servant iterator, Ticket& ticket);
  // Notes that the iterator was used now.
  void touch(Ticket ticket);
  void close(Ticket ticket);

  // Destroys those idle for longer than allowed; returns how many.
  std::size_t reap();
  std::size_t count() const;

 private:
  const std::shared_ptr<ServantHome> home_;
  const std::size_t most_;
  const std::chrono::seconds idle_;
  const SteadyClock clock_;
  mutable std::mutex mutex_;
  std::map<Ticket, std::chrono::steady_clock::time_point> lastUse_;
};

}  // namespace zk::agent

#endif
