#include "agent/base/workers.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "tests/platform/waiting.h"

namespace {

using zk::agent::Workers;
using zk::test::becomesTrue;

TEST(Workers, runTheirWorkSideBySide) {
  std::atomic<int> running{0};
  Workers workers;
  for (int i = 0; i < 3; ++i) {
    EXPECT_TRUE(workers.start([&] {
      ++running;
      EXPECT_TRUE(becomesTrue([&] { return running == 3; }));
    }));
  }
  workers.stop();
  EXPECT_EQ(running, 3);
}

TEST(Workers, areWaitedForAndBeginNoMore) {
  std::atomic<bool> over{false};
  zk::test::Gate gate;
  Workers workers;
  ASSERT_TRUE(workers.start([&] {
    gate.pass();
    over = true;
  }));
  gate.open();
  workers.stop();
  EXPECT_TRUE(over);
  EXPECT_FALSE(workers.start([] { FAIL() << "run after stop"; }));
}

TEST(Workers, outliveWorkThatThrows) {
  std::atomic<bool> ran{false};
  Workers workers;
  ASSERT_TRUE(workers.start([] { throw std::runtime_error("expected"); }));
  ASSERT_TRUE(workers.start([&] { ran = true; }));
  workers.stop();
  EXPECT_TRUE(ran);
}

TEST(Workers, letGoOfWhatTheirWorkHeld) {
  const auto held = std::make_shared<int>(7);
  Workers workers;
  ASSERT_TRUE(workers.start([held] {}));
  EXPECT_TRUE(becomesTrue([&] { return held.use_count() == 1; }));
}

}  // namespace
