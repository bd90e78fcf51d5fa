#include "zk_quornex/platform/default/logs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <thread>
#include <vector>

#include "zk_quornex/platform/services.h"

namespace zk::test {
namespace {

using NS_CORBA::SetTraceOrigin;
using NS_CORBA::TaDebug;
using testing::AllOf;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;
using zk::platform::LogSettings;
using zk::platform::openLogs;

class Logs : public testing::Test {
 protected:
  Logs() {
    std::string pattern = testing::TempDir() + "zk_logs_XXXXXX";
    folder_ = mkdtemp(pattern.data());
  }
  ~Logs() override {
    openLogs({});
    std::filesystem::remove_all(folder_);
  }

  std::string path(const std::string& name) const { return folder_ + "/" + name; }

  LogSettings toFile(int level = 4) const {
    LogSettings settings;
    settings.file = path("agent.log");
    settings.level = level;
    return settings;
  }

  std::string textOf(const std::string& name) const {
    std::ifstream file(path(name));
    return {std::istreambuf_iterator<char>(file), {}};
  }

  std::vector<std::string> linesOf(const std::string& name) const {
    std::ifstream file(path(name));
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) {
      lines.push_back(line);
    }
    return lines;
  }

 private:
  std::string folder_;
};

std::shared_ptr<NS_BUNDLEMGR1::LogProxy> namedLog(const char* level) {
  NS_BUNDLEMGR1::CheckIFBuf<NS_LOG_SERVICE1::LogSvcInterface> service("LogSvcInterface");
  return service.Get()->GetLogger("bundle", "module", level);
}

TEST_F(Logs, showsTimeSeverityOriginAndText) {
  openLogs(toFile());
  SetTraceOrigin("nameparse.cpp", 17, "ParseID");
  TaDebug(1, "the {} text %d");
  EXPECT_THAT(textOf("agent.log"),
              ContainsRegex("^20[0-9-]{8}T[0-9:.]{12}Z error \\[[0-9]+\\] trace: "
                            "nameparse.cpp:17 ParseID: the \\{\\} text %d\n$"));
}

TEST_F(Logs, givesEachLevelItsSeverity) {
  openLogs(toFile());
  for (const int level : {1, 2, 3}) {
    TaDebug(level, "text");
  }
  NS_CORBA::TaTrace("text");
  const auto lines = linesOf("agent.log");
  ASSERT_EQ(lines.size(), 4u);
  const char* const severities[] = {"Z error ", "Z warning ", "Z debug ", "Z trace "};
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_THAT(lines[i], HasSubstr(severities[i]));
  }
}

TEST_F(Logs, opensWithTheLevelItIsGiven) {
  openLogs(toFile(1));
  TaDebug(2, "kept back");
  TaDebug(1, "written");
  EXPECT_THAT(textOf("agent.log"), AllOf(HasSubstr("written"), Not(HasSubstr("kept back"))));
}

TEST_F(Logs, writesToStandardErrorWithoutAFile) {
  openLogs({});
  testing::internal::CaptureStderr();
  TaDebug(1, "for the journal");
  EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("for the journal\n"));
}

TEST_F(Logs, rotatesAndKeepsTheNumberAskedFor) {
  LogSettings settings = toFile();
  settings.fileBytes = 400;
  settings.files = 2;
  openLogs(settings);
  for (int i = 0; i < 50; ++i) {
    NS_CORBA::TaDebugWithPara(1, "line %d", i);
  }
  EXPECT_THAT(textOf("agent.log"), HasSubstr("line 49\n"));
  EXPECT_FALSE(std::filesystem::exists(path("agent.3.log")));
  for (const char* name : {"agent.log", "agent.1.log", "agent.2.log"}) {
    ASSERT_FALSE(linesOf(name).empty()) << name;
    EXPECT_LE(std::filesystem::file_size(path(name)), 400u) << name;
    for (const auto& line : linesOf(name)) {
      EXPECT_THAT(line, ContainsRegex("^20.*: line [0-9]+$")) << name;
    }
  }
}

TEST_F(Logs, continuesAFileThatIsThere) {
  std::ofstream(path("agent.log")) << "from before\n";
  openLogs(toFile());
  TaDebug(1, "new");
  EXPECT_THAT(textOf("agent.log"), ContainsRegex("^from before\n20.*new\n$"));
}

TEST_F(Logs, makesAMissingFolder) {
  LogSettings settings = toFile();
  settings.file = path("deeper/still/agent.log");
  openLogs(settings);
  TaDebug(1, "text");
  EXPECT_THAT(textOf("deeper/still/agent.log"), HasSubstr("text"));
}

TEST_F(Logs, staysAsBeforeWhenTheFileCannotBeOpened) {
  openLogs(toFile(3));
  LogSettings below = toFile(1);
  below.file = path("agent.log/below.log");
  try {
    openLogs(below);
    FAIL() << "opened a file below a file";
  } catch (const std::runtime_error& failure) {
    EXPECT_THAT(failure.what(), AllOf(HasSubstr(below.file), HasSubstr("Not a directory")));
  }
  EXPECT_EQ(zk::platform::traceLevel(), 3);
  TaDebug(3, "still written");
  EXPECT_THAT(textOf("agent.log"), HasSubstr("still written"));
}

TEST_F(Logs, refusesAFolderForAFile) {
  LogSettings settings;
  settings.file = path("");
  EXPECT_THROW(openLogs(settings), std::runtime_error);
}

TEST_F(Logs, refusesFilesWithoutRoomForALine) {
  LogSettings settings = toFile();
  settings.fileBytes = 0;
  EXPECT_THROW(openLogs(settings), std::runtime_error);
}

TEST_F(Logs, namedLogsFollowAndShowTheirName) {
  const auto log = namedLog("debug");
  openLogs(toFile(0));
  log->Write("assertion failed.\n");
  log->Write("no line end");
  const auto lines = linesOf("agent.log");
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_THAT(lines[0], ContainsRegex("Z debug \\[[0-9]+\\] bundlemodule: assertion failed.$"));
  EXPECT_THAT(lines[1], HasSubstr("bundlemodule: no line end"));
}

TEST_F(Logs, namedLogsOfUnknownSeverityAreInfo) {
  openLogs(toFile());
  namedLog("loud")->Write("one");
  namedLog("error")->Write("two");
  namedLog(nullptr)->Write(nullptr);
  EXPECT_THAT(linesOf("agent.log"),
              testing::ElementsAre(HasSubstr("Z info "), HasSubstr("Z error "),
                                   AllOf(HasSubstr("Z info "), HasSubstr("(null)"))));
}

// Each of the lines ends up whole in one of the two files.
TEST_F(Logs, losesNoLineWhileTheyAreReopened) {
  LogSettings one = toFile();
  LogSettings other = toFile();
  other.file = path("other.log");
  openLogs(one);
  std::vector<std::thread> writers;
  writers.reserve(3);
  for (int i = 0; i < 3; ++i) {
    writers.emplace_back([] {
      for (int n = 0; n < 200; ++n) {
        TaDebug(1, "whole line");
      }
    });
  }
  for (int i = 0; i < 10; ++i) {
    openLogs(i % 2 == 0 ? other : one);
  }
  for (auto& writer : writers) {
    writer.join();
  }
  const auto first = linesOf("agent.log");
  const auto second = linesOf("other.log");
  EXPECT_EQ(first.size() + second.size(), 600u);
  for (const auto& lines : {first, second}) {
    for (const auto& line : lines) {
      EXPECT_THAT(line, ContainsRegex("^20.*whole line$"));
    }
  }
}

}  // namespace
}  // namespace zk::test
