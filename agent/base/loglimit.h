// Lines of the log that a client can cause: no more than one a period for each
// subject, so that nobody fills the log. Safe on any thread.
#ifndef ZK_AGENT_BASE_LOGLIMIT_H
#define ZK_AGENT_BASE_LOGLIMIT_H

#include <chrono>
#include <cstddef>
#include <map>
#include <string>

#include "zk_quornex/platform/threadsafety.h"

namespace zk::agent {

class LogLimit {
 public:
  using Clock = std::chrono::steady_clock;

  // Remembers up to so many subjects; further ones share one line a period.
  LogLimit(Clock::duration period, std::size_t mostSubjects)
      : period_(period), mostSubjects_(mostSubjects) {}

  // Logs the text as a failure unless the subject had its line in this period;
  // the next line of the subject says how many were left out.
  void logFailure(const std::string& subject, const std::string& text);

  // The line to write now; empty for none.
  std::string admit(const std::string& subject, const std::string& text, Clock::time_point now);

 private:
  struct Subject {
    Clock::time_point written;
    unsigned long leftOut = 0;
  };

  void forgetOld(Clock::time_point now) ZK_REQUIRES(mutex_);

  const Clock::duration period_;
  const std::size_t mostSubjects_;
  Mutex mutex_;
  std::map<std::string, Subject> subjects_ ZK_GUARDED_BY(mutex_);
};

}  // namespace zk::agent

#endif
