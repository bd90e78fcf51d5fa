// Finds out which NMSs are gone: each is pinged once a period, and its session
// ends when it failed to answer too often in a row. Safe on any thread.
#ifndef ZK_AGENT_SESSIONS_HEARTBEAT_H
#define ZK_AGENT_SESSIONS_HEARTBEAT_H

#include <chrono>
#include <map>

#include "agent/base/workers.h"
#include "agent/sessions/sessions.h"
#include "zk_quornex/platform/threadsafety.h"

namespace zk::agent {

// A dead NMS's session is gone after (failures + 1) x (period + timeout) at the
// latest.
struct PingRules {
  std::chrono::milliseconds period{60000};  // 0: no pings
  std::chrono::milliseconds timeout{5000};
  unsigned failures = 2;  // in a row, that are put up with
};

class Heartbeat {
 public:
  // sessions must outlive this object.
  Heartbeat(const PingRules& rules, Sessions& sessions, SteadyClock clock);
  // Waits for the pings under way, as long as one may take.
  ~Heartbeat() = default;
  Heartbeat(const Heartbeat&) = delete;
  Heartbeat& operator=(const Heartbeat&) = delete;

  // Starts a ping of every session that is due, each on a thread of its own, so
  // that a hanging NMS holds up no other. Does not wait.
  void step();

 private:
  struct State {
    std::chrono::steady_clock::time_point next;
    unsigned failures = 0;
    bool underWay = false;
  };

  void ping(const Session& session);
  // Says whether the session is to end.
  bool note(long session, bool answered);

  const PingRules rules_;
  Sessions& sessions_;
  const SteadyClock clock_;
  Mutex mutex_;
  std::map<long, State> states_ ZK_GUARDED_BY(mutex_);  // of the sessions at the last step
  Workers workers_;                                     // last: its threads use the others
};

}  // namespace zk::agent

#endif
