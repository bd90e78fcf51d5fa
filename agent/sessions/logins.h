// Logging in: what stands between a stranger and the users' passwords. Safe on
// any thread.
//
// After a failed try, further ones of the same user from the same peer are refused
// unseen: 1 s after the first, twice as long after each further one in a row, at
// most 60 s. A try in that time is not counted. Others are not slowed. A success
// starts anew, as does an hour without a try.
//
// Passwords are compared two at a time, since a comparison takes 64 MiB, and one
// at a time for each peer, so that one that tries many users leaves the other
// place to the rest; whoever comes then waits for its turn.
#ifndef ZK_AGENT_SESSIONS_LOGINS_H
#define ZK_AGENT_SESSIONS_LOGINS_H

#include <chrono>
#include <cstddef>
#include <list>
#include <map>
#include <string>
#include <utility>

#include "agent/managers/iterators.h"
#include "agent/sessions/sessions.h"
#include "agent/sessions/users.h"
#include "zk_quornex/platform/threadsafety.h"

namespace zk::agent {

class Logins {
 public:
  // Users and peers that are remembered after a failure. Beyond that the one
  // whose last failure is longest ago is forgotten.
  static constexpr std::size_t MOST_REMEMBERED = 4096;
  static constexpr std::chrono::seconds SHORTEST_PAUSE{1};
  static constexpr std::chrono::seconds LONGEST_PAUSE{60};

  // users must outlive this object.
  Logins(Users& users, SteadyClock clock);

  // Throws Refusal: invalid input for a name or password that is too long, access
  // denied, which does not tell what is wrong, for any other that may not log in.
  void check(const Caller& caller, const std::string& password);

  // Users and peers that are remembered.
  std::size_t remembered() const;

 private:
  using Time = std::chrono::steady_clock::time_point;
  using Who = std::pair<std::string, std::string>;  // user, peer

  struct Failures {
    unsigned inRow = 0;
    Time last;
    Time until;  // refused unseen before
  };

  // One of the places to compare at, for as long as it lives.
  class Place;

  bool isPausing(const Who& who) const;
  bool isComparing(const std::string& peer) const ZK_REQUIRES(mutex_);
  bool mayGo(std::list<std::string>::const_iterator asking) const ZK_REQUIRES(mutex_);
  std::chrono::seconds noteFailure(const Who& who);
  void forget(const Who& who);

  Users& users_;
  const SteadyClock clock_;
  mutable Mutex mutex_;  // not held during a comparison
  Condition moved_;
  std::map<Who, Failures> failures_ ZK_GUARDED_BY(mutex_);
  std::list<std::string> waiting_ ZK_GUARDED_BY(mutex_);  // peers, in the order of asking
  std::list<std::string> comparing_ ZK_GUARDED_BY(mutex_);
};

}  // namespace zk::agent

#endif
