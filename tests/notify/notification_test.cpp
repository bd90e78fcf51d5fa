// The event that one object notification is built as: properties by position
// with their types, header, body, and the calls made to the platform.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "tests/notify/properties.h"
#include "tests/support/journal.h"
#include "zk_quornex/idl/managers.h"
#include "zk_quornex/notify/notification.h"

namespace zk::test {
namespace {

using NS_QUORCORBA::TANotification;
using testing::ElementsAre;

const char* const AVC = "NT_ATTRIBUTE_VALUE_CHANGE";
const char* const CREATION = "NT_OBJECT_CREATION";

// What SendNotification is called with; each test changes what it is about.
struct Arguments {
  const char* type = AVC;
  notifications::ObjectType_T objectType = notifications::OT_MANAGED_ELEMENT;
  globaldefs::NVSList_T objectName = makeName({{"EMS", "Quor/1"}, {"ManagedElement", "7"}});
  bool edgePointRelated = false;
  notifications::NVList_T attributes;
  CORBA::Any body;
  std::string qualifier = "ManagedElement";
  bool nullQualifier = false;

  void send() {
    TANotification::SendNotification(type, objectType, objectName, edgePointRelated, attributes,
                                     body, nullQualifier ? nullptr : qualifier.data());
  }
};

class Notification : public testing::Test {
 protected:
  CosNotification::StructuredEvent sent() {
    arguments.send();
    EXPECT_EQ(pusher.pushed.size(), 1U);
    return pusher.pushed.at(0);
  }

