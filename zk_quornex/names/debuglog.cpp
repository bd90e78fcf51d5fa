#include "zk_quornex/names/debuglog.h"

#include <safeclib/safe_str_lib.h>

#include <atomic>
#include <memory>

#include "zk_quornex/platform/services.h"

// Defined beside the exception that it throws, which names know nothing of.
[[noreturn]] void throwInterfaceNotExist();

namespace NS_QUORCORBA {

namespace {

using NS_BUNDLEMGR1::BundleMgr;
using NS_BUNDLEMGR1::LogProxy;

std::shared_ptr<LogProxy> findLog() {
  NS_BUNDLEMGR1::CheckIFBuf<NS_LOG_SERVICE1::LogSvcInterface> buffer("LogSvcInterface");
  NS_LOG_SERVICE1::LogSvcInterface* service = buffer.Get();
  if (service == nullptr) {
    throwInterfaceNotExist();
  }
  auto log = service->GetLogger("zk_quor_corbaagent_bundle", "zk_quorcorba_emf", "debug");
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

void assertionFailed(const char* file, int line, const char* expression) {
  char text[512] = {};
  snprintf_s(text, sizeof(text), "ASSERT: file %s, line %d assertion failed for '%s'.\n", file,
             line, expression);
  debugLog().Write(text);
}

}  // namespace NS_QUORCORBA
