#include "zk_quornex/platform/trace.h"

#include <algorithm>
#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <string>

#include "zk_quornex/platform/default/immortal.h"
#include "zk_quornex/platform/default/logs.h"
#include "zk_quornex/platform/default/logwriter.h"
#include "zk_quornex/platform/default/replaceable.h"

namespace zk::platform {
namespace {

constexpr int PLAIN = 4;

// A constant initialiser: good before any static initialiser runs.
std::atomic<int> highestLevel{STANDARD_TRACE_LEVEL};

Replaceable<TraceSink>& traceSink() {
  static Replaceable<TraceSink> current(&immortal<LogTraceSink>());
  return current;
}

inline bool isOff(int level) { return level > highestLevel.load(std::memory_order_relaxed); }

// Levels from below the first are not written: sinks know 1 to 4.
void write(int level, const char* text) {
  if (level >= 1) traceSink().get()->write(level, *NS_CORBA::GetTss(), text);
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
  if (zk::platform::isOff(level)) return;
  zk::platform::write(level, text != nullptr ? text : "(null)");
}

void TaDebugWithPara(int level, const char* format, ...) {
  if (zk::platform::isOff(level)) return;
  va_list arguments;
  va_start(arguments, format);
  zk::platform::writeFormatted(level, format, arguments);
  va_end(arguments);
}

void TaTrace(const char* format, ...) {
  if (zk::platform::isOff(zk::platform::PLAIN)) return;
  va_list arguments;
  va_start(arguments, format);
  zk::platform::writeFormatted(zk::platform::PLAIN, format, arguments);
  va_end(arguments);
}

}  // namespace NS_CORBA
