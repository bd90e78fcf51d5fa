// What a push costs the pushing thread: no copy of the event, and one allocation
// a client.

#include <gtest/gtest.h>

#include "tests/messages/support.h"
#include "tests/support/allocations.h"

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
    return allocationsOf([this] { handle.pushMessage(event.get(), nullptr); });
  }

  FixedAgentConfig config;
  NXMessageHandle handle;
  const HeldEvent event = makeEvent("event");
};

// A copy would take more: the event has four texts and a property.
TEST_F(PushCost, isOneBlockAClient) {
  handle.pushMessage(event.get(), nullptr);  // looks the validity service up
  for (int push = 0; push < 50; ++push) {
    EXPECT_EQ(allocationsOfPush(), CLIENTS) << push;
  }
}

}  // namespace
}  // namespace zk::test
