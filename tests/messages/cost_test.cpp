// What a push costs the pushing thread: no copy of the event, and one allocation
// at most.

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

#include "tests/messages/support.h"

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

using NS_QUORCORBA::NXMessageHandle;

constexpr long CLIENTS = 3;

class PushCost : public testing::Test {
 protected:
  PushCost() {
    for (long client = 0; client < CLIENTS; ++client) {
      handle.subscribeMsg(client, nullptr, nullptr);
      handle.setReportStatus(client, true);
    }
  }

  // On this thread, while the event is pushed once to every client.
  long allocationsOfPush() {
    const long before = allocations;
    handle.pushMessage(event.get(), nullptr);
    return allocations - before;
  }

  FixedAgentConfig config;
  NXMessageHandle handle;
  const HeldEvent event = makeEvent("event");
};

// A copy would take more: the event has four texts and a property.
TEST_F(PushCost, isOneBlockAClientAtMost) {
  handle.pushMessage(event.get(), nullptr);  // looks the validity service up
  for (int push = 0; push < 50; ++push) {
    EXPECT_LE(allocationsOfPush(), CLIENTS) << push;
  }
}

TEST_F(PushCost, isNothingOnceBlocksHaveComeBack) {
  for (int push = 0; push < 50; ++push) {
    handle.pushMessage(event.get(), nullptr);
    ASSERT_TRUE(eventuallyFree(event));
    EXPECT_EQ(allocationsOfPush(), 0) << push;
    ASSERT_TRUE(eventuallyFree(event));
  }
}

}  // namespace
}  // namespace zk::test
