// What costs nothing when it is not used: events without sinks, traces that are
// switched off.

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

#include "platform/default/eventsinks.h"
#include "platform/events.h"
#include "tests/platform/sinkdoubles.h"
#include "tests/support/doubles.h"

namespace {
thread_local long allocations = 0;
}  // namespace

void* operator new(std::size_t size) {
  ++allocations;
  if (void* memory = std::malloc(size != 0 ? size : 1)) return memory;
  throw std::bad_alloc();
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  ++allocations;
  return std::malloc(size != 0 ? size : 1);
}

void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace zk::test {
namespace {

template <class Action>
long allocationsOf(Action action) {
  const long before = allocations;
  action();
  return allocations - before;
}

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
