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

}  // namespace
}  // namespace zk::nms
