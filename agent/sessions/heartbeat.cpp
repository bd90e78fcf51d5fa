#include "agent/sessions/heartbeat.h"

#include <memory>
#include <string>

#include "agent/sessions/nmscalls.h"

namespace zk::agent {

Heartbeat::Heartbeat(const PingRules& rules, Sessions& sessions, SteadyClock clock)
    : rules_(rules), sessions_(sessions), clock_(std::move(clock)) {}

void Heartbeat::step() {
  if (rules_.period.count() == 0) {
    return;
  }
  const auto now = clock_();
  const MutexLock lock(mutex_);
  std::map<long, State> known;
  known.swap(states_);
  for (const auto& session : sessions_.all()) {
    const auto found = known.find(session->id);
    State state = found != known.end() ? found->second : State{now + rules_.period};
    if (!state.underWay && now >= state.next) {
      state.underWay = workers_.start([this, session] { ping(*session); });
    }
    states_.emplace(session->id, state);
  }
}

void Heartbeat::ping(const Session& session) {
  const bool answered = NmsCalls(session.client.in(), rules_.timeout).ping();
  if (note(session.id, answered)) {
    sessions_.end(session.id, "the NMS failed to answer " + std::to_string(rules_.failures + 1) +
                                  " pings in a row");
  }
}

bool Heartbeat::note(long session, bool answered) {
  const MutexLock lock(mutex_);
  const auto found = states_.find(session);
  if (found == states_.end()) {
    return false;
  }
  State& state = found->second;
  state.underWay = false;
  state.next = clock_() + rules_.period;
  state.failures = answered ? 0 : state.failures + 1;
  return state.failures > rules_.failures;
}

}  // namespace zk::agent
