// Where trace lines and logs go: to standard error, or to a file that rotates.
#ifndef ZK_PLATFORM_DEFAULT_LOGS_H
#define ZK_PLATFORM_DEFAULT_LOGS_H

#include <cstddef>
#include <string>

#include "platform/trace.h"

namespace zk::platform {

struct LogSettings {
  std::string file;                  // empty: standard error
  std::size_t fileBytes = 10485760;  // a file that grows beyond this is rotated
  std::size_t files = 5;             // how many rotated files are kept
  int level = 2;                     // highest trace level written; 0: none, 4: plain traces too
};

// Opens the logs. Throws std::runtime_error, saying why, when the file cannot
// be opened; the logs are then as before.
void openLogs(const LogSettings& settings);

// Changes the level alone; safe on any thread at any time.
void setTraceLevel(int level);
int traceLevel();

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
