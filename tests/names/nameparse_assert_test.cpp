// What ParseNumberOrInvalid reports about a null text. The debug log is set up
// once a process, so each test here stands for a process of its own.
#include <gtest/gtest.h>

#include <fstream>
#include <regex>

#include "tests/support/doubles.h"
#include "zk_quornex/names/nameparse.h"
#include "zk_quornex/notify/exceptions.h"

namespace zk::test {
namespace {

using NS_QUORCORBA::ParseNumberOrInvalid;

constexpr long INVALID = 4294967295;

class RecordingLog : public NS_BUNDLEMGR1::LogProxy {
 public:
  void Write(const char* text) override { texts.emplace_back(text); }

  std::vector<std::string> texts;
};

class RecordingLogService : public NS_LOG_SERVICE1::LogSvcInterface {
 public:
  explicit RecordingLogService(std::shared_ptr<NS_BUNDLEMGR1::LogProxy> log)
      : log_(std::move(log)) {}

  std::shared_ptr<NS_BUNDLEMGR1::LogProxy> GetLogger(const char* bundle, const char* module,
                                                     const char* level) override {
    asked.push_back(std::string(bundle) + "|" + module + "|" + level);
    return log_;
  }

  std::vector<std::string> asked;

 private:
  std::shared_ptr<NS_BUNDLEMGR1::LogProxy> log_;
};

// Another kind of service under the log service's name.
class OtherService : public NS_BUNDLEMGR1::ServiceInterface {};

// Registers a log with the bundle manager for its lifetime.
class ScopedLogProxy {
 public:
  ScopedLogProxy(std::string name, std::shared_ptr<NS_BUNDLEMGR1::LogProxy> log)
      : name_(std::move(name)), before_(platform::registerLogProxy(name_, std::move(log))) {}
  ~ScopedLogProxy() { platform::registerLogProxy(name_, before_); }
  ScopedLogProxy(const ScopedLogProxy&) = delete;
  ScopedLogProxy& operator=(const ScopedLogProxy&) = delete;

