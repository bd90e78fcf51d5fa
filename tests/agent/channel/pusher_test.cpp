#include "agent/channel/pusher.h"

#include <gtest/gtest.h>

#include <functional>

#include "tests/agent/channel/support/lists.h"
#include "tests/agent/channel/support/localchannel.h"

namespace {

using namespace zk::test;
using zk::agent::Pusher;
using Step = Pusher::Step;

class FakeTarget : public zk::agent::PushTarget {
 public:
  explicit FakeTarget(bool batches) : batches_(batches) {}

  CORBA::ULong push(const CosNotification::EventBatch& batch, CORBA::ULong at) override {
    ++calls;
    onPush();
    const CORBA::ULong end = batches_ ? batch.length() : at + 1;
    for (CORBA::ULong i = at; i < end; ++i) {
      ids.push_back(idOf(batch[i]));
    }
    return end - at;
  }
  bool takesBatches() const override { return batches_; }
  void disconnect() override {}

  std::function<void()> onPush = [] {};
  int calls = 0;
  Ids ids;

 private:
  const bool batches_;
};

class PusherTest : public testing::TestWithParam<bool> {
 protected:
  void arriveNumbers(int first, int last) {
    for (int i = first; i <= last; ++i) {
      const auto event = makeAlarm(std::to_string(i));
      ASSERT_TRUE(open.offer(event));
      source->add(event);
    }
  }
  // Until everything was pushed, or the pusher gave up.
  Step pushAll(int last) {
    Step step = Step::AGAIN;
    while (step == Step::AGAIN && target->ids.size() < static_cast<std::size_t>(last)) {
      step = pusher.step();
    }
    return step;
  }
  void failTimes(int times, const std::function<void()>& failure) {
    target->onPush = [this, times, failure] {
      if (target->calls <= times) {
        failure();
      }
    };
  }

  OpenGate open;
  std::shared_ptr<FakeSource> source = std::make_shared<FakeSource>();
  std::shared_ptr<zk::agent::EventQueue> queue =
      std::make_shared<zk::agent::EventQueue>(open.gate, source);
  std::shared_ptr<zk::agent::Qos> qos =
      std::make_shared<zk::agent::Qos>(zk::agent::QosValues(), zk::agent::Qos::Most{500, 1000});
  std::shared_ptr<FakeTarget> target = std::make_shared<FakeTarget>(GetParam());
  Pusher pusher{open.gate, queue, qos, target, quickSettings()};
};

INSTANTIATE_TEST_SUITE_P(BothKinds, PusherTest, testing::Bool(), [](const auto& kind) {
  return std::string(kind.param ? "sequence" : "structured");
});

TEST_P(PusherTest, pushesInOrder) {
  arriveNumbers(1, 5);
  EXPECT_EQ(pushAll(5), Step::AGAIN);
  EXPECT_EQ(target->ids, numbers(1, 5));
  EXPECT_EQ(target->calls, GetParam() ? 1 : 5);
}

TEST_P(PusherTest, repeatsWhatFailedForAWhile) {
  const std::vector<std::function<void()>> failures = {
      [] { throw CORBA::TRANSIENT(); }, [] { throw CORBA::COMM_FAILURE(); },
      [] { throw CORBA::TIMEOUT(); }, [] { throw CORBA::NO_RESOURCES(); }};
  int next = 1;
  for (const auto& failure : failures) {
    target->calls = 0;
    failTimes(3, failure);
    arriveNumbers(next, next + 3);
    next += 4;
    EXPECT_EQ(pushAll(next - 1), Step::AGAIN);
  }
  EXPECT_EQ(target->ids, numbers(1, next - 1));
}

TEST_P(PusherTest, countsEventsAsDeliveredOnlyWhenTheyAre) {
  open.limit = 2;
  failTimes(2, [] { throw CORBA::TRANSIENT(); });
  arriveNumbers(1, 2);
  while (target->calls < 2) {
    pusher.step();
  }
  EXPECT_FALSE(open.offer(makeAlarm("3")));
  EXPECT_EQ(pushAll(2), Step::AGAIN);
  EXPECT_TRUE(open.offer(makeAlarm("4")));
}

TEST_P(PusherTest, givesUpAConsumerThatFailsForTooLong) {
  failTimes(1000000, [] { throw CORBA::COMM_FAILURE(); });
  arriveNumbers(1, 2);
  EXPECT_EQ(pushAll(2), Step::FAILED);
  EXPECT_EQ(pusher.failure(), "COMM_FAILURE, again and again for too long");
  EXPECT_GT(target->calls, 2);
}

TEST_P(PusherTest, givesUpAConsumerThatIsGone) {
  failTimes(1, [] { throw CORBA::OBJECT_NOT_EXIST(); });
  arriveNumbers(1, 2);
  EXPECT_EQ(pushAll(2), Step::FAILED);
  EXPECT_EQ(target->calls, 1);
  EXPECT_EQ(pusher.failure(), "OBJECT_NOT_EXIST");
}

TEST_P(PusherTest, givesUpAConsumerThatSaysItIsDisconnected) {
  failTimes(1, [] { throw CosEventComm::Disconnected(); });
  arriveNumbers(1, 2);
  EXPECT_EQ(pushAll(2), Step::FAILED);
  EXPECT_EQ(pusher.failure(), "Disconnected");
}

TEST_P(PusherTest, endsWithTheGate) {
  arriveNumbers(1, 2);
  open.gate->close();
  EXPECT_EQ(pusher.step(), Step::CLOSED);
  EXPECT_EQ(target->calls, 0);
}

TEST_P(PusherTest, pushesNothingMoreOnceSuspended) {
  target->onPush = [&] { open.gate->suspend(true); };
  arriveNumbers(1, 4);
  pusher.step();
  pusher.step();
  EXPECT_EQ(target->calls, 1);
  std::thread closing([&] {
    EXPECT_TRUE(becomesTrue([&] { return open.gate->isSuspended(); }));
    open.gate->close();
  });
  EXPECT_EQ(pusher.step(), Step::CLOSED);
  closing.join();
  EXPECT_EQ(target->calls, 1);
}

}  // namespace
