#include <gtest/gtest.h>

#include "tests/platform/sinkdoubles.h"
#include "tests/support/doubles.h"
#include "zk_quornex/platform/default/eventsinks.h"
#include "zk_quornex/platform/events.h"

namespace zk::test {
namespace {

class Headers : public Installed<zk::platform::EventPusher> {
 public:
  void fillFixedHeader(const std::string& type, CosNotification::StructuredEvent& event) override {
    event.header.fixed_header.event_name = CORBA::string_dup(("own " + type).c_str());
  }
  void push(CosNotification::StructuredEvent&) override { ++pushed; }

  int pushed = 0;
};

TEST(EventPusher, writesTheFixedHeader) {
  auto event = makeEvent("left over");
  NS_CORBA::fillFixedHeader("NT_OBJECT_CREATION", event);
  const auto& header = event.header.fixed_header;
  EXPECT_STREQ(header.event_type.domain_name.in(), "tmf_mtnm");
  EXPECT_STREQ(header.event_type.type_name.in(), "NT_OBJECT_CREATION");
  EXPECT_STREQ(header.event_name.in(), "");
}

TEST(EventPusher, forwardsToTheInstalledOne) {
  Headers installed;
  auto event = makeEvent("");
  NS_CORBA::fillFixedHeader("NT_STATE_CHANGE", event);
  NS_QUORCORBA::PushEvent(event);
  EXPECT_STREQ(event.header.fixed_header.event_name.in(), "own NT_STATE_CHANGE");
  EXPECT_EQ(installed.pushed, 1);
}

TEST(EventPusher, anInstalledOneWritesTheSameHeaderUnlessItSaysOtherwise) {
  CapturedEvents installed;
  auto event = makeEvent("left over");
  NS_CORBA::fillFixedHeader("NT_OBJECT_DELETION", event);
  EXPECT_STREQ(event.header.fixed_header.event_type.domain_name.in(), "tmf_mtnm");
  EXPECT_STREQ(event.header.fixed_header.event_name.in(), "");
}

TEST(EventPusher, leavesTheEventToTheCaller) {
  const auto sink = std::make_shared<KeepingSink>();
  ASSERT_TRUE(zk::platform::addEventSink("sink", sink));
  auto event = makeEvent("pushed");
  NS_QUORCORBA::PushEvent(event);
  event.header.fixed_header.event_name = CORBA::string_dup("changed later");
  zk::platform::removeEventSink("sink");
  ASSERT_EQ(sink->names(), std::vector<std::string>{"pushed"});
  CORBA::Long body = 0;
  EXPECT_TRUE(sink->events()[0]->remainder_of_body >>= body);
  EXPECT_EQ(body, 7);
}

TEST(EventPusher, givesAllSinksOneCopy) {
  const auto one = std::make_shared<KeepingSink>();
  const auto other = std::make_shared<KeepingSink>();
  ASSERT_TRUE(zk::platform::addEventSink("one", one));
  ASSERT_TRUE(zk::platform::addEventSink("other", other));
  auto event = makeEvent("shared");
  NS_QUORCORBA::PushEvent(event);
  zk::platform::removeEventSink("one");
  zk::platform::removeEventSink("other");
  ASSERT_EQ(one->events().size(), 1u);
  EXPECT_EQ(one->events(), other->events());
}

}  // namespace
}  // namespace zk::test
