#include <gtest/gtest.h>

#include "nms/events/times.h"

namespace zk::nms {
namespace {

TEST(IsoTime, readsTheTimesThatAgentsSend) {
  EXPECT_EQ(isoTime("20121120094200.0Z"), "2012-11-20T09:42:00.0Z");
  EXPECT_EQ(isoTime("20121120094200.5+0130"), "2012-11-20T09:42:00.5+01:30");
  EXPECT_EQ(isoTime("20121120094200.5-0500"), "2012-11-20T09:42:00.5-05:00");
  EXPECT_EQ(isoTime("20121120094200.0"), "2012-11-20T09:42:00.0");
  EXPECT_EQ(isoTime("20121120094200Z"), "2012-11-20T09:42:00Z");
}

TEST(IsoTime, leavesOtherTextsAlone) {
  for (const char* text : {"", "yesterday", "2012-11-20", "20121120", "20121120094200.0ZZ",
                           "20121120094200.0+01", "20121120094200."}) {
    EXPECT_EQ(isoTime(text), text);
  }
}

TEST(TimeText, isUtcToTheMillisecond) {
  EXPECT_EQ(timeText(Clock::from_time_t(1353404520)), "2012-11-20T09:42:00.000Z");
  EXPECT_EQ(timeText(Clock::from_time_t(0) + std::chrono::milliseconds(1007)),
            "1970-01-01T00:00:01.007Z");
}

}  // namespace
}  // namespace zk::nms
