// One sink's queue, its rounds taken by hand: no thread unless a test starts it.

#include "zk_quornex/platform/default/sinkqueue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "tests/platform/sinkdoubles.h"
#include "tests/support/doubles.h"

namespace zk::test {
namespace {

using testing::ElementsAre;
using zk::platform::SharedEvent;
using zk::platform::SinkQueue;

SharedEvent shared(const std::string& name) {
  return std::make_shared<const CosNotification::StructuredEvent>(makeEvent(name));
}

// Throws what its events are named after.
class ThrowingSink : public zk::platform::EventSink {
 public:
  void take(const SharedEvent& event) override {
    const std::string name = nameOf(event);
    if (name == "standard") {
      throw std::runtime_error("out of paper");
    }
    if (name == "corba") {
      throw CORBA::TRANSIENT();
    }
    if (name == "other") {
      throw 7;
    }
    ++returned;
  }

  int returned = 0;
};

TEST(SinkQueue, holdsAsManyAsItHasRoomFor) {
  CapturedTrace trace;
  const auto sink = std::make_shared<KeepingSink>();
  SinkQueue queue("sink", sink, 2);
  for (const char* name : {"1", "2", "3", "4"}) {
    queue.add(shared(name));
  }
  EXPECT_EQ(queue.counts().dropped, 2u);
  EXPECT_TRUE(queue.takeNext());
  EXPECT_TRUE(queue.takeNext());
  EXPECT_EQ(queue.counts().taken, 2u);
  EXPECT_THAT(sink->names(), ElementsAre("1", "2"));
}

TEST(SinkQueue, withoutRoomDropsEverything) {
  CapturedTrace trace;
  SinkQueue queue("sink", std::make_shared<KeepingSink>(), 0);
  queue.add(shared("1"));
  EXPECT_EQ(queue.counts().dropped, 1u);
}

TEST(SinkQueue, tellsOfDropsOnceUntilItWasEmpty) {
  CapturedTrace trace;
  SinkQueue queue("slow", std::make_shared<KeepingSink>(), 2);
  for (int i = 0; i < 5; ++i) {
    queue.add(shared("event"));
  }
  queue.takeNext();
  for (int i = 0; i < 5; ++i) {
    queue.add(shared("event"));
  }
  EXPECT_THAT(trace.texts(),
              ElementsAre("1 event sink 'slow' is full, events are dropped.capacity=2"));
  queue.takeNext();
  queue.takeNext();
  EXPECT_EQ(trace.lines().size(), 1u);
  for (int i = 0; i < 5; ++i) {
    queue.add(shared("event"));
  }
  EXPECT_EQ(trace.lines().size(), 2u);
  EXPECT_EQ(queue.counts().dropped, 3u + 4u + 3u);
}

TEST(SinkQueue, goesOnAfterASinkThatThrows) {
  CapturedTrace trace;
  const auto sink = std::make_shared<ThrowingSink>();
  SinkQueue queue("printer", sink, 10);
  for (const char* name : {"standard", "corba", "other", "fine"}) {
    queue.add(shared(name));
  }
  for (int i = 0; i < 4; ++i) {
    EXPECT_TRUE(queue.takeNext());
  }
  EXPECT_THAT(trace.texts(), ElementsAre("1 event sink 'printer' failed.out of paper",
                                         "1 event sink 'printer' failed.TRANSIENT",
                                         "1 event sink 'printer' failed.unknown exception"));
  EXPECT_EQ(sink->returned, 1);
  EXPECT_EQ(queue.counts().taken, 4u);
}

TEST(SinkQueue, takesNothingOnceFinished) {
  const auto sink = std::make_shared<KeepingSink>();
  SinkQueue queue("sink", sink, 10);
  queue.add(shared("1"));
  queue.start();
  queue.finish();
  queue.add(shared("2"));
  EXPECT_FALSE(queue.takeNext());
  EXPECT_THAT(sink->names(), ElementsAre("1"));
  EXPECT_EQ(queue.counts().dropped, 0u);
}

TEST(SinkQueue, letsGoOfEventsThatWereTaken) {
  class ForgettingSink : public zk::platform::EventSink {
    void take(const SharedEvent&) override {}
  };
  SinkQueue queue("sink", std::make_shared<ForgettingSink>(), 10);
  SharedEvent event = shared("1");
  queue.add(event);
  EXPECT_EQ(event.use_count(), 2);
  queue.takeNext();
  EXPECT_EQ(event.use_count(), 1);
}

}  // namespace
}  // namespace zk::test
