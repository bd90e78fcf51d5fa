// What leaves the senders when the platform throws, and what does not.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "tests/notify/properties.h"
#include "tests/support/journal.h"
#include "zk_quornex/notify/notification.h"

namespace zk::test {
namespace {

using NS_QUORCORBA::EnFileTransfStatus;
using NS_QUORCORBA::TANotification;
using NS_QUORCORBA::TEName;
using testing::ElementsAre;

class SendFailure : public testing::Test {
 protected:
  void sendObject() {
    TANotification::SendNotification("NT_STATE_CHANGE", notifications::OT_EMS,
                                     makeName({{"EMS", "Quor/1"}}), false,
                                     textAttributes({{"state", "up"}}), CORBA::Any(), nullptr);
  }

  void sendFileTransfer() {
    TANotification::SendNotification("NT_FILE", static_cast<EnFileTransfStatus>(2), 7, "/var/a");
  }

  Journal journal;
  JournalPusher pusher{journal};
};

TEST_F(SendFailure, ofTheHeaderFillerPushesNothing) {
  pusher.onHeader = [] { throw CORBA::NO_MEMORY(); };
  EXPECT_THROW(sendObject(), CORBA::NO_MEMORY);
  EXPECT_THROW(sendFileTransfer(), CORBA::NO_MEMORY);
  EXPECT_THAT(journal, ElementsAre("header NT_STATE_CHANGE", "header NT_FILE"));
}

TEST_F(SendFailure, ofThePusherReachesTheCallerAfterOneAttempt) {
  pusher.onPush = [] { throw std::runtime_error("no supplier"); };
  EXPECT_THROW(sendObject(), std::runtime_error);
  EXPECT_THROW(sendFileTransfer(), std::runtime_error);
  EXPECT_THAT(journal, ElementsAre("header NT_STATE_CHANGE", "push", "header NT_FILE", "push"));
}

TEST_F(SendFailure, ofThePusherPassesThroughTheEntries) {
  pusher.onPush = [] { throw std::runtime_error("no supplier"); };
  TEName name;
  EXPECT_THROW(TANotification::OnObjectDeleted(&name, false), std::runtime_error);
  EXPECT_EQ(pusher.pushed.size(), 1U);
}

class BrokenClock : public Installed<zk::platform::Clock> {
 public:
  std::chrono::system_clock::time_point now() override { throw CORBA::INTERNAL(); }
};

TEST_F(SendFailure, ofTheClockPushesNothing) {
  BrokenClock clock;
  EXPECT_THROW(sendObject(), CORBA::INTERNAL);
  EXPECT_THAT(journal, ElementsAre("header NT_STATE_CHANGE"));
}

TEST_F(SendFailure, leavesTheNextEventWhole) {
  pusher.onHeader = [] { throw CORBA::NO_MEMORY(); };
  EXPECT_THROW(sendObject(), CORBA::NO_MEMORY);
  pusher.onHeader = [] {};
  sendObject();
  ASSERT_EQ(pusher.pushed.size(), 1U);
  EXPECT_EQ(properties(pusher.pushed[0]).size(), 7U);
}

}  // namespace
}  // namespace zk::test
