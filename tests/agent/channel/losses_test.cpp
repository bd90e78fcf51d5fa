#include "agent/channel/losses.h"

#include <gtest/gtest.h>

#include "tests/agent/channel/support/localchannel.h"

namespace {

using namespace zk::test;

class LossesTest : public testing::Test {
 protected:
  ~LossesTest() override { workers->stop(); }

  std::shared_ptr<LossJournal> journal = std::make_shared<LossJournal>();
  std::shared_ptr<zk::agent::Workers> workers = std::make_shared<zk::agent::Workers>();
  std::shared_ptr<zk::agent::Losses> losses = std::make_shared<zk::agent::Losses>(journal, workers);
};

TEST_F(LossesTest, lastFromTheFirstProxyThatLosesToTheLastThatRecovers) {
  losses->lost(1, "t1", "a");
  losses->lost(2, "t2", "b");
  losses->recovered(1);
  EXPECT_TRUE(journal->becomes({"occurred t1 a"}));
  losses->recovered(2);
  EXPECT_TRUE(journal->becomes({"occurred t1 a", "cleared"}));
}

TEST_F(LossesTest, needALossToRecoverFrom) {
  losses->recovered(1);
  losses->lost(2, "t", "a");
  EXPECT_TRUE(journal->becomes({"occurred t a"}));
}

TEST_F(LossesTest, doNotPileUpBehindAnNmsThatHangs) {
  Gate hanging;
  std::atomic<bool> called{false};
  journal->onCall = [&] {
    called = true;
    hanging.pass();
  };
  losses->lost(1, "t0", "a");
  ASSERT_TRUE(becomesTrue([&] { return called.load(); }));
  for (int i = 0; i < 1000; ++i) {
    losses->recovered(1);
    losses->lost(1, "t1", "b");
  }
  losses->recovered(1);
  hanging.open();
  EXPECT_TRUE(journal->becomes({"occurred t0 a", "cleared"}));
}

TEST_F(LossesTest, areNotToldOnceClosed) {
  Gate hanging;
  std::atomic<bool> called{false};
  journal->onCall = [&] {
    called = true;
    hanging.pass();
  };
  losses->lost(1, "t0", "a");
  ASSERT_TRUE(becomesTrue([&] { return called.load(); }));
  losses->recovered(1);
  losses->close();
  losses->lost(2, "t1", "b");
  hanging.open();
  workers->stop();
  EXPECT_EQ(journal->lines(), Ids{"occurred t0 a"});
}

TEST_F(LossesTest, surviveAnNmsThatCannotBeReached) {
  journal->onCall = [] { throw CORBA::COMM_FAILURE(); };
  losses->lost(1, "t0", "a");
  workers->stop();
  EXPECT_EQ(journal->lines(), Ids());
}

}  // namespace
