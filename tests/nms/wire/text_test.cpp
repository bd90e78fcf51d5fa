#include <gtest/gtest.h>

#include "nms/wire/text.h"

namespace zk::nms {
namespace {

TEST(AsUtf8, leavesUtf8AsItIs) {
  for (const char* text : {"", "plain", "M\xC3\xBCnchen", "\xE6\x9D\xB1\xE4\xBA\xAC", "a\nb"}) {
    EXPECT_EQ(asUtf8(text), text);
  }
}

TEST(AsUtf8, takesOtherBytesAsLatin1) {
  EXPECT_EQ(asUtf8("M\xFCnchen"), "M\xC3\xBCnchen");
  EXPECT_EQ(asUtf8("cut \xC3"), "cut \xC3\x83");                  // a character that stops half-way
  EXPECT_EQ(asUtf8("\xC0\x80"), "\xC3\x80\xC2\x80");              // longer than need be
  EXPECT_EQ(asUtf8("\xED\xA0\x80"), "\xC3\xAD\xC2\xA0\xC2\x80");  // half of a pair
}

TEST(Printable, writesOutWhatWouldMoveTheCursor) {
  EXPECT_EQ(printable("a\nb\tc\rd"), "a\\nb\\tc\\rd");
  EXPECT_EQ(printable("\x1B[31mred"), "\\x1B[31mred");
  EXPECT_EQ(printable("\x7F"), "\\x7F");
  EXPECT_EQ(printable("\xC2\x9B"), "\\x9B");
  EXPECT_EQ(printable("M\xC3\xBCnchen, \xE6\x9D\xB1"), "M\xC3\xBCnchen, \xE6\x9D\xB1");
}

TEST(DisplayWidth, countsTerminalColumns) {
  EXPECT_EQ(displayWidth(""), 0U);
  EXPECT_EQ(displayWidth("abc"), 3U);
  EXPECT_EQ(displayWidth("M\xC3\xBCnchen"), 7U);
  EXPECT_EQ(displayWidth("\xE6\x9D\xB1\xE4\xBA\xAC"), 4U);  // two wide characters
  EXPECT_EQ(displayWidth("e\xCC\x81"), 1U);                 // a letter and its accent
}

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
