#include "zk_quornex/names/debuglog.h"

#include <atomic>
#include <memory>

#include "zk_quornex/notify/exceptions.h"
#include "zk_quornex/platform/services.h"

namespace NS_QUORCORBA {

namespace {

using NS_BUNDLEMGR1::BundleMgr;
using NS_BUNDLEMGR1::LogProxy;

std::shared_ptr<LogProxy> findLog() {
  NS_BUNDLEMGR1::CheckIFBuf<NS_LOG_SERVICE1::LogSvcInterface> service("LogSvcInterface");
  if (service.Get() == nullptr) {
    throwInterfaceNotExist();
  }
  auto log = service.Get()->GetLogger("zk_quor_corbaagent_bundle", "zk_quorcorba_emf", "debug");
  if (!log) {
    log = BundleMgr::Instance()->GetLogProxy("zk_quor_corbaagent_bundlezk_quorcorba_emf");
  }
  if (!log) {
    log = std::make_shared<NS_BUNDLEMGR1::DefaultLogProxy>();
  }
  return log;
}

// Kept on purpose when the process ends: other static objects may still fail
// an assertion then.
std::atomic<std::shared_ptr<LogProxy>*> theLog{nullptr};

}  // namespace

LogProxy& debugLog() {
  if (auto* log = theLog.load(std::memory_order_acquire)) {
    return **log;
  }
  const std::lock_guard<std::recursive_mutex> guard(BundleMgr::Instance()->GlobalMutex());
  if (theLog.load(std::memory_order_relaxed) == nullptr) {
    theLog.store(new std::shared_ptr<LogProxy>(findLog()), std::memory_order_release);
  }
  return **theLog.load(std::memory_order_relaxed);
}

}  // namespace NS_QUORCORBA
