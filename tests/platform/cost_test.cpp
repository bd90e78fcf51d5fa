// What costs nothing when it is not used: events without sinks, traces that are
// switched off.

#include <gtest/gtest.h>

#include "tests/platform/sinkdoubles.h"
#include "tests/support/allocations.h"
#include "tests/support/doubles.h"
#include "zk_quornex/platform/default/eventsinks.h"
#include "zk_quornex/platform/events.h"

namespace zk::test {
namespace {

TEST(Cost, eventsAreNotCopiedWithoutSinks) {
  auto event = makeEvent("event");
  NS_QUORCORBA::PushEvent(event);
  EXPECT_EQ(allocationsOf([&] { NS_QUORCORBA::PushEvent(event); }), 0);
}

TEST(Cost, eventsAreCopiedForASink) {
  auto event = makeEvent("event");
  ASSERT_TRUE(zk::platform::addEventSink("sink", std::make_shared<KeepingSink>()));
  EXPECT_GT(allocationsOf([&] { NS_QUORCORBA::PushEvent(event); }), 0);
  zk::platform::removeEventSink("sink");
}

TEST(Cost, switchedOffTracesAllocateNothing) {
  const std::string text(5000, 'x');
  CapturedTrace trace;
  const auto traceLong = [&] { NS_CORBA::TaDebugWithPara(3, "%s", text.c_str()); };
  EXPECT_GT(allocationsOf(traceLong), 0);
  zk::platform::setTraceLevel(2);
  EXPECT_EQ(allocationsOf(traceLong), 0);
}

}  // namespace
}  // namespace zk::test
