// One message class: its clients' lives, the report switch, and distribution.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <future>

#include "tests/messages/support.h"

namespace zk::test {
namespace {

using NS_QUORCORBA::NXMessageHandle;
using testing::ElementsAre;
using testing::IsEmpty;

class MessageHandleTest : public testing::Test {
 protected:
  FixedAgentConfig config;
  CapturedTrace trace;
  // What filters and handlers refer to outlives the clients that own them.
  FilterScript script = askingScript();
  int handlers = 0;
  Texts order;
  NXMessageHandle handle;
};

TEST_F(MessageHandleTest, pushWithoutClientsGivesZero) {
  const HeldEvent event = makeEvent("a");
  EXPECT_EQ(handle.pushMessage(event.get(), nullptr), 0);
  EXPECT_TRUE(event->isLast());
  EXPECT_THAT(trace.texts(), IsEmpty());
}

TEST_F(MessageHandleTest, eventReachesEveryReportingClient) {
  for (const long client : {3L, 1L, 2L}) {
    EXPECT_EQ(handle.subscribeMsg(client, nullptr, nullptr), 0);
  }
  handle.setReportStatus(1, true);
  handle.setReportStatus(3, true);
  const HeldEvent event = makeEvent("a");
  EXPECT_EQ(handle.pushMessage(event.get(), nullptr), 0);
  EXPECT_THAT(fetchUntil("a", handle, 1), ElementsAre("a"));
  EXPECT_THAT(fetchUntil("a", handle, 3), ElementsAre("a"));
  EXPECT_TRUE(eventuallyFree(event));
  handle.setReportStatus(2, true);
  push(handle, "b");
  EXPECT_THAT(fetchUntil("b", handle, 2), ElementsAre("b"));
}

// Drops everything and writes down when it was asked.
class OrderedFilter : public ScriptedFilter {
 public:
  OrderedFilter(FilterScript& script, Texts& order, const char* name)
      : ScriptedFilter(script), order_(order), name_(name) {}
  bool isFiltered(const void*) override {
    order_.emplace_back(name_);
    return true;
  }

