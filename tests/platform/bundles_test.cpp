#include "zk_quornex/platform/default/bundles.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "tests/support/doubles.h"

namespace zk::test {
namespace {

using NS_BUNDLEMGR1::BundleMgr;
using NS_BUNDLEMGR1::CheckIFBuf;
using NS_BUNDLEMGR1::DefaultLogProxy;
using NS_BUNDLEMGR1::ServiceInterface;
using NS_LOG_SERVICE1::LogSvcInterface;
using NS_SECURITY_SERVICE1::SecurityIF;
using zk::platform::registerLogProxy;
using zk::platform::registerService;

class NumberedService : public ServiceInterface {
 public:
  explicit NumberedService(int value) : number(value) {}
  const int number;
};

std::shared_ptr<NumberedService> numbered(int number) {
  return std::make_shared<NumberedService>(number);
}

TEST(Bundles, hasALogServiceFromTheStart) {
  CheckIFBuf<LogSvcInterface> logs("LogSvcInterface");
  ASSERT_NE(logs.Get(), nullptr);
  EXPECT_NE(logs.Get()->GetLogger("bundle", "module", "debug"), nullptr);
}

TEST(Bundles, takesEveryClientForValidFromTheStart) {
  CheckIFBuf<SecurityIF> security("SecurityIF");
  ASSERT_NE(security.Get(), nullptr);
  EXPECT_TRUE(security.Get()->IsClientValid(1, 1, "", "", ""));
}

TEST(Bundles, hasNothingUnderUnknownNames) {
  EXPECT_EQ(BundleMgr::Instance()->GetService("nobody"), nullptr);
  EXPECT_EQ(BundleMgr::Instance()->GetService(nullptr), nullptr);
  EXPECT_EQ(BundleMgr::Instance()->GetLogProxy("nobody"), nullptr);
  EXPECT_EQ(BundleMgr::Instance()->GetLogProxy(nullptr), nullptr);
}

TEST(Bundles, returnsWhatWasRegisteredBefore) {
  const auto one = numbered(1);
  const auto two = numbered(2);
  EXPECT_EQ(registerService("numbered", one), nullptr);
  EXPECT_EQ(registerService("numbered", two), one);
  EXPECT_EQ(BundleMgr::Instance()->GetService("numbered"), two);
  EXPECT_EQ(registerService("numbered", nullptr), two);
  EXPECT_EQ(BundleMgr::Instance()->GetService("numbered"), nullptr);
  EXPECT_EQ(registerService("numbered", nullptr), nullptr);
}

TEST(Bundles, keepsLogsApartFromServices) {
  const auto log = std::make_shared<DefaultLogProxy>();
  EXPECT_EQ(registerLogProxy("mine", log), nullptr);
  EXPECT_EQ(BundleMgr::Instance()->GetLogProxy("mine"), log);
  EXPECT_EQ(BundleMgr::Instance()->GetService("mine"), nullptr);
  EXPECT_EQ(registerLogProxy("mine", nullptr), log);
  EXPECT_EQ(BundleMgr::Instance()->GetLogProxy("mine"), nullptr);
}

TEST(Bundles, changesGenerationWithEveryRegistration) {
  BundleMgr* bundles = BundleMgr::Instance();
  const unsigned long first = bundles->Generation();
  EXPECT_NE(first, 0u);
  registerService("numbered", numbered(1));
  const unsigned long second = bundles->Generation();
  registerService("numbered", nullptr);
  EXPECT_NE(first, second);
  EXPECT_NE(second, bundles->Generation());
}

TEST(Bundles, lookedUpServiceFollowsReplacementAndRemoval) {
  CheckIFBuf<NumberedService> lookedUp("numbered");
  EXPECT_EQ(lookedUp.Get(), nullptr);
  {
    const ScopedService one("numbered", numbered(1));
    ASSERT_NE(lookedUp.Get(), nullptr);
    EXPECT_EQ(lookedUp.Get()->number, 1);
    {
      const ScopedService two("numbered", numbered(2));
      EXPECT_EQ(lookedUp.Get()->number, 2);
    }
    EXPECT_EQ(lookedUp.Get()->number, 1);
  }
  EXPECT_EQ(lookedUp.Get(), nullptr);
}

TEST(Bundles, lookedUpServiceIsNullForAnotherInterface) {
  const ScopedService service("numbered", numbered(1));
  EXPECT_EQ(CheckIFBuf<SecurityIF>("numbered").Get(), nullptr);
}

TEST(Bundles, lookedUpServiceLivesUntilTheNextLook) {
  CheckIFBuf<NumberedService> lookedUp("numbered");
  std::weak_ptr<NumberedService> watched;
  {
    const auto service = numbered(1);
    watched = service;
    registerService("numbered", service);
  }
  NumberedService* held = lookedUp.Get();
  registerService("numbered", nullptr);
  ASSERT_FALSE(watched.expired());
  EXPECT_EQ(held->number, 1);
  EXPECT_EQ(lookedUp.Get(), nullptr);
  EXPECT_TRUE(watched.expired());
}

TEST(Bundles, allowsLookupsUnderTheGlobalMutex) {
  BundleMgr* bundles = BundleMgr::Instance();
  const std::lock_guard<std::recursive_mutex> outer(bundles->GlobalMutex());
  const std::lock_guard<std::recursive_mutex> inner(bundles->GlobalMutex());
  EXPECT_NE(bundles->GetService("LogSvcInterface"), nullptr);
  bool foundElsewhere = false;
  std::thread([&] { foundElsewhere = bundles->GetService("SecurityIF") != nullptr; }).join();
  EXPECT_TRUE(foundElsewhere);
}

// A service is destroyed outside the registry's lock: it may look up others.
TEST(Bundles, lettingAServiceGoMayCallBack) {
  class Curious : public ServiceInterface {
   public:
    explicit Curious(bool& foundOther) : foundOther_(foundOther) {}
    ~Curious() override {
      foundOther_ = BundleMgr::Instance()->GetService("SecurityIF") != nullptr;
    }

   private:
    bool& foundOther_;
  };
  bool foundOther = false;
  registerService("curious", std::make_shared<Curious>(foundOther));
  registerService("curious", nullptr);
  EXPECT_TRUE(foundOther);
}

TEST(Bundles, lookupsNeverSeeHalfARegistration) {
  std::atomic<bool> stop{false};
  std::atomic<int> wrong{0};
  registerService("numbered", numbered(1));
  std::thread reader([&] {
    CheckIFBuf<NumberedService> lookedUp("numbered");
    int last = 0;
    while (!stop) {
      const NumberedService* service = lookedUp.Get();
      if (service == nullptr || service->number < last) {
        ++wrong;
      }
      if (service != nullptr) {
        last = service->number;
      }
    }
  });
  for (int i = 2; i < 2000; ++i) {
    registerService("numbered", numbered(i));
  }
  stop = true;
  reader.join();
  registerService("numbered", nullptr);
  EXPECT_EQ(wrong, 0);
}

}  // namespace
}  // namespace zk::test
