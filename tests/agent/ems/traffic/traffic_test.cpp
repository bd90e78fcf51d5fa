#include "agent/ems/traffic/traffic.h"

#include <gtest/gtest.h>

#include "tests/agent/ems/support.h"
#include "tests/platform/waiting.h"

namespace {

using namespace zk::agent;
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

}  // namespace
