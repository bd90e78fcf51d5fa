// What the rest of the platform writes to the logs through. Safe on any thread.
#ifndef ZK_PLATFORM_DEFAULT_LOGWRITER_H
#define ZK_PLATFORM_DEFAULT_LOGWRITER_H

#include <memory>
#include <string>

#include "zk_quornex/platform/bundle.h"
#include "zk_quornex/platform/default/logs.h"

namespace zk::platform {

// What openLogs does, but for the level.
void turnLogsTo(const LogSettings& settings);

// Writes trace lines to the logs: where the line comes from, then its text.
class LogTraceSink : public TraceSink {
 public:
  void write(int level, const NS_CORBA::TraceRecord& origin, const char* text) override;
};

// A log that writes to the logs under a name, whatever the trace level, with
// the severity of this name ("debug", "error", ...); unknown ones are "info".
// It follows openLogs.
std::shared_ptr<NS_BUNDLEMGR1::LogProxy> makeNamedLog(const std::string& name,
                                                      const std::string& severity);

}  // namespace zk::platform

#endif
