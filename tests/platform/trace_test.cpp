#include "zk_quornex/platform/trace.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <thread>

#include "tests/support/doubles.h"

namespace zk::test {
namespace {

using NS_CORBA::GetTss;
using NS_CORBA::SetTraceOrigin;
using NS_CORBA::TaDebug;
using NS_CORBA::TaDebugWithPara;
using NS_CORBA::TaTrace;
using testing::ElementsAre;

TEST(Trace, writesTextsWithTheirLevels) {
  CapturedTrace trace;
  TaDebug(1, "as it stands: %d");
  TaDebugWithPara(2, "%s=%d", "msgClass", 8);
  TaTrace("%s in", "setReportStatus");
  EXPECT_THAT(trace.texts(),
              ElementsAre("1 as it stands: %d", "2 msgClass=8", "4 setReportStatus in"));
}

TEST(Trace, showsWhereTheLineComesFrom) {
  CapturedTrace trace;
  SetTraceOrigin("nameparse.cpp", 17, "ParseID");
  TaDebug(1, "failed");
  SetTraceOrigin("other.cpp", 18);
  TaDebug(1, "failed");
  const auto lines = trace.lines();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0].file + lines[0].function, "nameparse.cppParseID");
  EXPECT_EQ(lines[0].line, 17);
  EXPECT_EQ(lines[1].file + lines[1].function, "other.cppunknown");
}

TEST(Trace, keepsOneOriginAThread) {
  SetTraceOrigin("mine.cpp", 3);
  NS_CORBA::TraceRecord* theirs = nullptr;
  std::string fileAtStart;
  std::thread([&] {
    theirs = GetTss();
    fileAtStart = theirs->file;
    SetTraceOrigin("theirs.cpp", 4);
  }).join();
  EXPECT_NE(theirs, GetTss());
  EXPECT_EQ(fileAtStart, "unknown");
  EXPECT_STREQ(GetTss()->file, "mine.cpp");
  EXPECT_EQ(GetTss()->line, 3);
}

TEST(Trace, writesOnlyUpToItsLevel) {
  const char* const expected[] = {"", "1", "12", "123", "1234"};
  CapturedTrace trace;
  for (int highest = 0; highest <= 4; ++highest) {
    trace.clear();
    zk::platform::setTraceLevel(highest);
    for (const int level : {-1, 0, 1, 2, 3}) {
      TaDebug(level, "text");
    }
    TaTrace("text");
    std::string written;
    for (const TraceLine& line : trace.lines()) {
      written += std::to_string(line.level);
    }
    EXPECT_EQ(written, expected[highest]) << highest;
  }
}

TEST(Trace, keepsItsLevelWithinZeroAndFour) {
  CapturedTrace restoresLevel;
  zk::platform::setTraceLevel(-5);
  EXPECT_EQ(zk::platform::traceLevel(), 0);
  zk::platform::setTraceLevel(9);
  EXPECT_EQ(zk::platform::traceLevel(), 4);
}

// %n writes how much was formatted so far: untouched, nothing was.
TEST(Trace, formatsNothingWhenSwitchedOff) {
  CapturedTrace trace;
  int formatted = -1;
  zk::platform::setTraceLevel(2);
  TaDebugWithPara(3, "four%n", &formatted);
  TaTrace("four%n", &formatted);
  EXPECT_EQ(formatted, -1);
  TaDebugWithPara(2, "four%n", &formatted);
  EXPECT_EQ(formatted, 4);
}

TEST(Trace, losesNothingOfLongTexts) {
  CapturedTrace trace;
  for (const std::size_t length : {0u, 1u, 1022u, 1023u, 1024u, 1025u, 100000u}) {
    trace.clear();
    const std::string text(length, 'x');
    TaDebugWithPara(1, "%s", text.c_str());
    ASSERT_EQ(trace.lines().size(), 1u);
    EXPECT_EQ(trace.lines()[0].text, text) << length;
  }
}

TEST(Trace, survivesANullText) {
  CapturedTrace trace;
  TaDebug(1, nullptr);
  EXPECT_THAT(trace.texts(), ElementsAre("1 (null)"));
}

}  // namespace
}  // namespace zk::test