  Arguments arguments;
  Journal journal;
  JournalClock clock{journal};
  JournalPusher pusher{journal};
};

notifications::NVList_T numberedAttributes(CORBA::ULong count) {
  notifications::NVList_T attributes;
  attributes.length(count);
  for (CORBA::ULong i = 0; i < count; ++i) {
    attributes[i].name = CORBA::string_dup(("name" + std::to_string(i)).c_str());
    attributes[i].value <<= static_cast<CORBA::Long>(i);
  }
  return attributes;
}

std::string numberedText(CORBA::ULong count) {
  std::string text;
  for (CORBA::ULong i = 0; i < count; ++i) {
    const std::string number = std::to_string(i);
    text.append(i == 0 ? "name" : "|name").append(number).append("=long:").append(number);
  }
  return "attributeList=NVList_T:[" + text + "]";
}

TEST_F(Notification, carriesEightPropertiesInOrder) {
  arguments.attributes = textAttributes({{"owner", "me"}});
  arguments.edgePointRelated = true;
  EXPECT_THAT(
      properties(sent()),
      ElementsAre("notificationId=string:0", "objectName=NVSList_T:EMS=Quor/1|ManagedElement=7",
                  "objectType=ObjectType_T:OT_MANAGED_ELEMENT",
                  "objectTypeQualifier=string:ManagedElement", "emsTime=string:20121120094200.0Z",
                  "neTime=string:20121120094201.0Z", "edgePointRelated=boolean:true",
                  "attributeList=NVList_T:[owner=string:me]"));
}

TEST_F(Notification, carriesSixPropertiesWithoutQualifierAndAttributes) {
  arguments.nullQualifier = true;
  EXPECT_THAT(
      properties(sent()),
      ElementsAre("notificationId=string:0", "objectName=NVSList_T:EMS=Quor/1|ManagedElement=7",
                  "objectType=ObjectType_T:OT_MANAGED_ELEMENT", "emsTime=string:20121120094200.0Z",
                  "neTime=string:20121120094201.0Z", "edgePointRelated=boolean:false"));
}

TEST_F(Notification, putsAttributesSeventhWithoutQualifier) {
  arguments.nullQualifier = true;
  arguments.attributes = textAttributes({{"owner", "me"}});
  const auto lines = properties(sent());
  ASSERT_EQ(lines.size(), 7U);
  EXPECT_EQ(lines[3], "emsTime=string:20121120094200.0Z");
  EXPECT_EQ(lines[6], "attributeList=NVList_T:[owner=string:me]");
}

TEST_F(Notification, keepsAnEmptyQualifier) {
  arguments.qualifier = "";
  const auto lines = properties(sent());
  ASSERT_EQ(lines.size(), 7U);
  EXPECT_EQ(lines[3], "objectTypeQualifier=string:");
  EXPECT_EQ(lines[6], "edgePointRelated=boolean:false");
}

TEST_F(Notification, carriesEveryAttributeOfAListOfOne) {
  arguments.attributes = numberedAttributes(1);
  EXPECT_EQ(properties(sent()).at(7), numberedText(1));
}

TEST_F(Notification, carriesEveryAttributeOfAListOfAThousand) {
  arguments.attributes = numberedAttributes(1000);
  const auto lines = properties(sent());
  ASSERT_EQ(lines.size(), 8U);
  EXPECT_EQ(lines[7], numberedText(1000));
}

TEST_F(Notification, writesEveryObjectTypeAsItIs) {
  for (int type = 0; type <= 12; ++type) {
    arguments.objectType = static_cast<notifications::ObjectType_T>(type);
    arguments.send();
    notifications::ObjectType_T received = notifications::OT_EMS;
    ASSERT_TRUE(pusher.last().filterable_data[2].value >>= received);
    EXPECT_EQ(static_cast<int>(received), type);
  }
}

// Receivers that check types compare these ids.
std::string typeId(const CosNotification::Property& property) {
  const CORBA::TypeCode_var type = property.value.type();
  return type->id();
}

TEST_F(Notification, givesStructuredPropertiesTheirPublishedTypes) {
  arguments.attributes = textAttributes({{"owner", "me"}});
  const auto event = sent();
  EXPECT_EQ(typeId(event.filterable_data[1]), "IDL:mtnm.tmforum.org/globaldefs/NVSList_T:1.0");
  EXPECT_EQ(typeId(event.filterable_data[2]),
            "IDL:mtnm.tmforum.org/notifications/ObjectType_T:1.0");
  EXPECT_EQ(typeId(event.filterable_data[7]), "IDL:mtnm.tmforum.org/notifications/NVList_T:1.0");
}

TEST_F(Notification, sendsNamesOfAnyLength) {
  arguments.objectName.length(0);
  EXPECT_EQ(properties(sent()).at(1), "objectName=NVSList_T:");
  arguments.objectName = makeName({{"EMS", ""}, {"A", "b"}, {"", "c"}, {"D", "/e=1/f=\xc3\xa9"}});
  arguments.send();
  EXPECT_EQ(properties(pusher.last()).at(1), "objectName=NVSList_T:EMS=|A=b|=c|D=/e=1/f=\xc3\xa9");
}

TEST_F(Notification, numbersNothing) {
  for (int i = 0; i < 50; ++i) {
    arguments.send();
  }
  ASSERT_EQ(pusher.pushed.size(), 50U);
  for (const auto& event : pusher.pushed) {
    EXPECT_EQ(properties(event).at(0), "notificationId=string:0");
  }
}

TEST_F(Notification, callsHeaderThenClockTwiceThenPusherOnce) {
  arguments.send();
  EXPECT_THAT(journal, ElementsAre("header NT_ATTRIBUTE_VALUE_CHANGE", "time", "time", "push"));
}

TEST_F(Notification, startsWithAnEmptyEvent) {
  arguments.type = CREATION;
  arguments.body <<= "created";
  arguments.attributes = textAttributes({{"owner", "me"}});
  arguments.send();
  ASSERT_EQ(pusher.atHeader.size(), 1U);
  EXPECT_EQ(dumpEvent(pusher.atHeader[0]), EMPTY_EVENT);
}

TEST_F(Notification, keepsTheHeaderThatThePlatformWrote) {
  const auto event = sent();
  EXPECT_EQ(dumpEvent(event).substr(0, 25), "header=domain|type|event\n");
  EXPECT_EQ(event.header.variable_header.length(), 0U);
}

TEST_F(Notification, passesAnyTypeTextToTheHeader) {
  arguments.type = "";
  arguments.send();
  arguments.type = "NT_OF_THE_AGENT'S_OWN";
  arguments.send();
  EXPECT_EQ(journal.at(0), "header ");
  EXPECT_EQ(journal.at(4), "header NT_OF_THE_AGENT'S_OWN");
}

TEST_F(Notification, carriesTheCreatedObjectExceptForConnectionTerminationPoints) {
  arguments.type = CREATION;
  arguments.body <<= "created";
  for (int type = 0; type <= 12; ++type) {
    arguments.objectType = static_cast<notifications::ObjectType_T>(type);
    arguments.send();
    EXPECT_EQ(body(pusher.last()), type == 6 ? "empty" : "string:created")
        << "object type " << type;
  }
}

TEST_F(Notification, copiesAStructuredBodyWhole) {
  managedElement::ManagedElement_T element;
  element.name = arguments.objectName;
  element.userLabel = CORBA::string_dup("north");
  element.communicationState = managedElement::CS_UNAVAILABLE;
  element.emsInSyncState = true;
  arguments.type = CREATION;
  arguments.body <<= element;
  const auto event = sent();
  const managedElement::ManagedElement_T* received = nullptr;
  ASSERT_TRUE(event.remainder_of_body >>= received);
  EXPECT_EQ(dumpName(received->name), "EMS=Quor/1|ManagedElement=7");
  EXPECT_STREQ(received->userLabel.in(), "north");
  EXPECT_EQ(received->communicationState, managedElement::CS_UNAVAILABLE);
}

TEST_F(Notification, carriesNoBodyUnderAnyOtherType) {
  arguments.body <<= "created";
  for (const char* type :
       {"NT_OBJECT_CREATION ", "NT_OBJECT_CREATION2", " NT_OBJECT_CREATION", "NT_OBJECT_CREATIO",
        "nt_object_creation", "NT_OBJECT_DELETION", AVC, "NT_STATE_CHANGE", ""}) {
    arguments.type = type;
    arguments.send();
    EXPECT_EQ(body(pusher.last()), "empty") << type;
  }
}

TEST_F(Notification, comparesTheTypeByItsTextNotItsAddress) {
  const std::string type = std::string("NT_OBJECT_") + "CREATION";
  arguments.type = type.c_str();
  arguments.body <<= "created";
  EXPECT_EQ(body(sent()), "string:created");
}

TEST_F(Notification, onlyReadsItsArguments) {
  arguments.type = CREATION;
  arguments.body <<= "created";
  arguments.attributes = textAttributes({{"owner", "me"}});
  pusher.onPush = [this] { pusher.last().filterable_data.length(0); };
  arguments.send();
  EXPECT_EQ(dumpName(arguments.objectName), "EMS=Quor/1|ManagedElement=7");
  EXPECT_EQ(dumpAny(arguments.body), "string:created");
  ASSERT_EQ(arguments.attributes.length(), 1U);
  EXPECT_EQ(dumpAny(arguments.attributes[0].value), "string:me");
  EXPECT_EQ(arguments.qualifier, "ManagedElement");
}

// Each thread sends its own label; no event may mix two of them.
void sendLabels(int label, int count) {
  Arguments arguments;
  arguments.qualifier = std::to_string(label);
  arguments.attributes = textAttributes({{"userLabel", arguments.qualifier.c_str()}});
  for (int i = 0; i < count; ++i) {
    arguments.send();
  }
}

TEST(NotificationThreads, buildTheirOwnEvents) {
  CapturedEvents captured;
  std::vector<std::thread> threads;
  threads.reserve(4);
  for (int label = 0; label < 4; ++label) {
    threads.emplace_back(sendLabels, label, 50);
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  std::vector<int> counts(4);
  for (const auto& event : captured.events()) {
    const auto lines = properties(event);
    ASSERT_EQ(lines.size(), 8U);
    const std::string label = lines[3].substr(lines[3].find(':') + 1);
    EXPECT_EQ(lines[7], "attributeList=NVList_T:[userLabel=string:" + label + "]");
    ++counts.at(std::stoul(label));
  }
  EXPECT_THAT(counts, ElementsAre(50, 50, 50, 50));
}

}  // namespace
}  // namespace zk::test
