// The agent's own log lines: failures, and the course of things (start and
// stop, sessions). They go where the platform's logs go. Safe on any thread.
// Text that came from a client goes through printable() first.
#ifndef ZK_AGENT_BASE_LOG_H
#define ZK_AGENT_BASE_LOG_H

#include <string>

namespace zk::agent {

enum class LogLevel { OFF, ERROR, WARNING, INFO, DEBUG, TRACE };

// What is written from now on; INFO until then. The library's trace lines are
// levels of their own: its failures and warnings come with the agent's, its
// routine lines with DEBUG, everything with TRACE. Set once the logs are open.
void setLogLevel(LogLevel level);

void logFailure(const std::string& text);
void logCourse(const std::string& text);

// Logs the exception being handled as "what failed: ...", unless there is no
// memory for that.
void logCaught(const char* what) noexcept;

// Runs work and logs what it throws. Returns whether it threw nothing.
template <class Work>
bool runLogged(const char* what, Work&& work) noexcept {
  try {
    work();
    return true;
  } catch (...) {
    logCaught(what);
    return false;
  }
}

// The text with control characters replaced and cut at 200 bytes, so that a
// client can neither forge log lines nor fill the log with one request.
std::string printable(const char* text);

}  // namespace zk::agent

#endif
