#include "agent/base/repeating.h"

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>

#include "tests/platform/waiting.h"

namespace zk::test {

namespace {

using std::chrono::milliseconds;
using zk::agent::Repeating;

TEST(Repeating, takesTheStepAgainAndAgain) {
  std::atomic<int> steps{0};
  const Repeating repeating(milliseconds(1), [&] { ++steps; });
  EXPECT_TRUE(becomesTrue([&] { return steps >= 3; }));
}

TEST(Repeating, goesOnAfterAStepThatThrew) {
  std::atomic<int> steps{0};
  const Repeating repeating(milliseconds(1), [&] {
    ++steps;
    throw std::runtime_error("expected");
  });
  EXPECT_TRUE(becomesTrue([&] { return steps >= 3; }));
}

TEST(Repeating, endsWithoutWaitingForItsPeriod) {
  std::atomic<int> steps{0};
  {
    const Repeating repeating(std::chrono::hours(24), [&] { ++steps; });
  }
  EXPECT_EQ(steps, 0);
}

TEST(Repeating, callsWhenTheStepSaid) {
  std::atomic<int> steps{0};
  const Repeating repeating(Repeating::Step([&]() -> std::optional<Repeating::Clock::time_point> {
    if (++steps < 5) {
      return Repeating::Clock::now() + milliseconds(1);
    }
    return std::nullopt;
  }));
  EXPECT_TRUE(becomesTrue([&] { return steps == 5; }));
}

TEST(Repeating, callsAgainWhenWoken) {
  std::atomic<int> steps{0};
  Repeating repeating(Repeating::Step([&] {
    ++steps;
    return std::nullopt;
  }));
  ASSERT_TRUE(becomesTrue([&] { return steps == 1; }));
  repeating.wake();
  EXPECT_TRUE(becomesTrue([&] { return steps == 2; }));
}

TEST(Repeating, isCalledAgainForAWakeDuringAStep) {
  std::atomic<int> steps{0};
  std::atomic<bool> mayEnd{false};
  Repeating repeating(Repeating::Step([&] {
    ++steps;
    becomesTrue([&] { return mayEnd.load(); });
    return std::nullopt;
  }));
  ASSERT_TRUE(becomesTrue([&] { return steps == 1; }));
  repeating.wake();
  mayEnd = true;
  EXPECT_TRUE(becomesTrue([&] { return steps == 2; }));
}

TEST(Repeating, waitsForAWakeAfterAStepOfItsOwnTimingThrew) {
  std::atomic<int> steps{0};
  Repeating repeating(Repeating::Step([&]() -> std::optional<Repeating::Clock::time_point> {
    if (++steps == 1) {
      throw std::runtime_error("expected");
    }
    return std::nullopt;
  }));
  ASSERT_TRUE(becomesTrue([&] { return steps == 1; }));
  repeating.wake();
  EXPECT_TRUE(becomesTrue([&] { return steps == 2; }));
}

}  // namespace

}  // namespace zk::test
