// Waiting for a client's events beside the cache: what ends a wait and what the
// waiter is told.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <future>

#include "tests/messages/support.h"
#include "tests/platform/waiting.h"

namespace zk::test {
namespace {

using NS_QUORCORBA::NXListSignal;
using NS_QUORCORBA::NXMessageCache;
using NS_QUORCORBA::NXMessageHandle;
using NS_QUORCORBA::NXMessageMgr;
using NS_SECURITY_SERVICE1::SecurityIF;
using testing::ElementsAre;
using testing::IsEmpty;
using State = NXListSignal::State;
using Signal = std::shared_ptr<NXListSignal>;
using Clock = std::chrono::steady_clock;

constexpr long CLIENT = 7;

Clock::time_point farAway() { return Clock::now() + std::chrono::seconds(60); }
Clock::time_point past() { return Clock::now() - std::chrono::seconds(1); }

// A validity service that knows nobody from a given moment on.
class Doorman : public SecurityIF {
 public:
  bool IsClientValid(long, long, const char*, const char*, const char*) override {
    return lets.load();
  }

  std::atomic<bool> lets{true};
};

class ListSignalTest : public testing::Test {
 protected:
  ListSignalTest() { handle.setReportStatus(CLIENT, true); }

  // Waits on another thread. That it has begun to wait cannot be seen; that what
  // follows ends the wait must not depend on it.
  static std::future<State> waiting(const Signal& signal) {
    return std::async(std::launch::async, [signal] { return signal->wait(farAway()); });
  }

