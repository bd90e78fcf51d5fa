// The only file that knows the log library.

#include "zk_quornex/platform/default/logs.h"

#include <spdlog/logger.h>
#include <spdlog/pattern_formatter.h>
#include <spdlog/sinks/dist_sink.h>
#include <spdlog/sinks/rotating_file_sink.h>
#include <spdlog/sinks/stdout_sinks.h>

#include <algorithm>
#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <stdexcept>
#include <string_view>

#include "zk_quornex/platform/default/replaceable.h"

namespace zk::platform {
namespace {

constexpr const char* LINE = "%Y-%m-%dT%H:%M:%S.%eZ %l [%t] %n: %v";

spdlog::sink_ptr withLineFormat(spdlog::sink_ptr target) {
  target->set_formatter(
      std::make_unique<spdlog::pattern_formatter>(LINE, spdlog::pattern_time_type::utc));
  return target;
}

spdlog::sink_ptr openTarget(const LogSettings& settings) {
  if (settings.file.empty()) {
    return withLineFormat(std::make_shared<spdlog::sinks::stderr_sink_st>());
  }
  return withLineFormat(std::make_shared<spdlog::sinks::rotating_file_sink_st>(
      settings.file, settings.fileBytes, settings.files));
}

// Every log of the process writes through one outlet, so that openLogs turns
// all of them at once. The outlet has a lock of its own.
class Outlet {
 public:
  Outlet() { turnTo(openTarget(LogSettings{})); }

  void turnTo(spdlog::sink_ptr target) { target_->set_sinks({std::move(target)}); }

  // Each line is in the file when the call that writes it returns: the last
  // lines before a crash are the ones that are needed.
  std::unique_ptr<spdlog::logger> makeLogger(const std::string& name) const {
    auto logger = std::make_unique<spdlog::logger>(name, target_);
    logger->set_level(spdlog::level::trace);
    logger->flush_on(spdlog::level::trace);
    return logger;
  }

 private:
  std::shared_ptr<spdlog::sinks::dist_sink_mt> target_ =
      std::make_shared<spdlog::sinks::dist_sink_mt>();
};

struct TraceLog {
  std::unique_ptr<spdlog::logger> logger = immortal<Outlet>().makeLogger("trace");
};

spdlog::level::level_enum severityOf(int traceLevel) {
  switch (traceLevel) {
    case 2:
      return spdlog::level::warn;
    case 3:
      return spdlog::level::debug;
    case 4:
      return spdlog::level::trace;
    default:
      return spdlog::level::err;
  }
}

spdlog::level::level_enum severityOf(const std::string& name) {
  const spdlog::level::level_enum severity = spdlog::level::from_str(name);
  return severity != spdlog::level::off ? severity : spdlog::level::info;
}

const char* orUnknown(const char* text) { return text != nullptr ? text : "unknown"; }

class NamedLog : public NS_BUNDLEMGR1::LogProxy {
 public:
  NamedLog(const std::string& name, const std::string& severity)
      : logger_(immortal<Outlet>().makeLogger(name)), severity_(severityOf(severity)) {}

  // The log ends its lines itself: a line end that closes the text is left out.
  void Write(const char* text) override {
    std::string_view line(text != nullptr ? text : "(null)");
    if (!line.empty() && line.back() == '\n') {
      line.remove_suffix(1);
    }
    logger_->log(severity_, spdlog::string_view_t(line.data(), line.size()));
  }

 private:
  std::unique_ptr<spdlog::logger> logger_;
  spdlog::level::level_enum severity_;
};

// Writes trace lines to the logs: where the line comes from, then its text.
class LogTraceSink : public TraceSink {
 public:
  void write(int level, const NS_CORBA::TraceRecord& origin, const char* text) override {
    immortal<TraceLog>().logger->log(severityOf(level), "{}:{} {}: {}", orUnknown(origin.file),
                                     origin.line, orUnknown(origin.function), text);
  }
};

// What openLogs does, but for the level.
void turnLogsTo(const LogSettings& settings) {
  try {
    immortal<Outlet>().turnTo(openTarget(settings));
  } catch (const std::exception& failure) {
    throw std::runtime_error("cannot open the log file '" + settings.file + "': " + failure.what());
  }
}

constexpr int PLAIN = 4;

// A constant initialiser: good before any static initialiser runs.
std::atomic<int> highestLevel{STANDARD_TRACE_LEVEL};

Replaceable<TraceSink>& traceSink() { return replaceable<TraceSink, LogTraceSink>(); }

inline bool isOff(int level) { return level > highestLevel.load(std::memory_order_relaxed); }

// Levels from below the first are not written: sinks know 1 to 4.
void write(int level, const char* text) {
  if (level >= 1) {
    traceSink().get()->write(level, *NS_CORBA::GetTss(), text);
  }
}

// Formats on the stack; only a text longer than that costs an allocation.
void writeFormatted(int level, const char* format, va_list arguments) {
  char text[1024];
  va_list again;
  va_copy(again, arguments);
  const int length = std::vsnprintf(text, sizeof text, format, arguments);
  if (length < 0) {
    write(level, format);
  } else if (static_cast<std::size_t>(length) < sizeof text) {
    write(level, text);
  } else {
    std::string whole(static_cast<std::size_t>(length), '\0');
    std::vsnprintf(whole.data(), whole.size() + 1, format, again);
    write(level, whole.c_str());
  }
  va_end(again);
}

}  // namespace

std::shared_ptr<NS_BUNDLEMGR1::LogProxy> makeNamedLog(const std::string& name,
                                                      const std::string& severity) {
  return std::make_shared<NamedLog>(name, severity);
}

void openLogs(const LogSettings& settings) {
  turnLogsTo(settings);
  setTraceLevel(settings.level);
}

void setTraceLevel(int level) {
  highestLevel.store(std::clamp(level, 0, PLAIN), std::memory_order_relaxed);
}

int traceLevel() { return highestLevel.load(std::memory_order_relaxed); }

TraceSink* install(TraceSink* replacement) { return traceSink().install(replacement); }

}  // namespace zk::platform

namespace NS_CORBA {

TraceRecord* GetTss() {
  static thread_local TraceRecord record;
  return &record;
}

void TaDebug(int level, const char* text) {
  if (zk::platform::isOff(level)) {
    return;
  }
  zk::platform::write(level, text != nullptr ? text : "(null)");
}

void TaDebugWithPara(int level, const char* format, ...) {
  if (zk::platform::isOff(level)) {
    return;
  }
  va_list arguments;
  va_start(arguments, format);
  zk::platform::writeFormatted(level, format, arguments);
  va_end(arguments);
}

void TaTrace(const char* format, ...) {
  if (zk::platform::isOff(zk::platform::PLAIN)) {
    return;
  }
  va_list arguments;
  va_start(arguments, format);
  zk::platform::writeFormatted(zk::platform::PLAIN, format, arguments);
  va_end(arguments);
}

}  // namespace NS_CORBA
