#include "agent/base/log.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <memory>

#include "zk_quornex/idl/corba.h"
#include "zk_quornex/platform/default/logs.h"
#include "zk_quornex/platform/services.h"

namespace zk::agent {

namespace {

using NS_BUNDLEMGR1::LogProxy;

constexpr std::size_t LONGEST = 200;

std::atomic<LogLevel> highest{LogLevel::INFO};

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
    case LogLevel::OFF:
      return 0;
    case LogLevel::ERROR:
      return 1;
    case LogLevel::DEBUG:
      return 3;
    case LogLevel::TRACE:
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
  if (highest.load() >= LogLevel::ERROR) {
    log->Write(text.c_str());
  }
}

void logCourse(const std::string& text) {
  static const std::shared_ptr<LogProxy> log = openLog("info");
  if (highest.load() >= LogLevel::INFO) {
    log->Write(text.c_str());
  }
}

namespace {

// Without memory for a line there is none.
void tellFailure(const std::string& what, const char* why) noexcept {
  try {
    logFailure(what + " failed: " + why);
  } catch (const std::exception&) {
    return;
  }
}

}  // namespace

bool runLogged(const std::string& what, const std::function<void()>& work) {
  try {
    work();
    return true;
  } catch (const CORBA::Exception& failure) {
    tellFailure(what, failure._name());
  } catch (const std::exception& failure) {
    tellFailure(what, failure.what());
  }
  return false;
}

std::string printable(const char* text) {
  const std::string whole(text);
  std::string result = whole.substr(0, LONGEST);
  std::replace_if(
      result.begin(), result.end(), [](unsigned char byte) { return byte < 0x20 || byte == 0x7f; },
      '?');
  return whole.size() <= LONGEST ? result : result + "...";
}

}  // namespace zk::agent