  FixedAgentConfig config;
  std::shared_ptr<Doorman> doorman = std::make_shared<Doorman>();
  ScopedService service{"SecurityIF", doorman};
  NXMessageHandle handle;
};

TEST_F(ListSignalTest, timeOutWithoutEvents) {
  const Signal signal = handle.listSignal(CLIENT);
  EXPECT_EQ(signal->wait(past()), State::TIME_OUT);
  const auto until = Clock::now() + std::chrono::milliseconds(20);
  EXPECT_EQ(signal->wait(until), State::TIME_OUT);
  EXPECT_GE(Clock::now(), until);
}

TEST_F(ListSignalTest, eventEndsTheWait) {
  auto result = waiting(handle.listSignal(CLIENT));
  push(handle, "a");
  EXPECT_EQ(result.get(), State::EVENTS);
  EXPECT_THAT(fetch(handle, CLIENT), ElementsAre("a"));
}

// The queue holds one event, and the list takes two and one more.
TEST_F(ListSignalTest, lossEndsTheWaitAndComesFirst) {
  config.cachesize = 1;
  config.eventlistsize = 1;
  NXMessageHandle small;
  small.setReportStatus(CLIENT, true);
  const Signal signal = small.listSignal(CLIENT);
  for (int i = 0; i < 100; ++i) {
    push(small, "a");
  }
  EXPECT_EQ(signal->wait(farAway()), State::MISSED);
  const unsigned long missed = signal->takeMissed();
  EXPECT_GT(missed, 90U);
  EXPECT_EQ(signal->takeMissed(), 0U);
  EXPECT_EQ(signal->wait(farAway()), State::EVENTS);
  std::size_t listed = 0;
  EXPECT_TRUE(becomesTrue([&] {
    listed += fetch(small, CLIENT).size();
    return listed + missed == 100;
  }));
}

TEST_F(ListSignalTest, endComesBeforeALoss) {
  config.cachesize = 1;
  config.eventlistsize = 1;
  NXMessageHandle small;
  small.setReportStatus(CLIENT, true);
  const Signal signal = small.listSignal(CLIENT);
  for (int i = 0; i < 100; ++i) {
    push(small, "a");
  }
  small.unSubscribeMsg(CLIENT);
  EXPECT_EQ(signal->wait(past()), State::OVER);
}

TEST_F(ListSignalTest, eventEndsTheWaitOfEveryWaiter) {
  auto first = waiting(handle.listSignal(CLIENT));
  auto second = waiting(handle.listSignal(CLIENT));
  push(handle, "a");
  EXPECT_EQ(first.get(), State::EVENTS);
  EXPECT_EQ(second.get(), State::EVENTS);
}

TEST_F(ListSignalTest, listedEventsEndEveryWaitUntilTheyAreFetched) {
  NXMessageCache cache;
  const Signal& signal = cache.listSignal();
  cache.assembleMsg(makeEvent("a").release());
  cache.assembleMsg(makeEvent("b").release());
  EXPECT_EQ(signal->wait(past()), State::EVENTS);
  EXPECT_EQ(signal->wait(farAway()), State::EVENTS);
  EXPECT_THAT(fetch(cache), ElementsAre("a", "b"));
  EXPECT_EQ(signal->wait(past()), State::TIME_OUT);
  cache.assembleMsg(makeEvent("c").release());
  EXPECT_EQ(signal->wait(farAway()), State::EVENTS);
}

TEST_F(ListSignalTest, unsubscribingEndsTheWait) {
  const Signal signal = handle.listSignal(CLIENT);
  auto result = waiting(signal);
  handle.unSubscribeMsg(CLIENT);
  EXPECT_EQ(result.get(), State::OVER);
  EXPECT_EQ(signal->wait(farAway()), State::OVER);
}

TEST_F(ListSignalTest, replacementEndsTheWaitAndHasASignalOfItsOwn) {
  const Signal before = handle.listSignal(CLIENT);
  auto result = waiting(before);
  handle.subscribeMsg(CLIENT, nullptr, nullptr);
  EXPECT_EQ(result.get(), State::OVER);
  const Signal after = handle.listSignal(CLIENT);
  EXPECT_NE(after, before);
  EXPECT_EQ(after->wait(past()), State::TIME_OUT);
}

TEST_F(ListSignalTest, clientFoundInvalidEndsTheWait) {
  auto result = waiting(handle.listSignal(CLIENT));
  doorman->lets = false;
  push(handle, "a");
  EXPECT_EQ(result.get(), State::OVER);
  EXPECT_EQ(handle.listSignal(CLIENT), nullptr);
}

TEST_F(ListSignalTest, endOutweighsListedEvents) {
  const Signal signal = handle.listSignal(CLIENT);
  push(handle, "a");
  ASSERT_EQ(signal->wait(farAway()), State::EVENTS);
  handle.unSubscribeMsg(CLIENT);
  EXPECT_EQ(signal->wait(past()), State::OVER);
}

TEST_F(ListSignalTest, outlivesItsClient) {
  Signal signal;
  {
    NXMessageCache cache;
    signal = cache.listSignal();
  }
  EXPECT_EQ(signal->wait(farAway()), State::OVER);
}

TEST_F(ListSignalTest, unknownClientHasNone) { EXPECT_EQ(handle.listSignal(CLIENT + 1), nullptr); }

TEST_F(ListSignalTest, managerFindsTheSignalOfAClientAndTracesNothing) {
  const NXMessageMgr& manager = *NXMessageMgr::Instance();
  manager.subscribeMsg(8, CLIENT, nullptr, nullptr);
  const CapturedTrace trace;
  const Signal signal = manager.listSignal(8, CLIENT);
  ASSERT_NE(signal, nullptr);
  EXPECT_EQ(manager.listSignal(8, CLIENT), signal);
  EXPECT_EQ(manager.listSignal(10, CLIENT), nullptr);
  EXPECT_EQ(manager.listSignal(9, CLIENT), nullptr);
  EXPECT_THAT(trace.texts(), IsEmpty());
  manager.unSubscribeMsg(8, CLIENT);
  EXPECT_EQ(signal->wait(farAway()), State::OVER);
}

// A lost wake-up would let a wait run into its time-out.
TEST_F(ListSignalTest, noWakeUpIsLost) {
  constexpr int ROUNDS = 2000;
  const Signal signal = handle.listSignal(CLIENT);
  std::atomic<int> fetched{0};
  std::thread producer([&] {
    const HeldEvent event = makeEvent("a");
    for (int round = 0; round < ROUNDS; ++round) {
      handle.pushMessage(event.get(), nullptr);
      while (fetched.load() <= round && signal->wait(past()) != State::OVER) {
        std::this_thread::yield();
      }
    }
  });
  int timeOuts = 0;
  while (fetched.load() < ROUNDS && timeOuts == 0) {
    timeOuts += signal->wait(farAway()) == State::EVENTS ? 0 : 1;
    fetched += static_cast<int>(fetch(handle, CLIENT).size());
  }
  EXPECT_EQ(timeOuts, 0);
  handle.unSubscribeMsg(CLIENT);
  producer.join();
}

TEST_F(ListSignalTest, clientsThatComeAndGoEndTheirWaits) {
  for (int round = 0; round < 200; ++round) {
    handle.subscribeMsg(CLIENT, nullptr, nullptr);
    handle.setReportStatus(CLIENT, true);
    auto result = waiting(handle.listSignal(CLIENT));
    if (round % 2 == 0) {
      push(handle, "a");
      EXPECT_EQ(result.get(), State::EVENTS) << round;
    } else {
      handle.unSubscribeMsg(CLIENT);
      EXPECT_EQ(result.get(), State::OVER) << round;
    }
  }
}

}  // namespace
}  // namespace zk::test
