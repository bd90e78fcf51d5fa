#include "zk_quornex/platform/default/clock.h"

#include <gtest/gtest.h>

#include <chrono>

#include "tests/support/doubles.h"
#include "zk_quornex/platform/timechange.h"

namespace zk::test {
namespace {

using std::chrono::system_clock;

struct TimeRow {
  long long milliseconds;  // since 1970
  const char* text;
};

system_clock::time_point at(long long milliseconds) {
  return system_clock::time_point(std::chrono::milliseconds(milliseconds));
}

TEST(Clock, writesTimesAsTheNmsReadsThem) {
  const TimeRow rows[] = {
      {0, "19700101000000.0Z"},
      {99, "19700101000000.0Z"},
      {100, "19700101000000.1Z"},
      {999, "19700101000000.9Z"},
      {1353404520000, "20121120094200.0Z"},
      {1353404520949, "20121120094200.9Z"},
      {951782400000, "20000229000000.0Z"},
      {951868799999, "20000229235959.9Z"},
      {4107542400000, "21000301000000.0Z"},
      {1483228799500, "20161231235959.5Z"},
  };
  for (const TimeRow& row : rows) {
    EXPECT_EQ(zk::platform::timeText(at(row.milliseconds)), row.text) << row.milliseconds;
  }
}

TEST(Clock, roundsTimesBefore1970TowardsThePast) {
  const TimeRow rows[] = {
      {-1, "19691231235959.9Z"},    {-100, "19691231235959.9Z"},
      {-101, "19691231235959.8Z"},  {-1000, "19691231235959.0Z"},
      {-1001, "19691231235958.9Z"}, {-2208988800000, "19000101000000.0Z"},
  };
  for (const TimeRow& row : rows) {
    EXPECT_EQ(zk::platform::timeText(at(row.milliseconds)), row.text) << row.milliseconds;
  }
}

TEST(Clock, getUTCTimeFollowsTheInstalledClock) {
  FixedClock clock;
  clock.time = at(1353404520300);
  EXPECT_EQ(NS_QUORCORBA::TimeChange::getUTCTime(), "20121120094200.3Z");
}

TEST(Clock, getUTCTimeShowsTheSystemsTimeOtherwise) {
  const std::string before = zk::platform::timeText(system_clock::now());
  const std::string shown = NS_QUORCORBA::TimeChange::getUTCTime();
  const std::string after = zk::platform::timeText(system_clock::now());
  EXPECT_LE(before, shown);
  EXPECT_LE(shown, after);
}

}  // namespace
}  // namespace zk::test
