#include "agent/ems/traffic/traffic.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <stdexcept>

#include "tests/agent/ems/support.h"
#include "tests/platform/waiting.h"

namespace {

using namespace zk::agent;
using namespace std::chrono_literals;
using zk::test::becomesTrue;

class TrafficTest : public testing::Test {
 protected:
  TrafficTest() { inventory->setListener(&changes); }
  ~TrafficTest() override { inventory->setListener(nullptr); }

  const std::unique_ptr<Inventory> inventory = Inventory::open(":memory:", {20, 3});
  zk::test::RecordedChanges changes;
};

TEST_F(TrafficTest, isOffUntilItIsAskedFor) {
  Traffic traffic(*inventory, {});
  EXPECT_EQ(traffic.rate(), 0);
  EXPECT_TRUE(changes.lines().empty());
  traffic.setRate(500);
  EXPECT_TRUE(becomesTrue([&] { return changes.lines().size() >= 20; }));
}

TEST_F(TrafficTest, makesTheChangesOfItsSeed) {
  {
    const Traffic traffic(*inventory, {500, 9});
    EXPECT_TRUE(becomesTrue([&] { return changes.lines().size() >= 50; }));
  }
  const auto other = Inventory::open(":memory:", {20, 3});
  zk::test::RecordedChanges expected;
  other->setListener(&expected);
  Changer changer(*other, 9);
  while (expected.lines().size() < changes.lines().size()) {
    changer.step();
  }
  EXPECT_EQ(changes.lines(), expected.lines());
  other->setListener(nullptr);
}

TEST_F(TrafficTest, refusesARateOutOfRange) {
  EXPECT_THROW(Traffic(*inventory, {-1, 1}), std::invalid_argument);
}

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
