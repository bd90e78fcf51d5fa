#include "agent/channel/gate.h"

#include <gtest/gtest.h>

#include <thread>

#include "tests/agent/channel/support/lists.h"
#include "tests/agent/channel/support/localchannel.h"

namespace {

using namespace zk::test;
using zk::agent::Gate;
using zk::agent::Losses;
using zk::agent::Workers;

class GateTest : public testing::Test {
 protected:
  ~GateTest() override { workers->stop(); }

  std::shared_ptr<LossJournal> journal = std::make_shared<LossJournal>();
  std::shared_ptr<Workers> workers = std::make_shared<Workers>();
  std::shared_ptr<Losses> losses = std::make_shared<Losses>(journal, workers);
  OpenGate open{3, losses};
  Gate& gate = *open.gate;

  static Gate::Clock::time_point farAway() { return Gate::Clock::now() + std::chrono::minutes(1); }
  // All at once.
  void drain() {
    const auto count = static_cast<CORBA::ULong>(gate.waiting());
    gate.fetched(count);
    gate.delivered(count);
  }
};

TEST_F(GateTest, refusesTheNewestAboveTheLimit) {
  EXPECT_TRUE(open.offer(makeAlarm("1")));
  EXPECT_TRUE(open.offer(makeAlarm("2")));
  EXPECT_TRUE(open.offer(makeAlarm("3")));
  EXPECT_FALSE(open.offer(makeAlarm("4")));
  EXPECT_EQ(gate.waiting(), 3U);
  gate.fetched(3);
  EXPECT_FALSE(open.offer(makeAlarm("5"))) << "fetched is not delivered";
  gate.delivered(1);
  EXPECT_TRUE(open.offer(makeAlarm("6")));
  EXPECT_FALSE(open.offer(makeAlarm("7")));
}

TEST_F(GateTest, wantsTheTypesThatItIsSubscribedTo) {
  EXPECT_TRUE(gate.wants(CosNotification::EventType()));
  open.wants = false;
  EXPECT_FALSE(gate.wants(CosNotification::EventType()));
}

TEST_F(GateTest, doesNotCountWhatIsNotWanted) {
  open.admits = false;
  for (int i = 0; i < 10; ++i) {
    EXPECT_FALSE(open.offer(makeAlarm("1")));
  }
  EXPECT_EQ(gate.waiting(), 0U);
  open.admits = true;
  EXPECT_TRUE(open.offer(makeAlarm("2")));
  workers->stop();
  EXPECT_EQ(journal->lines(), Ids());
}

TEST_F(GateTest, tellsALossOnceWithItsFirstEvent) {
  for (int i = 1; i <= 5; ++i) {
    const std::string id = std::to_string(i);
    open.offer(makeEvent("NT_ALARM", id, ("2012112009420" + id + ".0Z").c_str()));
  }
  EXPECT_TRUE(journal->becomes({"occurred 20121120094204.0Z 4"}));
  drain();
  EXPECT_TRUE(journal->becomes({"occurred 20121120094204.0Z 4", "cleared"}));
  for (int i = 0; i < 4; ++i) {
    open.offer(makeAlarm("6"));
  }
  EXPECT_TRUE(journal->becomes(
      {"occurred 20121120094204.0Z 4", "cleared", "occurred 20121120094200.0Z 6"}));
}

TEST_F(GateTest, clearsALossOnlyWhenWhatCameBeforeItIsDelivered) {
  for (int i = 1; i <= 4; ++i) {
    open.offer(makeAlarm(std::to_string(i)));
  }
  gate.fetched(2);
  gate.delivered(2);
  open.offer(makeAlarm("5"));
  open.offer(makeAlarm("6"));
  open.offer(makeAlarm("7"));  // refused again: all up to 6 must be out first
  gate.fetched(3);
  gate.delivered(2);
  EXPECT_TRUE(journal->becomes({"occurred 20121120094200.0Z 4"}));
  gate.delivered(1);
  EXPECT_TRUE(journal->becomes({"occurred 20121120094200.0Z 4", "cleared"}));
}

TEST_F(GateTest, passesOnWhatWasLostBeforeIt) {
  gate.miss("20121120094200.0Z", "");
  EXPECT_TRUE(journal->becomes({"occurred 20121120094200.0Z ", "cleared"}));
}

TEST_F(GateTest, dropsEverythingOnceClosed) {
  open.offer(makeAlarm("1"));
  gate.close();
  EXPECT_FALSE(open.offer(makeAlarm("2")));
  EXPECT_FALSE(gate.wants(CosNotification::EventType()));
  EXPECT_FALSE(gate.awaitWaiting(1, farAway()));
  EXPECT_FALSE(gate.awaitResumed());
}

TEST_F(GateTest, callsALossOverWhenItCloses) {
  for (int i = 1; i <= 4; ++i) {
    open.offer(makeAlarm(std::to_string(i)));
  }
  gate.close();
  EXPECT_TRUE(journal->becomes({"occurred 20121120094200.0Z 4", "cleared"}));
}

TEST_F(GateTest, wakesWhoeverWaits) {
  std::atomic<int> woken{0};
  std::vector<std::thread> threads;
  threads.emplace_back([&] { woken += gate.awaitWaiting(1, farAway()); });
  threads.emplace_back([&] { woken += gate.awaitWaiting(2, farAway()); });
  open.offer(makeAlarm("1"));
  EXPECT_TRUE(becomesTrue([&] { return woken == 1; }));
  open.offer(makeAlarm("2"));
  EXPECT_TRUE(becomesTrue([&] { return woken == 2; }));
  gate.suspend(true);
  threads.emplace_back([&] { woken += gate.awaitResumed(); });
  gate.suspend(false);
  EXPECT_TRUE(becomesTrue([&] { return woken == 3; }));
  threads.emplace_back([&] {
    gate.pause(std::chrono::hours(1));
    ++woken;
  });
  gate.close();
  EXPECT_TRUE(becomesTrue([&] { return woken == 4; }));
  for (std::thread& thread : threads) {
    thread.join();
  }
}

TEST_F(GateTest, losesWhatCannotBeJudgedUntilEventsAreJudgedAgain) {
  open.canJudge = false;
  EXPECT_FALSE(open.offer(makeAlarm("1")));
  EXPECT_FALSE(open.offer(makeAlarm("2")));
  EXPECT_TRUE(journal->becomes({"occurred 20121120094200.0Z 1"}));
  open.canJudge = true;
  open.admits = false;
  EXPECT_FALSE(open.offer(makeAlarm("3")));
  EXPECT_TRUE(journal->becomes({"occurred 20121120094200.0Z 1", "cleared"}));
}

TEST_F(GateTest, refusesTheNewestAboveTheSessionsBytes) {
  OpenGate large{1000, losses};
  EXPECT_TRUE(large.offer(makeAlarm("1"), 600000));
  EXPECT_FALSE(large.offer(makeAlarm("2"), 600000));
  EXPECT_TRUE(large.offer(makeAlarm("3"), 400000));
  EXPECT_EQ(large.budget->taken(), 1000000U);
  EXPECT_TRUE(journal->becomes({"occurred 20121120094200.0Z 2"}));
  large.gate->fetched(2);
  large.gate->delivered(1);
  EXPECT_EQ(large.budget->taken(), 500000U) << "of average size";
  large.gate->delivered(1);
  EXPECT_EQ(large.budget->taken(), 0U);
  EXPECT_TRUE(large.offer(makeAlarm("4"), 600000));
}

TEST_F(GateTest, givesTheBytesBackWhenNobodyHasItsEventsAnyMore) {
  const auto budget = open.budget;
  EXPECT_TRUE(open.offer(makeAlarm("1"), 10));
  gate.close();
  EXPECT_EQ(budget->taken(), 10U);
  open.gate.reset();
  EXPECT_EQ(budget->taken(), 0U);
}

TEST_F(GateTest, tellsWhatTheCacheLost) {
  open.offer(makeAlarm("1"), 10);
  open.offer(makeAlarm("2"), 10);
  gate.lost(1);
  EXPECT_EQ(gate.waiting(), 1U);
  ASSERT_TRUE(becomesTrue([&] { return journal->lines().size() == 1; }));
  EXPECT_EQ(journal->lines().at(0).substr(0, 9), "occurred ");
  drain();
  EXPECT_TRUE(becomesTrue([&] { return journal->lines().size() == 2; }));
  EXPECT_EQ(open.budget->taken(), 0U);
}

}  // namespace
