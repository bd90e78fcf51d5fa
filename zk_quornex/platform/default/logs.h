// Where trace lines and logs go: to standard error, or to a file that rotates.
// A line holds the UTC time, severity, thread, log name, and for a trace its
// origin, then the text. It is written out when the call that logs it returns.
// Safe on any thread; until openLogs is called, lines go to standard error.
#ifndef ZK_PLATFORM_DEFAULT_LOGS_H
#define ZK_PLATFORM_DEFAULT_LOGS_H

#include <cstddef>
#include <memory>
#include <string>

#include "zk_quornex/platform/bundle.h"
#include "zk_quornex/platform/trace.h"

namespace zk::platform {

constexpr int STANDARD_TRACE_LEVEL = 2;

struct LogSettings {
  std::string file;                  // empty: standard error
  std::size_t fileBytes = 10485760;  // a file that grows beyond this is rotated
  std::size_t files = 5;             // how many rotated files are kept
  int level = STANDARD_TRACE_LEVEL;  // highest one written; 0: none, 4: plain traces too
};

// Opens the logs and sets the level; may be called again at any time. A missing
// folder is made; a file that is there already is continued. Rotation moves
// agent.log to agent.1.log, agent.1.log to agent.2.log and so on. Throws
// std::runtime_error with the path and the reason when the file cannot be
// opened; logs and level are then as before.
void openLogs(const LogSettings& settings);

// Changes the level alone. Below 0 means 0, above 4 means 4.
void setTraceLevel(int level);
int traceLevel();

// A log that writes to the logs under a name, whatever the trace level, with
// the severity of this name ("debug", "error", ...); unknown ones are "info".
// It follows openLogs. Never null.
std::shared_ptr<NS_BUNDLEMGR1::LogProxy> makeNamedLog(const std::string& name,
                                                      const std::string& severity);

// Takes every trace line that the level lets through. write is called on the
// tracing thread, by several threads at once, and must not trace itself.
class TraceSink {
 public:
  virtual ~TraceSink() = default;
  // level is 1 to 3, or 4 for a plain trace line.
  virtual void write(int level, const NS_CORBA::TraceRecord& origin, const char* text) = 0;
};

// Puts another sink in place; null puts the logs back. See Replaceable.
TraceSink* install(TraceSink* replacement);

}  // namespace zk::platform

#endif
