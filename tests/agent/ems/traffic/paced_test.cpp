#include "agent/ems/traffic/paced.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <stdexcept>

#include "tests/platform/waiting.h"

namespace {

using namespace zk::agent;
using namespace std::chrono_literals;
using zk::test::becomesTrue;

TEST(Pace, leavesTheSameTimeBetweenSteps) {
  const Pace::Clock::time_point start{};
  Pace pace;
  pace.start(start, 4);
  EXPECT_EQ(pace.due(), start + 250ms);
  pace.stepped(start + 260ms);
  EXPECT_EQ(pace.due(), start + 500ms);
}

TEST(Pace, makesUpForASecondAtMost) {
  const Pace::Clock::time_point start{};
  Pace pace;
  pace.start(start, 10);
  pace.stepped(start + 900ms);
  EXPECT_EQ(pace.due(), start + 200ms);
  pace.stepped(start + 1h);
  EXPECT_EQ(pace.due(), start + 1h - 1s);
}

TEST(Pace, canBeVerySlow) {
  Pace pace;
  pace.start(Pace::Clock::now(), 1e-300);
  EXPECT_GT(pace.due(), Pace::Clock::now() + 24h);
}

TEST(Paced, takesNoStepWithoutARate) {
  std::atomic<int> steps{0};
  {
    Paced paced(0, [&] { ++steps; });
    EXPECT_EQ(paced.rate(), 0);
  }
  EXPECT_EQ(steps.load(), 0);
}

TEST(Paced, startsAndStopsWithItsRate) {
  std::atomic<int> steps{0};
  Paced paced(0, [&] { ++steps; });
  paced.setRate(1000);
  EXPECT_TRUE(becomesTrue([&] { return steps.load() >= 10; }));
  paced.setRate(0);
  EXPECT_EQ(paced.rate(), 0);
}

TEST(Paced, leavesASlowRateForAFastOneAtOnce) {
  std::atomic<int> steps{0};
  Paced paced(0.0001, [&] { ++steps; });
  paced.setRate(1000);
  EXPECT_TRUE(becomesTrue([&] { return steps.load() >= 1; }));
}

TEST(Paced, endsAtOnceWhateverItsRate) {
  const auto start = std::chrono::steady_clock::now();
  {
    const Paced paced(0.0001, [] {});
  }
  EXPECT_LT(std::chrono::steady_clock::now() - start, 1000s);
}

TEST(Paced, refusesOtherRatesAndKeepsItsOwn) {
  Paced paced(0, [] {});
  for (const double rate : {-1.0, -0.001, 10000.1, HUGE_VAL, std::nan("")}) {
    EXPECT_THROW(paced.setRate(rate), std::invalid_argument) << rate;
    EXPECT_THROW(Paced(rate, [] {}), std::invalid_argument) << rate;
  }
  EXPECT_EQ(paced.rate(), 0);
}

TEST(Paced, endsItsStepsWhenOneFails) {
  std::atomic<int> steps{0};
  Paced paced(1000, [&] {
    ++steps;
    throw std::runtime_error("the disk is full");
  });
  EXPECT_TRUE(becomesTrue([&] { return paced.rate() == 0; }));
  EXPECT_EQ(steps.load(), 1);
}

}  // namespace