 private:
  Texts& order_;
  const char* name_;
};

TEST_F(MessageHandleTest, clientsAreServedInOrderOfTheirIds) {
  handle.subscribeMsg(10, new OrderedFilter(script, order, "10"), nullptr);
  handle.subscribeMsg(-5, new OrderedFilter(script, order, "-5"), nullptr);
  handle.subscribeMsg(2, new OrderedFilter(script, order, "2"), nullptr);
  for (const long client : {10L, -5L, 2L}) {
    handle.setReportStatus(client, true);
  }
  push(handle, "a");
  EXPECT_THAT(order, ElementsAre("-5", "2", "10"));
}

TEST_F(MessageHandleTest, eventsPushedWhileReportingIsOffAreLost) {
  handle.subscribeMsg(1, nullptr, nullptr);
  push(handle, "never on");
  handle.setReportStatus(1, true);
  push(handle, "on");
  handle.setReportStatus(1, false);
  push(handle, "off again");
  handle.setReportStatus(1, true);
  push(handle, "last");
  EXPECT_THAT(fetchUntil("last", handle, 1), ElementsAre("on", "last"));
}

TEST_F(MessageHandleTest, setReportStatusTracesKnownClient) {
  handle.subscribeMsg(1, nullptr, nullptr);
  EXPECT_THAT(trace.texts(), IsEmpty());
  EXPECT_EQ(handle.setReportStatus(1, true), 0);
  EXPECT_THAT(trace.texts(), ElementsAre("3 [NXMessageHandle::setReportStatus]enter.",
                                         "3 [NXMessageHandle::setReportStatus]exit."));
}

TEST_F(MessageHandleTest, setReportStatusCreatesUnknownClientAndServesIt) {
  EXPECT_EQ(handle.setReportStatus(9, true), 0);
  EXPECT_THAT(trace.texts(), ElementsAre("3 [NXMessageHandle::setReportStatus]enter.",
                                         "3 [NXMessageHandle::setReportStatus]. clientID=9",
                                         "3 [NXMessageHandle::setReportStatus]exit."));
  for (const TraceLine& line : trace.lines()) {
    EXPECT_EQ(line.file, "messagecach.cpp");
    EXPECT_EQ(line.function, "unknown");
    EXPECT_GT(line.line, 0);
  }
  push(handle, "a");
  EXPECT_THAT(fetchUntil("a", handle, 9), ElementsAre("a"));
}

TEST_F(MessageHandleTest, setReportStatusOffAlsoCreatesUnknownClient) {
  EXPECT_EQ(handle.setReportStatus(9, false), 0);
  EXPECT_THAT(fetch(handle, 9), IsEmpty());
}

TEST_F(MessageHandleTest, subscribingReplacesClientMadeByReportStatus) {
  handle.setReportStatus(9, true);
  push(handle, "a");
  handle.subscribeMsg(9, nullptr, nullptr);
  push(handle, "b");
  handle.setReportStatus(9, true);
  push(handle, "c");
  EXPECT_THAT(fetchUntil("c", handle, 9), ElementsAre("c"));
}

TEST_F(MessageHandleTest, subscribingAgainStartsTheClientAfresh) {
  config.eventlistsize = 1;
  handle.subscribeMsg(1, new ScriptedFilter(script), new CountedHandler(handlers));
  handle.setReportStatus(1, true);
  // Two in the list, the others in the queue.
  const auto events = makeEvents({"a", "b", "c", "d", "e"});
  for (const HeldEvent& event : events) {
    handle.pushMessage(event.get(), nullptr);
  }
  handle.subscribeMsg(1, nullptr, nullptr);
  EXPECT_EQ(script.deletions, 1);
  EXPECT_EQ(handlers, 1);
  for (const HeldEvent& event : events) {
    EXPECT_TRUE(event->isLast());
  }
  push(handle, "reporting is off");
  handle.setReportStatus(1, true);
  push(handle, "f");
  EXPECT_THAT(fetchUntil("f", handle, 1), ElementsAre("f"));
}

TEST_F(MessageHandleTest, filterAndHandlerGivenAgainStayAlive) {
  auto* filter = new ScriptedFilter(script);
  auto* handler = new CountedHandler(handlers);
  handle.subscribeMsg(1, filter, handler);
  handle.subscribeMsg(1, filter, handler);
  EXPECT_EQ(script.deletions, 0);
  EXPECT_EQ(handlers, 0);
  handle.setReportStatus(1, true);
  push(handle, "a");
  EXPECT_EQ(script.contexts.size(), 1U);
  handle.unSubscribeMsg(1);
  EXPECT_EQ(script.deletions, 1);
  EXPECT_EQ(handlers, 1);
}

TEST_F(MessageHandleTest, unsubscribingFreesWhatTheClientBrought) {
  handle.subscribeMsg(1, new ScriptedFilter(script), new CountedHandler(handlers));
  EXPECT_EQ(script.deletions + handlers, 0);
  EXPECT_EQ(handle.unSubscribeMsg(1), 0);
  EXPECT_EQ(script.deletions, 1);
  EXPECT_EQ(handlers, 1);
  EXPECT_THAT(fetch(handle, 1), ElementsAre("(none)"));
}

TEST_F(MessageHandleTest, unsubscribingUnknownClientGivesZero) {
  EXPECT_EQ(handle.unSubscribeMsg(77), 0);
  handle.subscribeMsg(1, nullptr, nullptr);
  EXPECT_EQ(handle.unSubscribeMsg(1), 0);
  EXPECT_EQ(handle.unSubscribeMsg(1), 0);
  EXPECT_THAT(trace.texts(), IsEmpty());
}

TEST_F(MessageHandleTest, destroyedClassFreesItsClients) {
  const HeldEvent event = makeEvent("a");
  {
    NXMessageHandle other;
    other.subscribeMsg(1, new ScriptedFilter(script), new CountedHandler(handlers));
    other.setReportStatus(1, true);
    other.pushMessage(event.get(), nullptr);
  }
  EXPECT_EQ(script.deletions, 1);
  EXPECT_EQ(handlers, 1);
  EXPECT_TRUE(event->isLast());
}

TEST_F(MessageHandleTest, eachClientHasOneThreadForItsLife) {
  const auto threads = [] { return ACE_Thread_Manager::instance()->count_threads(); };
  const auto before = threads();
  handle.subscribeMsg(1, nullptr, nullptr);
  handle.setReportStatus(2, true);
  EXPECT_EQ(threads(), before + 2);
  handle.subscribeMsg(1, nullptr, nullptr);
  EXPECT_EQ(threads(), before + 2);
  handle.unSubscribeMsg(1);
  handle.unSubscribeMsg(2);
  EXPECT_EQ(threads(), before);
}

TEST_F(MessageHandleTest, overloadedClientLosesTheEventAndOthersGetIt) {
  config.eventlistsize = 1;
  config.cachesize = 1;
  handle.setReportStatus(1, true);
  config.eventlistsize = 500;
  config.cachesize = 10000;
  handle.setReportStatus(2, true);
  // Client 1: two in the list, one in the queue, then no more.
  const Texts names{"a", "b", "c", "d", "e"};
  for (const std::string& name : names) {
    EXPECT_EQ(push(handle, name), 0);
    EXPECT_EQ(fetchUntil(name, handle, 2), Texts{name});
    if (name < "c") {
      ASSERT_TRUE(eventually([&] {
        return countOf(trace.texts(),
                       "3 [NXMessageCache::assembleMsg]pEvents length =" +
                           std::string(name == "a" ? "1, index_=1." : "2, index_=2.")) == 1;
      }));
    }
  }
  EXPECT_THAT(fetchUntil("c", handle, 1), ElementsAre("a", "b", "c"));
  EXPECT_EQ(
      countOf(trace.texts(), "3 [Nex_MsgAgent::pushmsg]pushmsg overload, num_=2, cachesize_=1"), 2);
  push(handle, "f");
  EXPECT_THAT(fetchUntil("f", handle, 1), ElementsAre("f"));
}

// Never drops; says how many threads were ever inside at once.
class CrowdFilter : public ScriptedFilter {
 public:
  CrowdFilter(FilterScript& script, std::atomic<int>& inside, std::atomic<int>& most)
      : ScriptedFilter(script), inside_(inside), most_(most) {}

  bool isFiltered(const void*) override {
    const int now = ++inside_;
    if (now > most_) {
      most_ = now;
    }
    std::this_thread::yield();
    --inside_;
    return false;
  }

 private:
  std::atomic<int>& inside_;
  std::atomic<int>& most_;
};

TEST_F(MessageHandleTest, oneThreadAtATimeUsesAFilter) {
  constexpr int THREADS = 4;
  constexpr int ROUNDS = 200;
  std::atomic<int> inside{0};
  std::atomic<int> most{0};
  handle.subscribeMsg(1, new CrowdFilter(script, inside, most), nullptr);
  handle.setReportStatus(1, true);
  std::vector<std::thread> threads;
  threads.reserve(THREADS);
  for (int thread = 0; thread < THREADS; ++thread) {
    threads.emplace_back([this] {
      for (int round = 0; round < ROUNDS; ++round) {
        push(handle, "a");
      }
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(most, 1);
  EXPECT_EQ(script.calls.size(), static_cast<std::size_t>(THREADS * ROUNDS));
}

}  // namespace
}  // namespace zk::test