 private:
  std::string name_;
  std::shared_ptr<NS_BUNDLEMGR1::LogProxy> before_;
};

constexpr char OWN_LOG[] = "zk_quor_corbaagent_bundlezk_quorcorba_emf";

std::string sourceLine(const std::string& file, int line) {
  std::ifstream source(std::string(ZK_SOURCE_DIR) + "/zk_quornex/names/" + file + ".cpp");
  std::string text;
  for (int at = 0; at < line && std::getline(source, text); ++at) {
  }
  return source ? text : std::string();
}

TEST(ParseNumberOrInvalid, reportsANullTextWithTheLineOfTheCheck) {
  const auto log = std::make_shared<RecordingLog>();
  const auto service = std::make_shared<RecordingLogService>(log);
  const ScopedService scoped("LogSvcInterface", service);

  EXPECT_EQ(ParseNumberOrInvalid(nullptr), INVALID);

  EXPECT_EQ(service->asked,
            std::vector<std::string>{"zk_quor_corbaagent_bundle|zk_quorcorba_emf|debug"});
  ASSERT_EQ(log->texts.size(), 1U);
  const std::regex form(
      "ASSERT: file nameparse, line ([1-9][0-9]*) assertion failed for '0 != str'\\.\n");
  std::smatch match;
  ASSERT_TRUE(std::regex_match(log->texts[0], match, form)) << log->texts[0];
  EXPECT_NE(sourceLine("nameparse", std::stoi(match[1])).find("0 != str"), std::string::npos)
      << "not the line of the check: " << match[1];
}

TEST(ParseNumberOrInvalid, reportsNothingForTexts) {
  const auto log = std::make_shared<RecordingLog>();
  const auto service = std::make_shared<RecordingLogService>(log);
  const ScopedService scoped("LogSvcInterface", service);

  for (const char* text : {"", " ", "abc", "12"}) {
    ParseNumberOrInvalid(text);
  }

  EXPECT_TRUE(service->asked.empty());
  EXPECT_TRUE(log->texts.empty());
}

TEST(ParseNumberOrInvalid, keepsTheLogItFoundFirst) {
  const auto first = std::make_shared<RecordingLog>();
  const auto second = std::make_shared<RecordingLog>();
  const auto service = std::make_shared<RecordingLogService>(first);
  const ScopedService scoped("LogSvcInterface", service);
  EXPECT_EQ(ParseNumberOrInvalid(nullptr), INVALID);
  {
    const ScopedService other("LogSvcInterface", std::make_shared<RecordingLogService>(second));
    EXPECT_EQ(ParseNumberOrInvalid(nullptr), INVALID);
  }
  const ScopedService none("LogSvcInterface", nullptr);
  EXPECT_EQ(ParseNumberOrInvalid(nullptr), INVALID);

  EXPECT_EQ(service->asked.size(), 1U);
  EXPECT_EQ(first->texts.size(), 3U);
  EXPECT_TRUE(second->texts.empty());
}

TEST(ParseNumberOrInvalid, prefersTheLogOfTheLogService) {
  const auto theirs = std::make_shared<RecordingLog>();
  const auto own = std::make_shared<RecordingLog>();
  const ScopedService scoped("LogSvcInterface", std::make_shared<RecordingLogService>(theirs));
  const ScopedLogProxy proxy(OWN_LOG, own);

  EXPECT_EQ(ParseNumberOrInvalid(nullptr), INVALID);

  EXPECT_EQ(theirs->texts.size(), 1U);
  EXPECT_TRUE(own->texts.empty());
}

TEST(ParseNumberOrInvalid, fallsBackToTheBundleManagersLog) {
  const auto own = std::make_shared<RecordingLog>();
  const auto service = std::make_shared<RecordingLogService>(nullptr);
  const ScopedService scoped("LogSvcInterface", service);
  const ScopedLogProxy proxy(OWN_LOG, own);

  EXPECT_EQ(ParseNumberOrInvalid(nullptr), INVALID);

  EXPECT_EQ(service->asked.size(), 1U);
  EXPECT_EQ(own->texts.size(), 1U);
}

TEST(ParseNumberOrInvalid, dropsTheReportWhenThereIsNoLogAtAll) {
  const auto service = std::make_shared<RecordingLogService>(nullptr);
  const ScopedService scoped("LogSvcInterface", service);
  EXPECT_EQ(ParseNumberOrInvalid(nullptr), INVALID);

  // The log that drops everything is kept too.
  const auto late = std::make_shared<RecordingLog>();
  const ScopedLogProxy proxy(OWN_LOG, late);
  EXPECT_EQ(ParseNumberOrInvalid(nullptr), INVALID);

  EXPECT_EQ(service->asked.size(), 1U);
  EXPECT_TRUE(late->texts.empty());
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
  const auto own = std::make_shared<RecordingLog>();
  const ScopedLogProxy proxy(OWN_LOG, own);
  {
    const ScopedService none("LogSvcInterface", nullptr);
    EXPECT_EQ(codeThrownForNull(), 0x41180004);
    EXPECT_EQ(codeThrownForNull(), 0x41180004);
    EXPECT_EQ(ParseNumberOrInvalid("abc"), INVALID);
  }
  EXPECT_TRUE(own->texts.empty());

  // The failed attempt is not kept: a service registered later is found.
  const auto log = std::make_shared<RecordingLog>();
  const ScopedService scoped("LogSvcInterface", std::make_shared<RecordingLogService>(log));
  EXPECT_EQ(ParseNumberOrInvalid(nullptr), INVALID);
  EXPECT_EQ(log->texts.size(), 1U);
}

TEST(ParseNumberOrInvalid, throwsWhenTheServiceIsOfAnotherKind) {
  const ScopedService scoped("LogSvcInterface", std::make_shared<OtherService>());
  EXPECT_EQ(codeThrownForNull(), 0x41180004);
}

}  // namespace
}  // namespace zk::test
