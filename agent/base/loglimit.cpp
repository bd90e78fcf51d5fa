#include "agent/base/loglimit.h"

#include "agent/base/log.h"

namespace zk::agent {

void LogLimit::logFailure(const std::string& subject, const std::string& text) {
  const std::string line = admit(subject, text, Clock::now());
  if (!line.empty()) {
    zk::agent::logFailure(line);
  }
}

std::string LogLimit::admit(const std::string& subject, const std::string& text,
                            Clock::time_point now) {
  const MutexLock lock(mutex_);
  auto found = subjects_.find(subject);
  if (found == subjects_.end()) {
    if (subjects_.size() >= mostSubjects_) {
      forgetOld(now);
    }
    const bool isRoom = subjects_.size() < mostSubjects_;
    found = subjects_.emplace(isRoom ? subject : std::string(), Subject{now - period_}).first;
  }
  Subject& known = found->second;
  if (now - known.written < period_) {
    ++known.leftOut;
    return "";
  }
  const std::string more =
      known.leftOut == 0 ? "" : " (" + std::to_string(known.leftOut) + " more of these before)";
  known = {now};
  return text + more;
}

// What was left out of a forgotten subject stays untold.
void LogLimit::forgetOld(Clock::time_point now) {
  for (auto next = subjects_.begin(); next != subjects_.end();) {
    next = now - next->second.written >= period_ && !next->first.empty() ? subjects_.erase(next)
                                                                         : std::next(next);
  }
}

}  // namespace zk::agent
