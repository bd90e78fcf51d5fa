#include "agent/channel/eventqueue.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <future>
#include <thread>

#include "tests/agent/channel/support/lists.h"
#include "tests/platform/waiting.h"

namespace {

using namespace zk::test;
using zk::agent::EventQueue;
using zk::agent::Gate;

class Queue : public testing::Test {
 protected:
  // Accepted, and in the cache's list.
  void arrive(const CosNotification::StructuredEvent& event) {
    ASSERT_TRUE(open.offer(event));
    source->add(event);
  }
  void arriveNumbers(int first, int last) {
    for (int i = first; i <= last; ++i) {
      const std::string id = std::to_string(i);
      arrive(i % 3 == 0 ? makeCreation(id) : makeAlarm(id));
    }
  }
  // What there is, without waiting.
  Ids take(CORBA::ULong most) {
    CosNotification::EventBatch batch;
    const CORBA::ULong count = queue.fetch(most, batch, Gate::Clock::now(), 0);
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
  std::future<Ids> fetching(CORBA::ULong most) {
    return std::async(std::launch::async, [this, most] {
      CosNotification::EventBatch batch;
      queue.fetch(most, batch, EventQueue::never());
      return idsOf(batch);
    });
  }

  OpenGate open;
  std::shared_ptr<FakeSource> source = std::make_shared<FakeSource>();
  EventQueue queue{open.gate, source};
};

TEST_F(Queue, keepsTheOrderOfTheOffers) {
  arriveNumbers(1, 12);
  EXPECT_EQ(take(100), numbers(1, 12));
  EXPECT_EQ(take(100), Ids());
}

TEST_F(Queue, keepsWhatWasNotAskedFor) {
  arriveNumbers(1, 10);
  EXPECT_EQ(take(4), numbers(1, 4));
  EXPECT_EQ(take(1), numbers(5, 5));
  EXPECT_EQ(take(100), numbers(6, 10));
  EXPECT_EQ(source->takes, 1) << "one list was enough";
}

TEST_F(Queue, handsOverAWholeListWithoutACopy) {
  arriveNumbers(1, 5);
  const CosNotification::StructuredEvent* const listed = source->first();
  CosNotification::EventBatch batch;
  EXPECT_EQ(queue.fetch(5, batch, Gate::Clock::now()), 5U);
  EXPECT_EQ(&batch[0], listed);
  EXPECT_EQ(idsOf(batch), numbers(1, 5));
}

TEST_F(Queue, movesTheEventsOfALongerList) {
  arriveNumbers(1, 5);
  const CosNotification::Property* const listed = &source->first()->filterable_data[0];
  CosNotification::EventBatch batch;
  EXPECT_EQ(queue.fetch(2, batch, Gate::Clock::now()), 2U);
  EXPECT_EQ(&batch[0].filterable_data[0], listed);
  arriveNumbers(6, 20);
  EXPECT_EQ(queue.fetch(20, batch, Gate::Clock::now(), 20), 20U);
  EXPECT_EQ(&batch[0].filterable_data[0], listed) << "nor does the batch copy when it grows";
  EXPECT_EQ(idsOf(batch), numbers(1, 20));
}

TEST_F(Queue, waitsForWhatTheCacheHasNotListedYet) {
  const auto late = makeAlarm("1");
  ASSERT_TRUE(open.offer(late));
  EXPECT_EQ(take(10), Ids());
  CosNotification::EventBatch batch;
  std::thread listing([&] { source->add(late); });
  EXPECT_EQ(queue.fetch(10, batch, Gate::Clock::now()), 1U);
  listing.join();
  EXPECT_EQ(idsOf(batch), numbers(1, 1));
}

TEST_F(Queue, asksForNoListBeforeThereIsOne) {
  EXPECT_EQ(take(10), Ids());
  EXPECT_EQ(source->takes, 0);
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

TEST_F(Queue, wakesEverybodyWhoWaitsForWhatComesTogether) {
  std::vector<std::future<Ids>> waiting;
  waiting.reserve(4);
  for (int i = 0; i < 4; ++i) {
    waiting.push_back(fetching(1));
  }
  ASSERT_TRUE(becomesTrue([&] { return source->waiting() == 1; }));
  arriveNumbers(1, 4);
  Ids all;
  for (auto& one : waiting) {
    const Ids some = one.get();
    all.insert(all.end(), some.begin(), some.end());
  }
  std::sort(all.begin(), all.end());
  EXPECT_EQ(all, numbers(1, 4));
}

TEST_F(Queue, answersAtOnceWhileAnotherWaits) {
  auto waiting = fetching(1);
  ASSERT_TRUE(becomesTrue([&] { return source->waiting() == 1; }));
  EXPECT_EQ(take(10), Ids());
  CosNotification::EventBatch batch;
  EXPECT_EQ(queue.fetch(10, batch, Gate::Clock::now()), 0U);
  arriveNumbers(1, 1);
  EXPECT_EQ(waiting.get(), numbers(1, 1));
}

TEST_F(Queue, givesUpWaitingWhenTheClientEnds) {
  open.offer(makeAlarm("1"));  // which never arrives
  auto one = fetching(10);
  auto other = fetching(10);
  source->end();
  EXPECT_EQ(one.get(), Ids());
  EXPECT_EQ(other.get(), Ids());
  EXPECT_TRUE(open.gate->isClosed());
}

TEST_F(Queue, givesNothingOnceTheGateIsClosed) {
  arriveNumbers(1, 3);
  open.gate->close();
  EXPECT_EQ(take(10), Ids());
}

TEST_F(Queue, doesNotWaitForEverForWhatNeverArrives) {
  open.offer(makeAlarm("1"));
  CosNotification::EventBatch batch;
  EXPECT_EQ(queue.fetch(10, batch, Gate::Clock::now()), 0U);
}

}  // namespace
