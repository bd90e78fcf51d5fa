#include "agent/channel/qos.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/agent/channel/support/clients.h"
#include "tests/agent/channel/support/qosvalues.h"

namespace {

using namespace zk::test;

struct Case {
  const char* name;
  CORBA::Any value;
  const char* refusal;
};

std::ostream& operator<<(std::ostream& out, const Case& one) {
  return out << one.name << "=" << dumpValue(one.value);
}

std::vector<Case> cases() {
  return {
      {"MaximumBatchSize", toAny(CORBA::Long{1}), ""},
      {"MaximumBatchSize", toAny(CORBA::Long{500}), ""},
      {"MaximumBatchSize", toAny(CORBA::Long{0}), "BAD_VALUE MaximumBatchSize long:1..long:500"},
      {"MaximumBatchSize", toAny(CORBA::Long{-1}), "BAD_VALUE MaximumBatchSize long:1..long:500"},
      {"MaximumBatchSize", toAny(CORBA::Long{501}),
       "UNSUPPORTED_VALUE MaximumBatchSize long:1..long:500"},
      {"MaximumBatchSize", toAny(CORBA::Short{5}), "BAD_TYPE MaximumBatchSize long:1..long:500"},
      {"PacingInterval", toAny(CORBA::ULongLong{0}), ""},
      {"PacingInterval", toAny(CORBA::ULongLong{10000000}), ""},
      {"PacingInterval", toAny(CORBA::ULongLong{600000001}),
       "UNSUPPORTED_VALUE PacingInterval ulonglong:0..ulonglong:600000000"},
      {"PacingInterval", toAny(CORBA::Long{5}),
       "BAD_TYPE PacingInterval ulonglong:0..ulonglong:600000000"},
      {"MaxEventsPerConsumer", toAny(CORBA::Long{0}), ""},
      {"MaxEventsPerConsumer", toAny(CORBA::Long{10000}), ""},
      {"MaxEventsPerConsumer", toAny(CORBA::Long{10001}),
       "UNSUPPORTED_VALUE MaxEventsPerConsumer long:0..long:10000"},
      {"MaxEventsPerConsumer", toAny(CORBA::Long{-1}),
       "BAD_VALUE MaxEventsPerConsumer long:0..long:10000"},
      {"EventReliability", toAny(CosNotification::BestEffort), ""},
      {"EventReliability", toAny(CosNotification::Persistent),
       "UNSUPPORTED_VALUE EventReliability short:0..short:0"},
      {"ConnectionReliability", toAny(CosNotification::BestEffort), ""},
      {"ConnectionReliability", toAny(CosNotification::Persistent),
       "UNSUPPORTED_VALUE ConnectionReliability short:0..short:0"},
      {"OrderPolicy", toAny(CosNotification::FifoOrder), ""},
      {"OrderPolicy", toAny(CosNotification::PriorityOrder),
       "UNSUPPORTED_VALUE OrderPolicy short:1..short:1"},
      {"OrderPolicy", toAny("fifo"), "BAD_TYPE OrderPolicy short:1..short:1"},
      {"DiscardPolicy", toAny(CosNotification::FifoOrder), ""},
      {"DiscardPolicy", toAny(CosNotification::LifoOrder),
       "UNSUPPORTED_VALUE DiscardPolicy short:1..short:1"},
      {"StartTimeSupported", flag(false), ""},
      {"StartTimeSupported", flag(true),
       "UNSUPPORTED_VALUE StartTimeSupported boolean:false..boolean:false"},
      {"StopTimeSupported", flag(false), ""},
      {"StopTimeSupported", toAny(CORBA::Long{0}),
       "BAD_TYPE StopTimeSupported boolean:false..boolean:false"},
      {"Priority", toAny(CORBA::Short{0}), "UNSUPPORTED_PROPERTY Priority empty..empty"},
      {"Timeout", toAny(CORBA::ULongLong{1}), "UNSUPPORTED_PROPERTY Timeout empty..empty"},
      {"StartTime", toAny(CORBA::Long{1}), "UNSUPPORTED_PROPERTY StartTime empty..empty"},
      {"StopTime", toAny(CORBA::Long{1}), "UNSUPPORTED_PROPERTY StopTime empty..empty"},
      {"NoSuchThing", toAny(CORBA::Long{1}), "BAD_PROPERTY NoSuchThing empty..empty"},
      {"", toAny(CORBA::Long{1}), "BAD_PROPERTY  empty..empty"},
  };
}

class QosTest : public testing::Test {
 protected:
  std::string values(CosNotification::QoSProperties* list) {
    const CosNotification::QoSProperties_var owned = list;
    return dumpProperties(owned.in());
  }

