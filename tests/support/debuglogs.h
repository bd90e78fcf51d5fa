// Doubles behind the library's debug log. The log is found once in the life of
// a process: a test that looks at it needs a process of its own, and has to put
// these in place before the first failed assertion.
#ifndef ZK_TESTS_SUPPORT_DEBUGLOGS_H
#define ZK_TESTS_SUPPORT_DEBUGLOGS_H

#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "tests/support/doubles.h"

namespace zk::test {

// Keeps every text written to it.
class CapturedLog : public NS_BUNDLEMGR1::LogProxy {
 public:
  void Write(const char* text) override {
    const std::lock_guard<std::mutex> guard(mutex_);
    texts_.emplace_back(text);
  }

  std::vector<std::string> texts() const {
    const std::lock_guard<std::mutex> guard(mutex_);
    return texts_;
  }

 private:
  mutable std::mutex mutex_;
  std::vector<std::string> texts_;
};

// Hands out the one log it is given, which may be null, and keeps what it was
// asked for.
class FixedLogService : public NS_LOG_SERVICE1::LogSvcInterface {
 public:
  explicit FixedLogService(std::shared_ptr<NS_BUNDLEMGR1::LogProxy> log) : log_(std::move(log)) {}

  std::shared_ptr<NS_BUNDLEMGR1::LogProxy> GetLogger(const char* bundle, const char* module,
                                                     const char* level) override {
    const std::lock_guard<std::mutex> guard(mutex_);
    asked_.push_back(std::string(bundle) + "|" + module + "|" + level);
    return log_;
  }

  std::vector<std::string> asked() const {
    const std::lock_guard<std::mutex> guard(mutex_);
    return asked_;
  }

 private:
  mutable std::mutex mutex_;
  std::shared_ptr<NS_BUNDLEMGR1::LogProxy> log_;
  std::vector<std::string> asked_;
};

// Registers one of the bundle manager's own logs for its lifetime.
class ScopedLogProxy {
 public:
  ScopedLogProxy(std::string name, std::shared_ptr<NS_BUNDLEMGR1::LogProxy> log)
      : name_(std::move(name)), before_(zk::platform::registerLogProxy(name_, std::move(log))) {}
  ~ScopedLogProxy() { zk::platform::registerLogProxy(name_, before_); }
  ScopedLogProxy(const ScopedLogProxy&) = delete;
  ScopedLogProxy& operator=(const ScopedLogProxy&) = delete;

 private:
  std::string name_;
  std::shared_ptr<NS_BUNDLEMGR1::LogProxy> before_;
};

}  // namespace zk::test

#endif
