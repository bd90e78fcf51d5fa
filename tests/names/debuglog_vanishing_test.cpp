// The log service goes away while the debug log is being set up: what was found
// is used, and asked for once.
#include <gtest/gtest.h>

#include "tests/support/debuglogs.h"
#include "zk_quornex/names/debuglog.h"

namespace zk::test {
namespace {

// Knows the service once, and shows that something has changed at every look.
class Forgetful : public NS_BUNDLEMGR1::BundleMgr {
 public:
  std::shared_ptr<NS_BUNDLEMGR1::ServiceInterface> GetService(const char*) override {
    return ++asked == 1 ? service : nullptr;
  }
  std::shared_ptr<NS_BUNDLEMGR1::LogProxy> GetLogProxy(const char*) override { return nullptr; }
  unsigned long Generation() const noexcept override { return ++generation_; }
  std::recursive_mutex& GlobalMutex() override { return mutex_; }

  std::shared_ptr<CapturedLog> log = std::make_shared<CapturedLog>();
  std::shared_ptr<NS_BUNDLEMGR1::ServiceInterface> service = std::make_shared<FixedLogService>(log);
  int asked = 0;

 private:
  mutable unsigned long generation_ = 0;
  std::recursive_mutex mutex_;
};

Forgetful& bundles() {
  static Forgetful theBundles;
  return theBundles;
}

}  // namespace
}  // namespace zk::test

// In place of the platform's own, by the linker's leave.
NS_BUNDLEMGR1::BundleMgr* forgetfulInstance() asm("__wrap__ZN13NS_BUNDLEMGR19BundleMgr8InstanceEv");

NS_BUNDLEMGR1::BundleMgr* forgetfulInstance() { return &zk::test::bundles(); }

namespace zk::test {
namespace {

TEST(DebugLog, isSetUpByAServiceThatVanishesMeanwhile) {
  NS_QUORCORBA::assertionFailed("f", 1, "e");
  NS_QUORCORBA::assertionFailed("f", 2, "e");
  EXPECT_EQ(bundles().asked, 1);
  EXPECT_EQ(bundles().log->texts().size(), 2U);
}

}  // namespace
}  // namespace zk::test
