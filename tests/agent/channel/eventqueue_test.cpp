#include "agent/channel/eventqueue.h"

#include <gtest/gtest.h>

#include "tests/agent/channel/support/lists.h"
#include "tests/platform/waiting.h"

namespace {

using namespace zk::test;
using zk::agent::EventKind;
using zk::agent::EventQueue;
using zk::agent::Gate;

class Queue : public testing::Test {
 protected:
  // Accepted, and in the cache's list.
  void arrive(const CosNotification::StructuredEvent& event) {
    ASSERT_TRUE(open.offer(event));
    lists->add(event);
  }
  void arriveNumbers(int first, int last) {
    for (int i = first; i <= last; ++i) {
      const std::string id = std::to_string(i);
      arrive(i % 3 == 0 ? makeCreation(id) : makeAlarm(id));
    }
  }
  Ids take(CORBA::ULong most) {
    CosNotification::EventBatch batch;
    const CORBA::ULong count = queue.take(most, batch);
    EXPECT_EQ(count, batch.length());
    return idsOf(batch);
  }
  // As take, until nothing waits.
  Ids fetchAll(CORBA::ULong most) {
    Ids all;
    while (open.gate->waiting() != 0) {
      CosNotification::EventBatch batch;
      queue.fetch(most, batch, Gate::Clock::now());
      const Ids some = idsOf(batch);
      EXPECT_LE(some.size(), most);
      all.insert(all.end(), some.begin(), some.end());
    }
    return all;
  }

  OpenGate open;
  std::shared_ptr<FakeLists> lists = std::make_shared<FakeLists>();
  EventQueue queue{open.gate, lists};
};

TEST_F(Queue, mergesTheListsInTheOrderOfTheOffers) {
  arriveNumbers(1, 12);
  EXPECT_EQ(take(100), numbers(1, 12));
  EXPECT_EQ(take(100), Ids());
}

TEST_F(Queue, keepsWhatWasNotAskedFor) {
  arriveNumbers(1, 10);
  EXPECT_EQ(take(4), numbers(1, 4));
  EXPECT_EQ(take(1), numbers(5, 5));
  EXPECT_EQ(take(100), numbers(6, 10));
  EXPECT_EQ(lists->takes, 2) << "one list of each kind was enough";
}

TEST_F(Queue, handsOverAWholeListWithoutACopy) {
  for (int i = 1; i <= 5; ++i) {
    arrive(makeAlarm(std::to_string(i)));
  }
  const CosNotification::StructuredEvent* const listed = lists->firstOf(EventKind::Alarm);
  CosNotification::EventBatch batch;
  EXPECT_EQ(queue.take(5, batch), 5U);
  EXPECT_EQ(&batch[0], listed);
  EXPECT_EQ(idsOf(batch), numbers(1, 5));
}

TEST_F(Queue, waitsForWhatTheCacheHasNotListedYet) {
  const auto late = makeAlarm("1");
  ASSERT_TRUE(open.offer(late));
  arrive(makeCreation("2"));
  EXPECT_EQ(take(10), Ids()) << "2 must not overtake 1";
  lists->add(late);
  EXPECT_EQ(fetchAll(10), numbers(1, 2));
}

TEST_F(Queue, looksAtNothingBeforeAnythingWasLetIn) {
  EXPECT_EQ(take(10), Ids());
  EXPECT_EQ(lists->takes, 0);
}

TEST_F(Queue, losesAndDoublesNothingWhateverIsAskedFor) {
  int next = 1;
  Ids all;
  for (CORBA::ULong most = 1; most < 20; ++most) {
    arriveNumbers(next, next + 16);
    next += 17;
    const Ids some = take(most);
    all.insert(all.end(), some.begin(), some.end());
  }
  const Ids rest = fetchAll(7);
  all.insert(all.end(), rest.begin(), rest.end());
  EXPECT_EQ(all, numbers(1, next - 1));
}

TEST_F(Queue, givesUpWaitingWhenTheGateCloses) {
  open.offer(makeAlarm("1"));  // which never arrives
  std::thread closing([&] { open.gate->close(); });
  CosNotification::EventBatch batch;
  EXPECT_EQ(queue.fetch(10, batch, Gate::Clock::time_point::max()), 0U);
  closing.join();
}

TEST_F(Queue, doesNotWaitForEverForWhatNeverArrives) {
  open.offer(makeAlarm("1"));
  CosNotification::EventBatch batch;
  EXPECT_EQ(queue.fetch(10, batch, Gate::Clock::now()), 0U);
}

}  // namespace
