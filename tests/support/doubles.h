// Test doubles that install themselves into the default platform and put back
// what was there when they go out of scope.
#ifndef ZK_TESTS_SUPPORT_DOUBLES_H
#define ZK_TESTS_SUPPORT_DOUBLES_H

#include <chrono>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "zk_quornex/idl/events.h"
#include "zk_quornex/platform/default/bundles.h"
#include "zk_quornex/platform/default/clock.h"
#include "zk_quornex/platform/default/configuration.h"
#include "zk_quornex/platform/default/emsbackend.h"
#include "zk_quornex/platform/default/eventsinks.h"
#include "zk_quornex/platform/default/logs.h"

namespace zk::test {

// Installs itself for its lifetime.
template <class Interface>
class Installed : public Interface {
 public:
  Installed() : before_(zk::platform::install(static_cast<Interface*>(this))) {}
  ~Installed() override { zk::platform::install(before_); }
  Installed(const Installed&) = delete;
  Installed& operator=(const Installed&) = delete;

 private:
  Interface* before_;
};

class FixedEmsConfig : public Installed<NS_CORBA::CorbaBaseAgentConfig> {
 public:
  const std::string& EmsName() const override { return emsName; }
  const std::string& EmsVersion() const override { return emsVersion; }

  std::string emsName = "Quor/1";
  std::string emsVersion = "4.2";
};

class FixedAgentConfig : public Installed<NS_QUORCORBA::CorbaAgentConfig> {
 public:
  int GetNotifyModel() const override { return notifyModel; }
  long GetCachesize() const override { return cachesize; }
  long GetEventlistsize() const override { return eventlistsize; }

  int notifyModel = 2;
  long cachesize = 0;
  long eventlistsize = 0;
};

struct TraceLine {
  int level;
  std::string file;
  std::string function;
  int line;
  std::string text;
};

// Collects every trace line of every thread, with all levels on.
class CapturedTrace : public Installed<zk::platform::TraceSink> {
 public:
  CapturedTrace() : levelBefore_(zk::platform::traceLevel()) { zk::platform::setTraceLevel(4); }
  ~CapturedTrace() override { zk::platform::setTraceLevel(levelBefore_); }

  void write(int level, const NS_CORBA::TraceRecord& origin, const char* text) override {
    const std::lock_guard<std::mutex> guard(mutex_);
    lines_.push_back({level, origin.file, origin.function, origin.line, text});
  }

  std::vector<TraceLine> lines() const {
    const std::lock_guard<std::mutex> guard(mutex_);
    return lines_;
  }

  // "level text" of each line, for comparing whole runs.
  std::vector<std::string> texts() const {
    std::vector<std::string> result;
    for (const TraceLine& line : lines()) {
      result.push_back(std::to_string(line.level) + " " + line.text);
    }
    return result;
  }

  void clear() {
    const std::lock_guard<std::mutex> guard(mutex_);
    lines_.clear();
  }

 private:
  int levelBefore_;
  mutable std::mutex mutex_;
  std::vector<TraceLine> lines_;
};

// Keeps a copy of every pushed event, on the pushing thread.
class CapturedEvents : public Installed<zk::platform::EventPusher> {
 public:
  void push(CosNotification::StructuredEvent& event) override {
    const std::lock_guard<std::mutex> guard(mutex_);
    events_.push_back(event);
  }

  std::vector<CosNotification::StructuredEvent> events() const {
    const std::lock_guard<std::mutex> guard(mutex_);
    return events_;
  }

 private:
  mutable std::mutex mutex_;
  std::vector<CosNotification::StructuredEvent> events_;
};

// Stands still until it is set.
class FixedClock : public Installed<zk::platform::Clock> {
 public:
  std::chrono::system_clock::time_point now() override { return time; }

  std::chrono::system_clock::time_point time{};
};

// Registers a service for its lifetime; a null service takes the name away.
class ScopedService {
 public:
  ScopedService(std::string name, std::shared_ptr<NS_BUNDLEMGR1::ServiceInterface> service)
      : name_(std::move(name)), before_(zk::platform::registerService(name_, std::move(service))) {}
  ~ScopedService() { zk::platform::registerService(name_, before_); }
  ScopedService(const ScopedService&) = delete;
  ScopedService& operator=(const ScopedService&) = delete;

 private:
  std::string name_;
  std::shared_ptr<NS_BUNDLEMGR1::ServiceInterface> before_;
};

}  // namespace zk::test

#endif
