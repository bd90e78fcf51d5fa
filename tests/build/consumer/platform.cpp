#include "tests/build/consumer/platform.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "zk_quornex/platform/bundle.h"
#include "zk_quornex/platform/config.h"
#include "zk_quornex/platform/ems.h"
#include "zk_quornex/platform/events.h"
#include "zk_quornex/platform/services.h"
#include "zk_quornex/platform/timechange.h"
#include "zk_quornex/platform/trace.h"

namespace consumer {

Seen& seen() {
  static Seen everything;
  return everything;
}

namespace {

bool logServiceOffered = false;
unsigned long generation = 1;

class Configuration : public NS_CORBA::CorbaBaseAgentConfig, public NS_QUORCORBA::CorbaAgentConfig {
 public:
  const std::string& EmsName() const override { return emsName_; }
  const std::string& EmsVersion() const override { return emsVersion_; }
  int GetNotifyModel() const override { return 2; }
  long GetCachesize() const override { return 10; }
  long GetEventlistsize() const override { return 10; }

 private:
  std::string emsName_ = "Consumer/1";
  std::string emsVersion_ = "0.1";
};

class Log : public NS_BUNDLEMGR1::LogProxy {
 public:
  void Write(const char* text) override { seen().log.emplace_back(text); }
};

class LogService : public NS_LOG_SERVICE1::LogSvcInterface {
 public:
  std::shared_ptr<NS_BUNDLEMGR1::LogProxy> GetLogger(const char*, const char*,
                                                     const char*) override {
    return std::make_shared<Log>();
  }
};

class Validity : public NS_SECURITY_SERVICE1::SecurityIF {
 public:
  bool IsClientValid(long clientId, long, const char*, const char*, const char*) override {
    return clientId == 7;
  }
};

class Bundles : public NS_BUNDLEMGR1::BundleMgr {
 public:
  std::shared_ptr<NS_BUNDLEMGR1::ServiceInterface> GetService(const char* name) override {
    if (std::strcmp(name, "SecurityIF") == 0) {
      return std::make_shared<Validity>();
    }
    if (std::strcmp(name, "LogSvcInterface") == 0 && logServiceOffered) {
      return std::make_shared<LogService>();
    }
    return nullptr;
  }
  std::shared_ptr<NS_BUNDLEMGR1::LogProxy> GetLogProxy(const char*) override { return nullptr; }
  unsigned long Generation() const noexcept override { return generation; }
  std::recursive_mutex& GlobalMutex() override { return mutex_; }

 private:
  std::recursive_mutex mutex_;
};

Configuration& configuration() {
  static Configuration standard;
  return standard;
}

// The event cache traces on threads of its own.
void keepTrace(int level, const char* text) {
  static std::mutex mutex;
  const std::lock_guard<std::mutex> guard(mutex);
  seen().traces.push_back(std::to_string(level) + " " + NS_CORBA::GetTss()->file + ": " + text);
}

void addTrace(int level, const char* format, std::va_list arguments) {
  char text[256];
  std::vsnprintf(text, sizeof(text), format, arguments);
  keepTrace(level, text);
}

}  // namespace

void offerLogService(bool offered) {
  logServiceOffered = offered;
  ++generation;
}

}  // namespace consumer

namespace NS_BUNDLEMGR1 {

BundleMgr* BundleMgr::Instance() {
  static consumer::Bundles bundles;
  return &bundles;
}

}  // namespace NS_BUNDLEMGR1

namespace NS_CORBA {

CorbaBaseAgentConfig* CorbaBaseAgentConfig::Instance() { return &consumer::configuration(); }

TraceRecord* GetTss() {
  static thread_local TraceRecord record;
  return &record;
}

void TaDebug(int level, const char* text) { consumer::keepTrace(level, text); }

void TaDebugWithPara(int level, const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  consumer::addTrace(level, format, arguments);
  va_end(arguments);
}

void TaTrace(const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  consumer::addTrace(4, format, arguments);
  va_end(arguments);
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): as it is declared.
void fillFixedHeader(std::string type, CosNotification::StructuredEvent& event) {
  event.header.fixed_header.event_type.domain_name = CORBA::string_dup("consumer");
  event.header.fixed_header.event_type.type_name = CORBA::string_dup(type.c_str());
}

}  // namespace NS_CORBA

namespace NS_QUORCORBA {

CorbaAgentConfig* CorbaAgentConfig::Instance() { return &consumer::configuration(); }

void PushEvent(CosNotification::StructuredEvent& event) {
  consumer::seen().events.push_back(event);
}

std::string TimeChange::getUTCTime() { return "20121120094200.0Z"; }

bool TimeChange::checkDateTimeValid(const stDateTimeType& time) { return time.year != 0; }

}  // namespace NS_QUORCORBA

unsigned long EMFMOMgrI::setOwner() {
  consumer::seen().calls.emplace_back("setOwner");
  return 0;
}

unsigned long EMFMOMgrI::setUserLabel() {
  consumer::seen().calls.emplace_back("setUserLabel");
  return 0;
}

unsigned long EMFTopoI::getVersionOfDev(int, std::string& version) {
  version = "V1";
  return 0;
}

unsigned long EMFTopoI::getLocationOfDev(long, std::string& location) {
  location = "Hall 3";
  return 0;
}
