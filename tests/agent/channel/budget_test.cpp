#include "agent/channel/budget.h"

#include <gtest/gtest.h>

#include "tests/agent/channel/support/events.h"
#include "tests/agent/channel/support/filters.h"

namespace {

using namespace zk::test;
using std::chrono::milliseconds;
using zk::agent::ByteBudget;
using zk::agent::Charge;
using zk::agent::Constraint;
using zk::agent::FilterWork;

TEST(ByteBudgetTest, refusesWhatThereIsNoRoomFor) {
  const auto budget = std::make_shared<ByteBudget>(100);
  {
    const Charge first(budget, 60);
    EXPECT_THROW(Charge(budget, 41), CORBA::NO_RESOURCES);
    EXPECT_EQ(budget->taken(), 60U);
    Charge second(budget, 40);
    Charge moved(std::move(second));
    second = std::move(moved);
    EXPECT_EQ(budget->taken(), 100U);
    EXPECT_FALSE(budget->hasRoomFor(1));
  }
  EXPECT_EQ(budget->taken(), 0U);
  EXPECT_TRUE(budget->hasRoomFor(100));
  EXPECT_FALSE(budget->hasRoomFor(101));
}

std::shared_ptr<const Constraint> parsed(const std::string& text) {
  return Constraint::parse(text, DynamicAny::DynAnyFactory::_nil());
}

// Twenty thousand units at most, hence a thousand an event; a unit comes back in a
// millisecond.
class FilterWorkTest : public testing::Test {
 protected:
  std::chrono::steady_clock::time_point now{};
  FilterWork work{20000, [] { return 1000; }, [this] { return now; }};
  const CosNotification::StructuredEvent event = makeAlarm("1");
  const std::shared_ptr<const Constraint> cheap = parsed("$layerRate == 1");
  const std::shared_ptr<const Constraint> costly = parsed(askingInVain(1000, 2));
};

TEST_F(FilterWorkTest, judges) {
  work.beginWith(1);
  EXPECT_TRUE(work.holds(cheap, event));
  EXPECT_FALSE(work.holds(parsed("$layerRate == 2"), event));
  EXPECT_FALSE(work.isSpent());
}

TEST_F(FilterWorkTest, limitsWhatOneEventCosts) {
  work.beginWith(1);
  EXPECT_FALSE(work.holds(costly, event));
  EXPECT_TRUE(work.isSpent());
  EXPECT_FALSE(work.holds(cheap, event));
  EXPECT_FALSE(work.spend(1));
  work.beginWith(1);
  EXPECT_TRUE(work.isSpent()) << "the same event";
  work.beginWith(2);
  EXPECT_TRUE(work.holds(cheap, event));
}

TEST_F(FilterWorkTest, judgesEqualConstraintsOnceAnEvent) {
  const auto some = parsed(askingInVain(20, 2));
  work.beginWith(1);
  for (int i = 0; i < 1000; ++i) {
    EXPECT_FALSE(work.holds(some, event));
  }
  EXPECT_FALSE(work.isSpent());
  work.beginWith(2);
  const CosNotification::StructuredEvent other = makeEvent("NT_OBJECT_CREATION", "2");
  EXPECT_FALSE(work.holds(cheap, other)) << "of each event anew";
}

TEST_F(FilterWorkTest, stopsUntilHalfIsBack) {
  std::uint64_t number = 0;
  int judged = 0;
  do {
    work.beginWith(++number);
    judged += work.isSpent() ? 0 : 1;
    work.holds(costly, event);
  } while (judged == static_cast<int>(number));
  EXPECT_EQ(judged, 20);
  now += milliseconds(9999);
  work.beginWith(++number);
  EXPECT_TRUE(work.isSpent());
  now += milliseconds(1);
  work.beginWith(++number);
  EXPECT_FALSE(work.isSpent());
  EXPECT_TRUE(work.holds(cheap, event));
}

TEST_F(FilterWorkTest, savesNoMoreThanTheMost) {
  now += std::chrono::hours(1000);
  std::uint64_t number = 0;
  int judged = 0;
  for (; number < 100;) {
    work.beginWith(++number);
    judged += work.isSpent() ? 0 : 1;
    work.holds(costly, event);
  }
  EXPECT_EQ(judged, 20);
}

}  // namespace
