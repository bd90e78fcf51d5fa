#include "agent/base/loglimit.h"

#include <gtest/gtest.h>

namespace {

using std::chrono::seconds;
using zk::agent::LogLimit;

TEST(LogLimit, oneLineAPeriodForEachSubject) {
  LogLimit limit(seconds(10), 8);
  const LogLimit::Clock::time_point begin(seconds(1000));
  EXPECT_EQ(limit.admit("a", "text", begin), "text");
  EXPECT_EQ(limit.admit("a", "text", begin + seconds(9)), "");
  EXPECT_EQ(limit.admit("a", "other", begin + seconds(9)), "");
  EXPECT_EQ(limit.admit("b", "text", begin + seconds(9)), "text");
  EXPECT_EQ(limit.admit("a", "text", begin + seconds(10)), "text (2 more of these before)");
  EXPECT_EQ(limit.admit("a", "text", begin + seconds(19)), "");
  EXPECT_EQ(limit.admit("a", "text", begin + seconds(20)), "text (1 more of these before)");
  EXPECT_EQ(limit.admit("a", "text", begin + seconds(31)), "text");
}

TEST(LogLimit, subjectsAreBounded) {
  LogLimit limit(seconds(10), 4);
  const LogLimit::Clock::time_point begin(seconds(1000));
  int lines = 0;
  for (int i = 0; i < 1000; ++i) {
    lines += limit.admit("subject" + std::to_string(i), "text", begin).empty() ? 0 : 1;
  }
  EXPECT_EQ(lines, 5);
  EXPECT_EQ(limit.admit("new", "text", begin + seconds(11)), "text");
}

}  // namespace
