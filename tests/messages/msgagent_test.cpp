// One client's queue and its thread: the limit, refusals, and waiting for room.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/messages/support.h"

namespace zk::test {
namespace {

using NS_QUORCORBA::Nex_MsgAgent;
using NS_QUORCORBA::NXMessageCache;
using NS_QUORCORBA::NXMessageHandle;
using testing::ElementsAre;
using testing::IsEmpty;

const char* const RECEIVED = "3 [Nex_MsgAgent::pushmsg]Received alarm in Pull Alarm Message agent.";
const char* const WAITS = "3 Alarm Notification MessageCache waitnotFull pull alarm";
const char* const NOT_DEQUEUED = "3 Alarm Notification getq failed in MsgAgent svc pull alarm.";

// An agent whose thread is started only where a test wants it, over a client's
// cache whose own agent stays idle.
class MsgAgentTest : public testing::Test {
 protected:
  NXMessageCache& cache() {
    if (!cache_) {
      cache_ = std::make_unique<NXMessageCache>();
    }
    return *cache_;
  }

  bool eventuallyTraced(const std::string& text, long times = 1) {
    return eventually([&] { return countOf(trace.texts(), text) >= times; });
  }

  FixedAgentConfig config;
  CapturedTrace trace;

 private:
  std::unique_ptr<NXMessageCache> cache_;
};

struct LimitCase {
  long configured;
  long limit;
};

class LimitTest : public MsgAgentTest, public testing::WithParamInterface<LimitCase> {};

TEST_P(LimitTest, limitFollowsTheConfiguration) {
  config.cachesize = GetParam().configured;
  EXPECT_EQ(Nex_MsgAgent(&cache()).cachesize_, GetParam().limit);
}

INSTANTIATE_TEST_SUITE_P(MsgAgent, LimitTest,
                         testing::Values(LimitCase{0, 10000}, LimitCase{-1, 10000},
                                         LimitCase{20000, 10000}, LimitCase{10001, 10000},
                                         LimitCase{10000, 10000}, LimitCase{9999, 9999},
                                         LimitCase{3, 3}, LimitCase{1, 1}),
                         [](const auto& tested) {
                           const long configured = tested.param.configured;
                           return configured < 0 ? "minus" + std::to_string(-configured)
                                                 : std::to_string(configured);
                         });

TEST_F(MsgAgentTest, nullEventIsRefusedSilently) {
  Nex_MsgAgent agent(&cache());
  EXPECT_EQ(agent.pushmsg(nullptr), -1);
  EXPECT_EQ(agent.num_, 0);
  EXPECT_THAT(trace.texts(), IsEmpty());
}

TEST_F(MsgAgentTest, queuedEventIsTracedAndCounted) {
  Nex_MsgAgent agent(&cache());
  const HeldEvent event = makeEvent("a");
  EXPECT_EQ(agent.pushmsg(event.get()), 0);
  EXPECT_EQ(agent.pushmsg(event.get()), 0);
  EXPECT_EQ(agent.num_, 2);
  EXPECT_THAT(trace.texts(),
              ElementsAre(RECEIVED, "3 [Nex_MsgAgent::pushmsg]Exist.pushmsg num_=1.", RECEIVED,
                          "3 [Nex_MsgAgent::pushmsg]Exist.pushmsg num_=2."));
  for (const TraceLine& line : trace.lines()) {
    EXPECT_EQ(line.file, "messagecach.cpp");
    EXPECT_EQ(line.function, "unknown");
    EXPECT_GT(line.line, 0);
  }
}

TEST_F(MsgAgentTest, blockStandsForOneReferenceToTheHolder) {
  Nex_MsgAgent agent(&cache());
  const HeldEvent event = makeEvent("a");
  agent.pushmsg(event.get());
  EXPECT_FALSE(event->isLast());
  ACE_Message_Block* block = nullptr;
  ASSERT_NE(agent.getq(block), -1);
  EXPECT_EQ(static_cast<void*>(block->base()), static_cast<void*>(event.get()));
  EXPECT_EQ(block->size(), 1U);
  EXPECT_EQ(block->msg_priority(), 0U);
  EXPECT_EQ(block->rd_ptr(), block->base());
  EXPECT_EQ(block->msg_type(), ACE_Message_Block::MB_DATA);
  EXPECT_EQ(block->next(), nullptr);
  EXPECT_EQ(block->prev(), nullptr);
  EXPECT_EQ(block->cont(), nullptr);
  EXPECT_EQ(agent.msg_queue()->message_bytes(), 0U);
  block->release();
  EXPECT_FALSE(event->isLast()) << "the block owned the holder";
  event->release();
  EXPECT_TRUE(event->isLast());
}

TEST_F(MsgAgentTest, newestEventIsRefusedOverTheLimit) {
  config.cachesize = 3;
  Nex_MsgAgent agent(&cache());
  const auto events = makeEvents({"a", "b", "c", "d", "e"});
  for (int queued = 0; queued < 3; ++queued) {
    EXPECT_EQ(agent.pushmsg(events[static_cast<std::size_t>(queued)].get()), 0);
  }
  trace.clear();
  EXPECT_EQ(agent.pushmsg(events[3].get()), -1);
  EXPECT_THAT(
      trace.texts(),
      ElementsAre(RECEIVED, "3 [Nex_MsgAgent::pushmsg]pushmsg overload, num_=4, cachesize_=3"));
  EXPECT_EQ(agent.num_, 3);
  EXPECT_TRUE(events[3]->isLast());
  EXPECT_FALSE(events[0]->isLast());
  trace.clear();
  EXPECT_EQ(agent.pushmsg(events[4].get()), -1);
  EXPECT_EQ(trace.texts()[1], "3 [Nex_MsgAgent::pushmsg]pushmsg overload, num_=4, cachesize_=3");
}

TEST_F(MsgAgentTest, queueThatRefusesGivesTheReferenceBackButStaysCounted) {
  Nex_MsgAgent agent(&cache());
  agent.msg_queue()->deactivate();
  const HeldEvent event = makeEvent("a");
  EXPECT_EQ(agent.pushmsg(event.get()), -1);
  EXPECT_TRUE(event->isLast());
  EXPECT_EQ(agent.num_, 1);
  EXPECT_THAT(trace.texts(),
              ElementsAre(RECEIVED, "3 [Nex_MsgAgent::pushmsg]failed in pull alarm cache."));
  EXPECT_EQ(agent.pushmsg(event.get()), -1);
  EXPECT_EQ(agent.num_, 2);
  agent.msg_queue()->activate();
  trace.clear();
  EXPECT_EQ(agent.pushmsg(event.get()), 0);
  EXPECT_EQ(trace.texts().back(), "3 [Nex_MsgAgent::pushmsg]Exist.pushmsg num_=3.");
}

TEST_F(MsgAgentTest, fullQueueOfTheLargestLimitIsTaken) {
  Nex_MsgAgent agent(&cache());
  const HeldEvent event = makeEvent("a");
  zk::platform::setTraceLevel(0);
  for (int queued = 0; queued < 10000; ++queued) {
    ASSERT_EQ(agent.pushmsg(event.get()), 0) << queued;
  }
  EXPECT_EQ(agent.pushmsg(event.get()), -1);
}

TEST_F(MsgAgentTest, destructorReleasesWhatIsQueued) {
  const auto events = makeEvents({"a", "b", "c"});
  {
    Nex_MsgAgent agent(&cache());
    for (const HeldEvent& event : events) {
      agent.pushmsg(event.get());
    }
  }
  for (const HeldEvent& event : events) {
    EXPECT_TRUE(event->isLast());
  }
}

TEST_F(MsgAgentTest, destructorReleasesWhatADeactivatedQueueHolds) {
  const HeldEvent event = makeEvent("a");
  {
    Nex_MsgAgent agent(&cache());
    agent.pushmsg(event.get());
    agent.msg_queue()->deactivate();
  }
  EXPECT_TRUE(event->isLast());
}

TEST_F(MsgAgentTest, destructorIsTheLastHolderOfAQueuedEvent) {
  Nex_MsgAgent agent(&cache());
  agent.pushmsg(makeEvent("freed with the agent").get());
}

TEST_F(MsgAgentTest, threadCopiesInTheOrderOfThePushes) {
  Nex_MsgAgent agent(&cache());
  agent.pushmsg(makeEvent("before the thread").get());
  agent.activate();
  EXPECT_EQ(agent.thr_count(), 1U);
  agent.pushmsg(makeEvent("a").get());
  agent.pushmsg(makeEvent("b").get());
  EXPECT_THAT(fetchUntil("b", [&] { return fetch(cache()); }),
              ElementsAre("before the thread", "a", "b"));
  EXPECT_TRUE(eventually([&] { return agent.num_ == 0; }));
}

TEST_F(MsgAgentTest, nullBlockEndsTheThread) {
  Nex_MsgAgent agent(&cache());
  agent.activate();
  agent.putq(new ACE_Message_Block);
  EXPECT_TRUE(eventually([&] { return agent.thr_count() == 0; }));
  const HeldEvent event = makeEvent("a");
  EXPECT_EQ(agent.pushmsg(event.get()), 0);
  EXPECT_FALSE(event->isLast());
}

TEST_F(MsgAgentTest, failedDequeueIsTracedAndTriedAgain) {
  Nex_MsgAgent agent(&cache());
  agent.activate();
  agent.msg_queue()->deactivate();
  EXPECT_TRUE(eventuallyTraced(NOT_DEQUEUED, 2));
  agent.msg_queue()->activate();
  agent.pushmsg(makeEvent("a").get());
  EXPECT_THAT(fetchUntil("a", [&] { return fetch(cache()); }), ElementsAre("a"));
}

TEST_F(MsgAgentTest, failedDequeueDoesNotKeepTheThreadFromEnding) {
  Nex_MsgAgent agent(&cache());
  agent.activate();
  agent.msg_queue()->deactivate();
  EXPECT_TRUE(eventuallyTraced(NOT_DEQUEUED));
}

TEST_F(MsgAgentTest, threadThatStartsWithAListOverItsSizeWaitsFirst) {
  config.eventlistsize = 1;
  cache().assembleMsg(makeEvent("a").release());
  cache().assembleMsg(makeEvent("b").release());
  trace.clear();
  Nex_MsgAgent agent(&cache());
  agent.pushmsg(makeEvent("c").get());
  agent.activate();
  ASSERT_TRUE(eventuallyTraced(WAITS));
  EXPECT_THAT(fetch(cache()), ElementsAre("a", "b"));
  EXPECT_THAT(fetchUntil("c", [&] { return fetch(cache()); }), ElementsAre("c"));
}

// The thread through a whole client, as it is in an agent.
class WaitForRoomTest : public MsgAgentTest {
 protected:
  void pushAll(const Texts& names) {
    for (const std::string& name : names) {
      push(handle, name);
    }
  }

