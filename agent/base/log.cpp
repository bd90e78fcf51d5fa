#include "agent/base/log.h"

#include <algorithm>
#include <atomic>
#include <memory>

#include "zk_quornex/platform/default/logs.h"
#include "zk_quornex/platform/services.h"

namespace zk::agent {

namespace {

using NS_BUNDLEMGR1::LogProxy;

constexpr std::size_t longest = 200;

std::atomic<LogLevel> highest{LogLevel::Info};

std::shared_ptr<LogProxy> openLog(const char* severity) {
  const auto service = std::dynamic_pointer_cast<NS_LOG_SERVICE1::LogSvcInterface>(
      NS_BUNDLEMGR1::BundleMgr::Instance()->GetService("LogSvcInterface"));
  std::shared_ptr<LogProxy> log;
  if (service != nullptr) {
    log = service->GetLogger("zk-agent", "", severity);
  }
  return log != nullptr ? log : std::make_shared<NS_BUNDLEMGR1::DefaultLogProxy>();
}

int traceLevelOf(LogLevel level) {
  switch (level) {
    case LogLevel::Off:
      return 0;
    case LogLevel::Error:
      return 1;
    case LogLevel::Debug:
      return 3;
    case LogLevel::Trace:
      return 4;
    default:
      return 2;
  }
}

}  // namespace

void setLogLevel(LogLevel level) {
  highest = level;
  zk::platform::setTraceLevel(traceLevelOf(level));
}

void logFailure(const std::string& text) {
  static const std::shared_ptr<LogProxy> log = openLog("error");
  if (highest.load() >= LogLevel::Error) {
    log->Write(text.c_str());
  }
}

void logCourse(const std::string& text) {
  static const std::shared_ptr<LogProxy> log = openLog("info");
  if (highest.load() >= LogLevel::Info) {
    log->Write(text.c_str());
  }
}

std::string printable(const char* text) {
  const std::string whole(text);
  std::string result = whole.substr(0, longest);
  std::replace_if(
      result.begin(), result.end(), [](unsigned char byte) { return byte < 0x20 || byte == 0x7f; },
      '?');
  return whole.size() <= longest ? result : result + "...";
}

}  // namespace zk::agent
