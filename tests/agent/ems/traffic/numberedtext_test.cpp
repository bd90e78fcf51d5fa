#include "agent/ems/traffic/numberedtext.h"

#include <gtest/gtest.h>

namespace {

using zk::agent::nextNumbered;

TEST(NumberedText, countsOn) {
  const std::pair<const char*, const char*> cases[] = {
      {"north", "north (2)"},
      {"north (2)", "north (3)"},
      {"north (9)", "north (10)"},
      {"north (998)", "north (999)"},
      {"north (999)", "north (2)"},
      {"", " (2)"},
      {"north (0)", "north (0) (2)"},
      {"north (1000)", "north (1000) (2)"},
      {"north(2)", "north(2) (2)"},
      {"north (2) ", "north (2)  (2)"},
      {"two\nlines (7)", "two\nlines (8)"},
  };
  for (const auto& [text, expected] : cases) {
    EXPECT_EQ(nextNumbered(text), expected) << text;
  }
}

}  // namespace
