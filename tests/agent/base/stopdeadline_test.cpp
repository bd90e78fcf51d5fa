#include "agent/base/stopdeadline.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>

namespace {

TEST(StopDeadlineDeathTest, endsTheProcessAndSaysWhatItDid) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        zk::agent::beginStopDeadline(1);
        zk::agent::enterStop("waiting for nothing");
        for (;;) {
          pause();
        }
      },
      testing::ExitedWithCode(EXIT_SUCCESS), "zk-agent: gave up waiting for nothing\n");
}

}  // namespace
