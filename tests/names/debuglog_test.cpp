// Where failed assertions are written: which log is found, in which order, and
// how often it is looked for.
#include "zk_quornex/names/debuglog.h"

#include <gtest/gtest.h>

#include <thread>

#include "tests/names/names.h"
#include "tests/support/apart.h"
#include "tests/support/debuglogs.h"
#include "zk_quornex/notify/exceptions.h"

namespace zk::test {

namespace {

using NS_QUORCORBA::assertionFailed;
using NS_QUORCORBA::TEName;

constexpr char LOG_SERVICE[] = "LogSvcInterface";
constexpr char BUNDLE_LOG[] = "zk_quor_corbaagent_bundlezk_quorcorba_emf";

std::shared_ptr<CapturedLog> newLog() { return std::make_shared<CapturedLog>(); }

TEST(DebugLog, isTheLogServicesLogger) {
  runApart([] {
    const auto log = newLog();
    const auto bundleLog = newLog();
    const auto service = std::make_shared<FixedLogService>(log);
    const ScopedService registered(LOG_SERVICE, service);
    const ScopedLogProxy proxy(BUNDLE_LOG, bundleLog);
    assertionFailed("somefile", 12, "0 != something");
    EXPECT_EQ(log->texts(),
              std::vector<std::string>{
                  "ASSERT: file somefile, line 12 assertion failed for '0 != something'.\n"});
    EXPECT_TRUE(bundleLog->texts().empty());
    EXPECT_EQ(service->asked(),
              std::vector<std::string>{"zk_quor_corbaagent_bundle|zk_quorcorba_emf|debug"});
  });
}

TEST(DebugLog, isTheBundleManagersWithoutALogger) {
  runApart([] {
    const auto log = newLog();
    const auto service = std::make_shared<FixedLogService>(nullptr);
    const ScopedService registered(LOG_SERVICE, service);
    const ScopedLogProxy proxy(BUNDLE_LOG, log);
    assertionFailed("f", 1, "e");
    EXPECT_EQ(log->texts(),
              std::vector<std::string>{"ASSERT: file f, line 1 assertion failed for 'e'.\n"});
    EXPECT_EQ(service->asked().size(), 1U);
  });
}

TEST(DebugLog, dropsEverythingWithoutAnyLog) {
  runApart([] {
    const auto service = std::make_shared<FixedLogService>(nullptr);
    const ScopedService registered(LOG_SERVICE, service);
    auto& log = NS_QUORCORBA::debugLog();
    EXPECT_NE(dynamic_cast<NS_BUNDLEMGR1::DefaultLogProxy*>(&log), nullptr);
    EXPECT_EQ(TEName().Accept(nullptr), OTHER_EMS);
  });
}

TEST(DebugLog, isLookedForOnce) {
  runApart([] {
    const auto log = newLog();
    const auto service = std::make_shared<FixedLogService>(log);
    const ScopedService registered(LOG_SERVICE, service);
    TEName name;
    for (int i = 0; i < 3; ++i) {
      name.Accept(nullptr);
    }
    EXPECT_EQ(log->texts().size(), 3U);
    EXPECT_EQ(service->asked().size(), 1U);
  });
}

TEST(DebugLog, staysWhenItsServiceGoesAway) {
  runApart([] {
    const auto log = newLog();
    {
      const ScopedService registered(LOG_SERVICE, std::make_shared<FixedLogService>(log));
      TEName().Accept(nullptr);
    }
    const ScopedService gone(LOG_SERVICE, nullptr);
    EXPECT_EQ(TEName().Accept(nullptr), OTHER_EMS);
    EXPECT_EQ(log->texts().size(), 2U);
  });
}

TEST(DebugLog, isNotLookedForBeforeSomethingFails) {
  runApart([] {
    const auto service = std::make_shared<FixedLogService>(newLog());
    const ScopedService registered(LOG_SERVICE, service);
    TEName name;
    globaldefs::NVSList_T list;
    name.Ems2NmsName(list);
    name.Nms2EmsName(list);
    name.Nms2EmsName(makeName({{"EMS", "other"}}));
    EXPECT_TRUE(service->asked().empty());
  });
}

// The code of the exception that leaves Accept, or 0 when none does.
int codeLeavingAccept(TEName& name) {
  try {
    name.Accept(nullptr);
  } catch (InterfaceNotExistException& missing) {
    return missing.code_;
  }
  return 0;
}

TEST(DebugLog, withoutTheServiceLetsTheExceptionLeave) {
  runApart([] {
    const ScopedService gone(LOG_SERVICE, nullptr);
    const ScopedLogProxy proxy(BUNDLE_LOG, newLog());
    TEName ems;
    NS_QUORCORBA::TETopoLinkName link;
    EXPECT_EQ(codeLeavingAccept(ems), 0x41180004);
    EXPECT_EQ(codeLeavingAccept(link), 0x41180004);
  });
}

// Something else registered under the log service's name.
class AnotherService : public NS_BUNDLEMGR1::ServiceInterface {};

TEST(DebugLog, withAServiceOfAnotherKindLetsTheExceptionLeave) {
  runApart([] {
    const ScopedService wrong(LOG_SERVICE, std::make_shared<AnotherService>());
    TEName name;
    EXPECT_EQ(codeLeavingAccept(name), 0x41180004);
  });
}

TEST(DebugLog, isFoundOnceTheServiceIsBack) {
  runApart([] {
    TEName name;
    {
      const ScopedService gone(LOG_SERVICE, nullptr);
      ASSERT_EQ(codeLeavingAccept(name), 0x41180004);
    }
    const auto log = newLog();
    const ScopedService registered(LOG_SERVICE, std::make_shared<FixedLogService>(log));
    EXPECT_EQ(codeLeavingAccept(name), 0);
    EXPECT_EQ(log->texts().size(), 1U);
  });
}

TEST(DebugLog, isSetUpOnceByManyThreads) {
  runApart([] {
    const auto log = newLog();
    const auto service = std::make_shared<FixedLogService>(log);
    const ScopedService registered(LOG_SERVICE, service);
    std::vector<std::thread> threads;
    threads.reserve(8);
    for (int i = 0; i < 8; ++i) {
      threads.emplace_back([] { TEName().Accept(nullptr); });
    }
    for (std::thread& thread : threads) {
      thread.join();
    }
    EXPECT_EQ(log->texts().size(), 8U);
    EXPECT_EQ(service->asked().size(), 1U);
  });
}

}  // namespace

}  // namespace zk::test
