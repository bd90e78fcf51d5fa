// What ParseNumberOrInvalid reports about a null text. The debug log is set up
// once a process, so each test here runs in a process of its own.
#include <gtest/gtest.h>

#include <regex>

#include "tests/support/apart.h"
#include "tests/support/debuglogs.h"
#include "tests/support/sourceline.h"
#include "zk_quornex/names/nameparse.h"
#include "zk_quornex/notify/exceptions.h"

namespace zk::test {
namespace {

using NS_QUORCORBA::ParseNumberOrInvalid;

constexpr long INVALID = 4294967295;

// Another kind of service under the log service's name.
class OtherService : public NS_BUNDLEMGR1::ServiceInterface {};

constexpr char OWN_LOG[] = "zk_quor_corbaagent_bundlezk_quorcorba_emf";

TEST(ParseNumberOrInvalid, reportsANullTextWithTheLineOfTheCheck) {
  runApart([] {
    const auto log = std::make_shared<CapturedLog>();
    const auto service = std::make_shared<FixedLogService>(log);
    const ScopedService scoped("LogSvcInterface", service);

    EXPECT_EQ(ParseNumberOrInvalid(nullptr), INVALID);

    EXPECT_EQ(service->asked(),
              std::vector<std::string>{"zk_quor_corbaagent_bundle|zk_quorcorba_emf|debug"});
    ASSERT_EQ(log->texts().size(), 1U);
    const std::regex form(
        "ASSERT: file nameparse, line ([1-9][0-9]*) assertion failed for '0 != str'\\.\n");
    const std::string text = log->texts()[0];
    std::smatch match;
    ASSERT_TRUE(std::regex_match(text, match, form)) << text;
    EXPECT_NE(sourceLine("nameparse", std::stoi(match[1])).find("str != nullptr"),
              std::string::npos)
        << "not the line of the check: " << match[1];
  });
}

TEST(ParseNumberOrInvalid, reportsNothingForTexts) {
  runApart([] {
    const auto log = std::make_shared<CapturedLog>();
    const auto service = std::make_shared<FixedLogService>(log);
    const ScopedService scoped("LogSvcInterface", service);

    for (const char* text : {"", " ", "abc", "12"}) {
      ParseNumberOrInvalid(text);
    }

    EXPECT_TRUE(service->asked().empty());
    EXPECT_TRUE(log->texts().empty());
  });
}

TEST(ParseNumberOrInvalid, keepsTheLogItFoundFirst) {
  runApart([] {
    const auto first = std::make_shared<CapturedLog>();
    const auto second = std::make_shared<CapturedLog>();
    const auto service = std::make_shared<FixedLogService>(first);
    const ScopedService scoped("LogSvcInterface", service);
    EXPECT_EQ(ParseNumberOrInvalid(nullptr), INVALID);
    {
      const ScopedService other("LogSvcInterface", std::make_shared<FixedLogService>(second));
      EXPECT_EQ(ParseNumberOrInvalid(nullptr), INVALID);
    }
    const ScopedService none("LogSvcInterface", nullptr);
    EXPECT_EQ(ParseNumberOrInvalid(nullptr), INVALID);

    EXPECT_EQ(service->asked().size(), 1U);
    EXPECT_EQ(first->texts().size(), 3U);
    EXPECT_TRUE(second->texts().empty());
  });
}

TEST(ParseNumberOrInvalid, prefersTheLogOfTheLogService) {
  runApart([] {
    const auto theirs = std::make_shared<CapturedLog>();
    const auto own = std::make_shared<CapturedLog>();
    const ScopedService scoped("LogSvcInterface", std::make_shared<FixedLogService>(theirs));
    const ScopedLogProxy proxy(OWN_LOG, own);

    EXPECT_EQ(ParseNumberOrInvalid(nullptr), INVALID);

    EXPECT_EQ(theirs->texts().size(), 1U);
    EXPECT_TRUE(own->texts().empty());
  });
}

TEST(ParseNumberOrInvalid, fallsBackToTheBundleManagersLog) {
  runApart([] {
    const auto own = std::make_shared<CapturedLog>();
    const auto service = std::make_shared<FixedLogService>(nullptr);
    const ScopedService scoped("LogSvcInterface", service);
    const ScopedLogProxy proxy(OWN_LOG, own);

    EXPECT_EQ(ParseNumberOrInvalid(nullptr), INVALID);

    EXPECT_EQ(service->asked().size(), 1U);
    EXPECT_EQ(own->texts().size(), 1U);
  });
}

TEST(ParseNumberOrInvalid, dropsTheReportWhenThereIsNoLogAtAll) {
  runApart([] {
    const auto service = std::make_shared<FixedLogService>(nullptr);
    const ScopedService scoped("LogSvcInterface", service);
    EXPECT_EQ(ParseNumberOrInvalid(nullptr), INVALID);

    // The log that drops everything is kept too.
    const auto late = std::make_shared<CapturedLog>();
    const ScopedLogProxy proxy(OWN_LOG, late);
    EXPECT_EQ(ParseNumberOrInvalid(nullptr), INVALID);

    EXPECT_EQ(service->asked().size(), 1U);
    EXPECT_TRUE(late->texts().empty());
  });
}

int codeThrownForNull() {
  try {
    ParseNumberOrInvalid(nullptr);
  } catch (InterfaceNotExistException& missing) {
    return missing.code_;
  }
  return 0;
}

TEST(ParseNumberOrInvalid, throwsWhenNoLogServiceIsRegistered) {
  runApart([] {
    const auto own = std::make_shared<CapturedLog>();
    const ScopedLogProxy proxy(OWN_LOG, own);
    {
      const ScopedService none("LogSvcInterface", nullptr);
      EXPECT_EQ(codeThrownForNull(), 0x41180004);
      EXPECT_EQ(codeThrownForNull(), 0x41180004);
      EXPECT_EQ(ParseNumberOrInvalid("abc"), INVALID);
    }
    EXPECT_TRUE(own->texts().empty());

    // The failed attempt is not kept: a service registered later is found.
    const auto log = std::make_shared<CapturedLog>();
    const ScopedService scoped("LogSvcInterface", std::make_shared<FixedLogService>(log));
    EXPECT_EQ(ParseNumberOrInvalid(nullptr), INVALID);
    EXPECT_EQ(log->texts().size(), 1U);
  });
}

TEST(ParseNumberOrInvalid, throwsWhenTheServiceIsOfAnotherKind) {
  runApart([] {
    const ScopedService scoped("LogSvcInterface", std::make_shared<OtherService>());
    EXPECT_EQ(codeThrownForNull(), 0x41180004);
  });
}

}  // namespace
}  // namespace zk::test