  LocalChannel local;
};

TEST_F(QosTest, acceptsAndRefusesAtEveryLevelAlike) {
  StructuredPush structured(local);
  SequencePull sequence(local);
  for (const Case& one : cases()) {
    const auto wanted = property(one.name, one.value);
    EXPECT_EQ(refusalOfQos(local.channel.in(), wanted), one.refusal) << one;
    EXPECT_EQ(refusalOfQos(local.admin.in(), wanted), one.refusal) << one;
    EXPECT_EQ(refusalOfQos(structured.proxy.in(), wanted), one.refusal) << one;
    EXPECT_EQ(refusalOfQos(sequence.proxy.in(), wanted), one.refusal) << one;
  }
}

TEST_F(QosTest, isValidatedAsItIsSetWithoutBeingSet) {
  const std::string before = values(local.admin->get_qos());
  for (const Case& one : cases()) {
    std::string refusal;
    try {
      CosNotification::NamedPropertyRangeSeq_var ranges;
      local.admin->validate_qos(property(one.name, one.value), ranges.out());
    } catch (const CosNotification::UnsupportedQoS& refused) {
      refusal = dumpErrors(refused.qos_err);
    }
    EXPECT_EQ(refusal, one.refusal) << one;
  }
  EXPECT_EQ(values(local.admin->get_qos()), before);
}

TEST_F(QosTest, tellsTheRangesOfWhatWasNotAskedFor) {
  CosNotification::NamedPropertyRangeSeq_var ranges;
  local.admin->validate_qos(property("PacingInterval", toAny(CORBA::ULongLong{1})), ranges.out());
  ASSERT_EQ(ranges->length(), 2U);
  EXPECT_STREQ(ranges[0U].name, "MaximumBatchSize");
  EXPECT_EQ(dumpValue(ranges[0U].range.low_val), "long:1");
  EXPECT_EQ(dumpValue(ranges[0U].range.high_val), "long:500");
  EXPECT_STREQ(ranges[1U].name, "MaxEventsPerConsumer");
}

TEST_F(QosTest, isToldInFull) {
  EXPECT_EQ(values(local.channel->get_qos()),
            "EventReliability=short:0|ConnectionReliability=short:0|OrderPolicy=short:1|"
            "DiscardPolicy=short:1|StartTimeSupported=boolean:false|"
            "StopTimeSupported=boolean:false|MaximumBatchSize=long:100|"
            "PacingInterval=ulonglong:0|MaxEventsPerConsumer=long:0");
}

TEST_F(QosTest, isTakenWholeOrNotAtAll) {
  auto wanted = property("MaximumBatchSize", toAny(CORBA::Long{7}));
  wanted.length(3);
  wanted[1].name = CORBA::string_dup("Priority");
  wanted[1].value = toAny(CORBA::Short{1});
  wanted[2].name = CORBA::string_dup("OrderPolicy");
  wanted[2].value = toAny(CosNotification::AnyOrder);
  const std::string before = values(local.admin->get_qos());
  EXPECT_EQ(refusalOfQos(local.admin.in(), wanted),
            "UNSUPPORTED_PROPERTY Priority empty..empty\n"
            "UNSUPPORTED_VALUE OrderPolicy short:1..short:1");
  EXPECT_EQ(values(local.admin->get_qos()), before);
}

TEST_F(QosTest, isInheritedByWhatIsMadeLater) {
  StructuredPull before(local);
  EXPECT_EQ(refusalOfQos(local.channel.in(), property("MaximumBatchSize", toAny(CORBA::Long{7}))),
            "");
  CosNotifyChannelAdmin::AdminID id = 0;
  const CosNotifyChannelAdmin::ConsumerAdmin_var admin =
      local.channel->new_for_consumers(CosNotifyChannelAdmin::AND_OP, id);
  EXPECT_EQ(refusalOfQos(admin.in(), property("PacingInterval", toAny(CORBA::ULongLong{8}))), "");
  StructuredPull after(local, admin.in());
  const std::string inherited = "MaximumBatchSize=long:7|PacingInterval=ulonglong:8";
  EXPECT_NE(values(after.proxy->get_qos()).find(inherited), std::string::npos);
  EXPECT_EQ(values(before.proxy->get_qos()).find("long:7"), std::string::npos);
}

TEST_F(QosTest, ofAnEventIsNotOffered) {
  StructuredPull client(local);
  CosNotification::NamedPropertyRangeSeq_var ranges;
  client.proxy->validate_event_qos(CosNotification::QoSProperties(), ranges.out());
  EXPECT_EQ(ranges->length(), 0U);
  try {
    client.proxy->validate_event_qos(property("Priority", toAny(CORBA::Short{1})), ranges.out());
    ADD_FAILURE();
  } catch (const CosNotification::UnsupportedQoS& refused) {
    EXPECT_EQ(dumpErrors(refused.qos_err), "UNSUPPORTED_PROPERTY Priority empty..empty");
  }
}

TEST_F(QosTest, ofTheConfigurationIsTheMost) {
  FixedAgentConfig config;
  config.cachesize = 20;
  zk::agent::ChannelSettings settings = quickSettings();
  local.service.stop();
  LocalChannel small(settings);
  EXPECT_EQ(
      refusalOfQos(small.admin.in(), property("MaxEventsPerConsumer", toAny(CORBA::Long{21}))),
      "UNSUPPORTED_VALUE MaxEventsPerConsumer long:0..long:20");
  StructuredPull idle(small);
  StructuredPush other(small);
  idle.connect();
  other.connect();
  for (int i = 1; i <= 40; ++i) {
    send(makeAlarm(std::to_string(i)));
    ASSERT_TRUE(receives(other, numbers(1, i)));
  }
  EXPECT_EQ(idle.rest(), numbers(1, 20));
}

std::string refusalOfAdmin(LocalChannel& local, const CosNotification::AdminProperties& wanted) {
  try {
    local.channel->set_admin(wanted);
    return "";
  } catch (const CosNotification::UnsupportedAdmin& refused) {
    return dumpErrors(refused.admin_err);
  }
}

TEST_F(QosTest, ofTheAdministrationIsFixed) {
  const CosNotification::AdminProperties_var now = local.channel->get_admin();
  EXPECT_EQ(dumpProperties(now.in()),
            "MaxQueueLength=long:0|MaxConsumers=long:16|MaxSuppliers=long:1|"
            "RejectNewEvents=boolean:true");
  EXPECT_EQ(refusalOfAdmin(local, now.in()), "");
  EXPECT_EQ(refusalOfAdmin(local, property("RejectNewEvents", flag(false))),
            "UNSUPPORTED_VALUE RejectNewEvents boolean:true..boolean:true");
  EXPECT_EQ(refusalOfAdmin(local, property("MaxConsumers", toAny(CORBA::Long{17}))),
            "UNSUPPORTED_VALUE MaxConsumers long:16..long:16");
  EXPECT_EQ(refusalOfAdmin(local, property("MaxQueueLength", toAny(CORBA::Short{0}))),
            "BAD_TYPE MaxQueueLength long:0..long:0");
  EXPECT_EQ(refusalOfAdmin(local, property("NoSuchThing", toAny(CORBA::Long{0}))),
            "BAD_PROPERTY NoSuchThing empty..empty");
}

}  // namespace
