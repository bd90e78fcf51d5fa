#include "zk_quornex/platform/default/eventsinks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>

#include "tests/platform/sinkdoubles.h"
#include "tests/support/doubles.h"
#include "zk_quornex/platform/events.h"

namespace zk::test {
namespace {

using testing::ElementsAre;
using zk::platform::addEventSink;
using zk::platform::eventSinkCounts;
using zk::platform::removeEventSink;

void push(const std::string& name) {
  auto event = makeEvent(name);
  NS_QUORCORBA::PushEvent(event);
}

bool takes(const KeepingSink& sink, std::size_t count) {
  return becomesTrue([&] { return sink.events().size() >= count; });
}

TEST(EventSinks, takeEventsInTheOrderPushed) {
  const auto sink = std::make_shared<KeepingSink>();
  ASSERT_TRUE(addEventSink("sink", sink));
  std::vector<std::string> pushed;
  for (int i = 0; i < 500; ++i) {
    pushed.push_back(std::to_string(i));
    push(pushed.back());
  }
  EXPECT_EQ(removeEventSink("sink").taken, 500u);
  EXPECT_EQ(sink->names(), pushed);
}

TEST(EventSinks, refuseANameThatIsTaken) {
  const auto first = std::make_shared<KeepingSink>();
  const auto second = std::make_shared<KeepingSink>();
  EXPECT_TRUE(addEventSink("sink", first));
  EXPECT_FALSE(addEventSink("sink", second));
  push("event");
  removeEventSink("sink");
  EXPECT_EQ(first->events().size(), 1u);
  EXPECT_TRUE(second->events().empty());
  EXPECT_TRUE(addEventSink("sink", second));
  removeEventSink("sink");
}

TEST(EventSinks, refuseANullSink) {
  EXPECT_THROW(addEventSink("null", nullptr), std::invalid_argument);
  EXPECT_TRUE(addEventSink("null", std::make_shared<KeepingSink>()));
  removeEventSink("null");
}

TEST(EventSinks, countNothingForUnknownNames) {
  EXPECT_EQ(eventSinkCounts("nobody").taken, 0u);
  EXPECT_EQ(removeEventSink("nobody").dropped, 0u);
}

TEST(EventSinks, aBlockedOneDelaysNeitherThePusherNorAnother) {
  const auto blocked = std::make_shared<GatedSink>();
  const auto free = std::make_shared<KeepingSink>();
  ASSERT_TRUE(addEventSink("a blocked", blocked));
  ASSERT_TRUE(addEventSink("b free", free));
  for (const char* name : {"1", "2", "3"}) {
    push(name);
  }
  EXPECT_TRUE(takes(*free, 3));
  EXPECT_TRUE(blocked->events().empty());
  EXPECT_EQ(eventSinkCounts("a blocked").taken, 0u);
  blocked->gate.open();
  EXPECT_EQ(removeEventSink("a blocked").taken, 3u);
  EXPECT_EQ(removeEventSink("b free").taken, 3u);
  EXPECT_THAT(blocked->names(), ElementsAre("1", "2", "3"));
}

TEST(EventSinks, dropTheNewestWhenFull) {
  const auto sink = std::make_shared<GatedSink>();
  ASSERT_TRUE(addEventSink("sink", sink, 2));
  push("running");
  ASSERT_TRUE(becomesTrue([&] { return sink->entered.load(); }));
  for (const char* name : {"queued 1", "queued 2", "lost 1", "lost 2", "lost 3"}) {
    push(name);
  }
  EXPECT_EQ(eventSinkCounts("sink").dropped, 3u);
  sink->gate.open();
  const auto counts = removeEventSink("sink");
  EXPECT_EQ(counts.taken, 3u);
  EXPECT_EQ(counts.dropped, 3u);
  EXPECT_THAT(sink->names(), ElementsAre("running", "queued 1", "queued 2"));
}

TEST(EventSinks, removalWaitsForWhatIsQueuedAndTakesNothingMore) {
  const auto sink = std::make_shared<GatedSink>();
  ASSERT_TRUE(addEventSink("sink", sink));
  for (const char* name : {"1", "2", "3"}) {
    push(name);
  }
  unsigned long taken = 0;
  std::thread remover([&] { taken = removeEventSink("sink").taken; });
  // The name is free again as soon as the removal has begun.
  ASSERT_TRUE(becomesTrue([] { return addEventSink("sink", std::make_shared<KeepingSink>()); }));
  push("later");
  sink->gate.open();
  remover.join();
  EXPECT_EQ(taken, 3u);
  EXPECT_THAT(sink->names(), ElementsAre("1", "2", "3"));
  EXPECT_EQ(removeEventSink("sink").taken, 1u);
}

TEST(EventSinks, comeAndGoWhileOthersPush) {
  std::thread pusher([] {
    for (int i = 0; i < 2000; ++i) {
      push("event");
    }
  });
  for (int i = 0; i < 50; ++i) {
    const auto sink = std::make_shared<KeepingSink>();
    ASSERT_TRUE(addEventSink("sink", sink));
    const unsigned long taken = removeEventSink("sink").taken;
    EXPECT_EQ(taken, sink->events().size());
  }
  pusher.join();
}

}  // namespace
}  // namespace zk::test
