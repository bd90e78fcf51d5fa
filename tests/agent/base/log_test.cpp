#include "agent/base/log.h"

#include <gtest/gtest.h>

namespace {

using zk::agent::printable;

TEST(PrintableText, keepsWhatIsPrintable) {
  EXPECT_EQ(printable(""), "");
  EXPECT_EQ(printable("oper ator"), "oper ator");
  EXPECT_EQ(printable("\xc3\xa9"), "\xc3\xa9");
}

TEST(PrintableText, cannotForgeALine) { EXPECT_EQ(printable("a\r\nb\x1b[2J"), "a??b?[2J"); }

TEST(PrintableText, isBounded) {
  EXPECT_EQ(printable(std::string(200, 'x').c_str()), std::string(200, 'x'));
  EXPECT_EQ(printable(std::string(201, 'x').c_str()), std::string(200, 'x') + "...");
}

}  // namespace