  // The lines of the client's thread, from the first.
  Texts threadLines() const {
    Texts result;
    for (const std::string& text : trace.texts()) {
      if (text.find("pushmsg") == std::string::npos &&
          text.find("NXMessageHandle") == std::string::npos) {
        result.push_back(text);
      }
    }
    return result;
  }

  NXMessageHandle handle;
};

TEST_F(WaitForRoomTest, listTakesOneMoreThanItsSizeThenTheThreadWaits) {
  config.eventlistsize = 2;
  handle.setReportStatus(1, true);
  pushAll({"a", "b", "c", "d"});
  ASSERT_TRUE(eventuallyTraced(WAITS));
  EXPECT_THAT(threadLines(),
              ElementsAre("3 [NXMessageCache::assembleMsg]pEvents length =2, index_=1.",
                          "3 [NXMessageCache::assembleMsg]pEvents length =2, index_=2.",
                          "3 [NXMessageCache::assembleMsg]pEvents length =3, index_=3.", WAITS));
  EXPECT_THAT(fetch(handle, 1), ElementsAre("a", "b", "c"));
  EXPECT_THAT(fetchUntil("d", handle, 1), ElementsAre("d"));
}

TEST_F(WaitForRoomTest, fetchBeforeTheWaitLetsTheListTakeTwoMore) {
  config.eventlistsize = 2;
  handle.setReportStatus(1, true);
  EXPECT_THAT(fetch(handle, 1), IsEmpty());
  trace.clear();
  pushAll({"a", "b", "c", "d", "e", "f"});
  ASSERT_TRUE(eventuallyTraced(WAITS, 2));
  EXPECT_THAT(threadLines(),
              ElementsAre("3 [NXMessageCache::assembleMsg]pEvents length =2, index_=1.",
                          "3 [NXMessageCache::assembleMsg]pEvents length =2, index_=2.",
                          "3 [NXMessageCache::assembleMsg]pEvents length =3, index_=3.", WAITS,
                          "3 [NXMessageCache::assembleMsg]pEvents length =4, index_=4.", WAITS));
  EXPECT_THAT(fetch(handle, 1), ElementsAre("a", "b", "c", "d"));
  EXPECT_THAT(fetchUntil("f", handle, 1), ElementsAre("e", "f"));
}

TEST_F(WaitForRoomTest, queueFillsWhileTheThreadWaitsAndOneFetchLetsItGoOn) {
  config.eventlistsize = 1;
  config.cachesize = 2;
  handle.setReportStatus(1, true);
  push(handle, "a");
  ASSERT_TRUE(eventuallyTraced("3 [NXMessageCache::assembleMsg]pEvents length =1, index_=1."));
  push(handle, "b");
  ASSERT_TRUE(eventuallyTraced(WAITS));
  pushAll({"c", "d", "refused"});
  EXPECT_EQ(trace.texts().back(),
            "3 [Nex_MsgAgent::pushmsg]pushmsg overload, num_=3, cachesize_=2");
  EXPECT_THAT(fetch(handle, 1), ElementsAre("a", "b"));
  EXPECT_THAT(fetchUntil("d", handle, 1), ElementsAre("c", "d"));
}

TEST_F(WaitForRoomTest, slowClientStallsOnlyItself) {
  config.eventlistsize = 1;
  handle.setReportStatus(1, true);
  config.eventlistsize = 100;
  handle.setReportStatus(2, true);
  pushAll({"a", "b", "c", "d", "e"});
  EXPECT_THAT(fetchUntil("e", handle, 2), ElementsAre("a", "b", "c", "d", "e"));
  EXPECT_THAT(fetch(handle, 1).size(), testing::Le(2U));
}

TEST_F(WaitForRoomTest, destroyingAWaitingClientReleasesEverything) {
  config.eventlistsize = 2;
  handle.setReportStatus(1, true);
  const auto events = makeEvents({"a", "b", "c", "d", "e", "f"});
  for (const HeldEvent& event : events) {
    handle.pushMessage(event.get(), nullptr);
  }
  pushAll({"freed with the client", "this too"});
  ASSERT_TRUE(eventuallyTraced(WAITS));
  EXPECT_FALSE(events[5]->isLast());
  EXPECT_EQ(handle.unSubscribeMsg(1), 0);
  for (const HeldEvent& event : events) {
    EXPECT_TRUE(event->isLast());
  }
}

TEST_F(WaitForRoomTest, destroyingABusyClientReleasesEverything) {
  for (int round = 0; round < 50; ++round) {
    handle.setReportStatus(1, true);
    const auto events = makeEvents(Texts(20, "a"));
    for (const HeldEvent& event : events) {
      handle.pushMessage(event.get(), nullptr);
    }
    handle.unSubscribeMsg(1);
    for (const HeldEvent& event : events) {
      ASSERT_TRUE(event->isLast()) << round;
    }
  }
}

}  // namespace
}  // namespace zk::test
