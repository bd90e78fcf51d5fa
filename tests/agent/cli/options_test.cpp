#include "agent/cli/options.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "tests/agent/ems/support.h"

namespace {

using namespace zk::agent;
using zk::test::TemporaryFolder;
using zk::test::writeBytes;

CommandLine parsed(const std::vector<const char*>& arguments) {
  std::vector<const char*> all = {"zk-agent"};
  all.insert(all.end(), arguments.begin(), arguments.end());
  return parseCommandLine(static_cast<int>(all.size()), all.data());
}

TEST(CommandLine, hasDefaults) {
  const CommandLine line = parsed({});
  ASSERT_FALSE(line.exitStatus);
  EXPECT_FALSE(line.passwordChange);
  EXPECT_EQ(textOf(line.options.listen), "127.0.0.1:5814");
  EXPECT_EQ(line.options.inventory, "./zk-agent.db");
  EXPECT_EQ(line.options.iorFile, "");
  EXPECT_EQ(line.options.emsName, "Quor/1");
  EXPECT_EQ(line.options.interfaceVersion, "3.0");
  EXPECT_EQ(line.options.usersFile, "");
  EXPECT_FALSE(line.options.allowAnyone);
  EXPECT_EQ(line.options.limits.sessions, 128U);
  EXPECT_EQ(line.options.limits.peerSessions, 96U);
  EXPECT_EQ(line.options.limits.userSessions, 16U);
  EXPECT_EQ(line.options.limits.iterators, 20U);
  EXPECT_EQ(line.options.limits.iteratorIdle, std::chrono::seconds(900));
  EXPECT_EQ(line.options.limits.page, 1000U);
  EXPECT_EQ(line.options.logLevel, LogLevel::INFO);
  EXPECT_EQ(line.options.traffic.rate, 0);
  EXPECT_EQ(line.options.traffic.seed, 1U);
  EXPECT_FALSE(line.options.admin);
  EXPECT_FALSE(line.admin);
}

TEST(CommandLine, setsTheTrialOptions) {
  const CommandLine line =
      parsed({"--traffic", "0.5", "--traffic-seed", "9", "--admin", "--admin-ior-file", "a.ior"});
  ASSERT_FALSE(line.exitStatus);
  EXPECT_EQ(line.options.traffic.rate, 0.5);
  EXPECT_EQ(line.options.traffic.seed, 9U);
  EXPECT_TRUE(line.options.admin);
  EXPECT_EQ(line.options.adminIorFile, "a.ior");
  EXPECT_FALSE(line.admin) << "the flag is not the command of the same name";
}

TEST(CommandLine, setsEveryOption) {
  const CommandLine line = parsed(
      {"--listen",        "[::1]:99", "--inventory",     "i.db", "--ior-file",          "f.ior",
       "--ems-name",      "X/2",      "--ems-version",   "9",    "--interface-version", "2.1",
       "--users",         "u",        "--max-sessions",  "3",    "--max-iterators",     "4",
       "--iterator-idle", "5",        "--max-how-many",  "6",    "--log-file",          "l",
       "--log-level",     "debug",    "--peer-sessions", "7",    "--user-sessions",     "8",
       "--allow-anyone"});
  ASSERT_FALSE(line.exitStatus);
  EXPECT_EQ(textOf(line.options.listen), "[::1]:99");
  EXPECT_EQ(line.options.inventory, "i.db");
  EXPECT_EQ(line.options.iorFile, "f.ior");
  EXPECT_EQ(line.options.emsName, "X/2");
  EXPECT_EQ(line.options.emsVersion, "9");
  EXPECT_EQ(line.options.interfaceVersion, "2.1");
  EXPECT_EQ(line.options.usersFile, "u");
  EXPECT_TRUE(line.options.allowAnyone);
  EXPECT_EQ(line.options.limits.sessions, 3U);
  EXPECT_EQ(line.options.limits.peerSessions, 7U);
  EXPECT_EQ(line.options.limits.userSessions, 8U);
  EXPECT_EQ(line.options.limits.iterators, 4U);
  EXPECT_EQ(line.options.limits.iteratorIdle, std::chrono::seconds(5));
  EXPECT_EQ(line.options.limits.page, 6U);
  EXPECT_EQ(line.options.logFile, "l");
  EXPECT_EQ(line.options.logLevel, LogLevel::DEBUG);
}

// Set for the lifetime of the object.
class Variable {
 public:
  Variable(const char* name, const char* value) : name_(name) { setenv(name, value, 1); }
  ~Variable() { unsetenv(name_); }
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;

