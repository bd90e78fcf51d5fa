// What the command line is refused for, before anything is called.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>
#include <vector>

#include "nms/commands/program.h"
#include "nms/wire/failure.h"
#include "tests/nms/support/process.h"

namespace zk::nms {
namespace {

using testing::HasSubstr;

struct Ran {
  int code;
  std::string out;
  std::string err;
};

Ran runWith(const std::vector<const char*>& arguments) {
  std::vector<const char*> argv = {"zk-nms"};
  argv.insert(argv.end(), arguments.begin(), arguments.end());
  std::ostringstream out;
  std::ostringstream err;
  Interrupts interrupts;
  const int code = run(static_cast<int>(argv.size()), argv.data(), {out, err, interrupts});
  return {code, out.str(), err.str()};
}

TEST(Usage, refusesWrongCommandLinesWith3) {
  const std::vector<std::vector<const char*>> refused = {
      {},
      {"frobnicate"},
      {"ems", "extra"},
      {"me", "7", "8"},
      {"me", "7", "--names"},
      {"me", ""},
      {"me", "EMS=a,7"},
      {"ems", "me"},
      {"-o", "xml", "ems"},
      {"-o"},
      {"--page", "0", "me"},
      {"--page", "many", "me"},
      {"--page", "-1", "me"},
      {"--timeout", "0", "me"},
      {"--user", "a", "--password", "b", "--password-file", "c", "ems"},
      {"--password-file", "/nonexistent", "ems"},
      {"--password-file", "/tmp", "ems"},
      {"--nonsense", "ems"},
      {"--agent", "nowhere", "ems"},
  };
  for (const auto& arguments : refused) {
    const Ran ran = runWith(arguments);
    EXPECT_EQ(ran.code, 3) << testing::PrintToString(arguments) << ran.err;
    EXPECT_EQ(ran.out, "") << testing::PrintToString(arguments);
    EXPECT_THAT(ran.err, HasSubstr("zk-nms: ")) << testing::PrintToString(arguments);
  }
}

TEST(Usage, saysWhatIsWrong) {
  EXPECT_THAT(runWith({"-o", "xml", "ems"}).err, HasSubstr("'xml' is neither table nor json"));
  EXPECT_THAT(runWith({"frobnicate"}).err, HasSubstr("frobnicate"));
  EXPECT_THAT(runWith({"me", "EMS=a,7"}).err, HasSubstr("'EMS=a,7'"));
}

TEST(Help, isDataAndHasExamples) {
  for (const auto& arguments : std::vector<std::vector<const char*>>{{"--help"},
                                                                     {"ems", "--help"},
                                                                     {"me", "--help"},
                                                                     {"subnetwork", "-h"},
                                                                     {"link", "-h"},
                                                                     {"node", "-h"},
                                                                     {"submap", "-h"},
                                                                     {"displaylink", "-h"},
                                                                     {"set-label", "-h"},
                                                                     {"set-owner", "-h"},
                                                                     {"set-native-name", "-h"},
                                                                     {"events", "-h"},
                                                                     {"wait", "-h"},
                                                                     {"alarms", "-h"},
                                                                     {"resync", "-h"}}) {
    const Ran ran = runWith(arguments);
    EXPECT_EQ(ran.code, 0) << testing::PrintToString(arguments);
    EXPECT_EQ(ran.err, "");
    EXPECT_THAT(ran.out, HasSubstr("Examples:\n  zk-nms ")) << testing::PrintToString(arguments);
  }
}

TEST(Help, namesEveryCommandAndExitStatus) {
  const Ran ran = runWith({"--help"});
  for (const char* text : {"\n  ems ",
                           "\n  me ",
                           "\n  subnetwork ",
                           "\n  link ",
                           "\n  node ",
                           "\n  submap ",
                           "\n  displaylink ",
                           "\n  set-label ",
                           "\n  set-owner ",
                           "\n  set-native-name ",
                           "\n  events ",
                           "\n  wait ",
                           "\n  alarms ",
                           "\n  resync ",
                           "0 fine",
                           "1 refused",
                           "2 the agent cannot be reached",
                           "3 wrong usage",
                           "4 what was waited for",
                           "5 events were lost",
                           "EMS=Quor/1,ManagedElement=7",
                           "ZK_NMS_PASSWORD"}) {
    EXPECT_THAT(ran.out, HasSubstr(text));
  }
}

class Password : public testing::Test {
 protected:
  void SetUp() override { unsetenv("ZK_NMS_PASSWORD"); }
  void TearDown() override { unsetenv("ZK_NMS_PASSWORD"); }

  std::string chosen() {
    readPassword(options_);
    return options_.access.password;
  }

  Options options_;
};

TEST_F(Password, isEmptyWhenNobodyGivesOne) { EXPECT_EQ(chosen(), ""); }

TEST_F(Password, comesFromTheEnvironmentLast) {
  setenv("ZK_NMS_PASSWORD", "from environment", 1);
  EXPECT_EQ(chosen(), "from environment");
  options_.access.password = "given";
  EXPECT_EQ(chosen(), "given");
}

TEST_F(Password, isTheFirstLineOfItsFile) {
  setenv("ZK_NMS_PASSWORD", "from environment", 1);
  const test::TemporaryFile file(" with blanks \r\nsecond\n");
  options_.passwordFile = file.path();
  EXPECT_EQ(chosen(), " with blanks ");
}

TEST_F(Password, mayBeEmptyInItsFile) {
  setenv("ZK_NMS_PASSWORD", "from environment", 1);
  const test::TemporaryFile file("");
  options_.passwordFile = file.path();
  EXPECT_EQ(chosen(), "");
}

TEST_F(Password, fileMustBeReadable) {
  options_.passwordFile = "/nonexistent";
  EXPECT_THROW(chosen(), UsageError);
}

}  // namespace
}  // namespace zk::nms
