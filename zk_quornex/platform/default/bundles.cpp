#include "zk_quornex/platform/default/bundles.h"

#include <atomic>
#include <map>
#include <utility>

#include "zk_quornex/platform/default/logs.h"
#include "zk_quornex/platform/default/replaceable.h"
#include "zk_quornex/platform/threadsafety.h"

namespace zk::platform {
namespace {

using NS_BUNDLEMGR1::LogProxy;
using NS_BUNDLEMGR1::ServiceInterface;

std::string orEmpty(const char* text) { return text != nullptr ? text : ""; }

class StandardLogService : public NS_LOG_SERVICE1::LogSvcInterface {
 public:
  std::shared_ptr<LogProxy> GetLogger(const char* bundle, const char* module,
                                      const char* level) override {
    return makeNamedLog(orEmpty(bundle) + orEmpty(module), orEmpty(level));
  }
};

class EveryClientValid : public NS_SECURITY_SERVICE1::SecurityIF {
 public:
  bool IsClientValid(long, long, const char*, const char*, const char*) override { return true; }
};

template <class Entry>
using ByName = std::map<std::string, std::shared_ptr<Entry>, std::less<>>;

// Puts entry under name, or takes the name away for null; returns what was there.
template <class Entry>
std::shared_ptr<Entry> exchange(ByName<Entry>& entries, const std::string& name,
                                std::shared_ptr<Entry> entry) {
  std::shared_ptr<Entry> before = std::exchange(entries[name], entry);
  if (entry == nullptr) {
    entries.erase(name);
  }
  return before;
}

template <class Entry>
std::shared_ptr<Entry> find(const ByName<Entry>& entries, const char* name) {
  if (name == nullptr) {
    return nullptr;
  }
  const auto found = entries.find(name);
  return found != entries.end() ? found->second : nullptr;
}

class Registry : public NS_BUNDLEMGR1::BundleMgr {
 public:
  Registry() {
    services_["LogSvcInterface"] = std::make_shared<StandardLogService>();
    services_["SecurityIF"] = std::make_shared<EveryClientValid>();
  }

  std::shared_ptr<ServiceInterface> GetService(const char* name) override {
    const MutexLock guard(mutex_);
    return find(services_, name);
  }

  std::shared_ptr<LogProxy> GetLogProxy(const char* name) override {
    const MutexLock guard(mutex_);
    return find(logs_, name);
  }

  unsigned long Generation() const noexcept override {
    return generation_.load(std::memory_order_acquire);
  }

  std::recursive_mutex& GlobalMutex() override { return globalMutex_; }

  // Whoever sees the new generation waits for the lock and finds the new
  // service; whoever finds it earlier looks once more in vain.
  std::shared_ptr<ServiceInterface> exchangeService(const std::string& name,
                                                    std::shared_ptr<ServiceInterface> service) {
    const MutexLock guard(mutex_);
    std::shared_ptr<ServiceInterface> before = exchange(services_, name, std::move(service));
    generation_.fetch_add(1, std::memory_order_release);
    return before;
  }

  std::shared_ptr<LogProxy> exchangeLog(const std::string& name, std::shared_ptr<LogProxy> log) {
    const MutexLock guard(mutex_);
    return exchange(logs_, name, std::move(log));
  }

 private:
  // For callers; nothing here locks it.
  std::recursive_mutex globalMutex_;

  // Not 0, which CheckIFBuf starts from.
  std::atomic<unsigned long> generation_{1};

  // The innermost lock: no service or log is called, and none is destroyed, while
  // it is held.
  Mutex mutex_;
  ByName<ServiceInterface> services_ ZK_GUARDED_BY(mutex_);
  ByName<LogProxy> logs_ ZK_GUARDED_BY(mutex_);
};

}  // namespace

std::shared_ptr<ServiceInterface> registerService(const std::string& name,
                                                  std::shared_ptr<ServiceInterface> service) {
  return immortal<Registry>().exchangeService(name, std::move(service));
}

std::shared_ptr<LogProxy> registerLogProxy(const std::string& name, std::shared_ptr<LogProxy> log) {
  return immortal<Registry>().exchangeLog(name, std::move(log));
}

}  // namespace zk::platform

namespace NS_BUNDLEMGR1 {

BundleMgr* BundleMgr::Instance() { return &zk::platform::immortal<zk::platform::Registry>(); }

}  // namespace NS_BUNDLEMGR1