 private:
  const char* name_;
};

TEST(CommandLine, comesBeforeTheFileAndThatBeforeTheEnvironment) {
  const TemporaryFolder folder;
  const std::string file = folder.file("agent.conf");
  writeBytes(file, "ems-name=\"file\"\nems-version=\"file\"\nmax-sessions=7\n");
  const Variable name("ZK_AGENT_EMS_NAME", "environment");
  const Variable version("ZK_AGENT_EMS_VERSION", "environment");
  const Variable users("ZK_AGENT_USERS", "environment");
  const CommandLine line = parsed({"--config", file.c_str(), "--ems-name", "line"});
  ASSERT_FALSE(line.exitStatus);
  EXPECT_EQ(line.options.emsName, "line");
  EXPECT_EQ(line.options.emsVersion, "file");
  EXPECT_EQ(line.options.usersFile, "environment");
  EXPECT_EQ(line.options.limits.sessions, 7U);
}

TEST(CommandLine, readsTheTrialOptionsFromFileAndEnvironment) {
  const TemporaryFolder folder;
  const std::string file = folder.file("agent.conf");
  writeBytes(file, "admin=true\n");
  const Variable rate("ZK_AGENT_TRAFFIC", "25");
  const CommandLine line = parsed({"--config", file.c_str()});
  ASSERT_FALSE(line.exitStatus);
  EXPECT_TRUE(line.options.admin);
  EXPECT_EQ(line.options.traffic.rate, 25);
  EXPECT_FALSE(line.admin);
}

TEST(CommandLine, readsAnAdminCommand) {
  const CommandLine line = parsed({"admin", "--agent", "[::1]:99", "clear-alarm", "7"});
  ASSERT_FALSE(line.exitStatus);
  ASSERT_TRUE(line.admin);
  EXPECT_EQ(line.admin->agent, "[::1]:99");
  EXPECT_TRUE(line.admin->request);
}

TEST(CommandLine, refusesWrongUsage) {
  const std::vector<std::vector<const char*>> wrong = {
      {"--nonsense"},
      {"stray"},
      {"--listen", "nowhere"},
      {"--inventory", ""},
      {"--ems-name", ""},
      {"--max-sessions", "0"},
      {"--max-iterators", "many"},
      {"--iterator-idle", "-1"},
      {"--max-how-many", "0"},
      {"--log-level", "loud"},
      {"--traffic", "-1"},
      {"--traffic", "10001"},
      {"--traffic", "nan"},
      {"--traffic", "often"},
      {"--traffic-seed", "-1"},
      {"admin"},
      {"admin", "nonsense"},
      {"admin", "clear-alarm"},
      {"admin", "clear-alarm", "x"},
      {"admin", "create-device", "--name", "n"},
      {"admin", "raise-alarm", "--cause", "LOS", "--severity", "cleared"},
      {"--config", "/nowhere/agent.conf"},
      {"passwd"},
      {"passwd", "operator"},
  };
  for (const auto& arguments : wrong) {
    const CommandLine line = parsed(arguments);
    ASSERT_TRUE(line.exitStatus) << arguments[0];
    EXPECT_EQ(*line.exitStatus, 3) << arguments[0];
  }
}

TEST(CommandLine, refusesUnknownSettingsInTheFile) {
  const TemporaryFolder folder;
  const std::string file = folder.file("agent.conf");
  writeBytes(file, "lissten=\"127.0.0.1:1\"\n");
  EXPECT_EQ(parsed({"--config", file.c_str()}).exitStatus.value_or(-1), 3);
}

TEST(CommandLine, showsHelpAndVersion) {
  testing::internal::CaptureStdout();
  EXPECT_EQ(parsed({"--help"}).exitStatus.value_or(-1), 0);
  const std::string help = testing::internal::GetCapturedStdout();
  EXPECT_NE(help.find("Exit status:"), std::string::npos);
  for (const char* shortage : {"8   out of memory", "9   out of threads", "10  out of file"}) {
    EXPECT_NE(help.find(shortage), std::string::npos) << shortage;
  }
  EXPECT_NE(help.find("Examples:"), std::string::npos);
  testing::internal::CaptureStdout();
  EXPECT_EQ(parsed({"--version"}).exitStatus.value_or(-1), 0);
  EXPECT_EQ(testing::internal::GetCapturedStdout().rfind("zk-agent ", 0), 0U);
}

TEST(CommandLine, asksForAPasswordChange) {
  const CommandLine line = parsed({"passwd", "--users", "u", "operator"});
  ASSERT_FALSE(line.exitStatus);
  ASSERT_TRUE(line.passwordChange);
  EXPECT_EQ(line.passwordChange->usersFile, "u");
  EXPECT_EQ(line.passwordChange->user, "operator");
}

}  // namespace
