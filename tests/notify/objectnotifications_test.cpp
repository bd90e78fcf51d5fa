// The four entries that report changes of objects: what each sends for which
// name, and what they drop without a word.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/notify/properties.h"
#include "tests/support/journal.h"
#include "tests/support/objectevent.h"
#include "zk_quornex/names/aidname.h"
#include "zk_quornex/names/mapname.h"
#include "zk_quornex/notify/notification.h"

namespace zk::test {
namespace {

using namespace NS_QUORCORBA;
using testing::ElementsAre;
using testing::IsEmpty;

class ObjectNotifications : public testing::Test {
 protected:
  ObjectNotifications() {
    element.meId_ = 7;
    object <<= "created";
  }

  void sendAllFour(TEName* name) {
    TANotification::OnObjectCreated(name, true, object);
    TANotification::OnObjectDeleted(name, true);
    TANotification::OnObjectAVC(name, attributes, true);
    TANotification::OnObjectStateChanged(name, attributes, true);
  }

  void expectDropped(TEName* name) {
    CapturedTrace trace;
    journal.clear();
    sendAllFour(name);
    EXPECT_THAT(journal, IsEmpty());
    EXPECT_THAT(trace.texts(), IsEmpty());
  }

  // The objectName, objectType and objectTypeQualifier of a deletion.
  std::string reported(TEName& name) {
    TANotification::OnObjectDeleted(&name, false);
    if (pusher.pushed.empty()) {
      return "nothing";
    }
    const auto lines = properties(pusher.last());
    pusher.pushed.clear();
    return lines.at(1) + "; " + lines.at(2) + "; " + lines.at(3);
  }

  FixedEmsConfig config;
  Journal journal;
  JournalClock clock{journal};
  JournalPusher pusher{journal};
  TEMEName element;
  CORBA::Any object;
  notifications::NVList_T attributes = textAttributes({{"owner", "me"}, {"userLabel", "north"}});
};

TEST_F(ObjectNotifications, creationCarriesTheObjectAndNoAttributes) {
  TANotification::OnObjectCreated(&element, true, object);
  EXPECT_THAT(journal, ElementsAre("header NT_OBJECT_CREATION", "time", "time", "push"));
  EXPECT_EQ(dumpEvent(pusher.pushed.at(0)), objectEventText({}, true, "string:created"));
}

TEST_F(ObjectNotifications, deletionCarriesNeitherBodyNorAttributes) {
  TANotification::OnObjectDeleted(&element, false);
  EXPECT_THAT(journal, ElementsAre("header NT_OBJECT_DELETION", "time", "time", "push"));
  EXPECT_EQ(dumpEvent(pusher.pushed.at(0)), objectEventText({}, false, "empty"));
}

TEST_F(ObjectNotifications, attributeChangeCarriesTheAttributes) {
  TANotification::OnObjectAVC(&element, attributes, true);
  EXPECT_THAT(journal, ElementsAre("header NT_ATTRIBUTE_VALUE_CHANGE", "time", "time", "push"));
  EXPECT_EQ(dumpEvent(pusher.pushed.at(0)),
            objectEventText({}, true, "empty", "owner=string:me|userLabel=string:north"));
}

TEST_F(ObjectNotifications, stateChangeCarriesTheAttributes) {
  TANotification::OnObjectStateChanged(&element, attributes, false);
  EXPECT_THAT(journal, ElementsAre("header NT_STATE_CHANGE", "time", "time", "push"));
  EXPECT_EQ(dumpEvent(pusher.pushed.at(0)),
            objectEventText({}, false, "empty", "owner=string:me|userLabel=string:north"));
}

TEST_F(ObjectNotifications, leaveAnEmptyAttributeListOut) {
  attributes.length(0);
  TANotification::OnObjectAVC(&element, attributes, false);
  TANotification::OnObjectStateChanged(&element, attributes, true);
  ASSERT_EQ(pusher.pushed.size(), 2U);
  EXPECT_EQ(properties(pusher.pushed[0]).back(), "edgePointRelated=boolean:false");
  EXPECT_EQ(properties(pusher.pushed[1]).back(), "edgePointRelated=boolean:true");
}

TEST_F(ObjectNotifications, passTheEdgePointFlagThrough) {
  for (const bool edge : {false, true}) {
    pusher.pushed.clear();
    TANotification::OnObjectCreated(&element, edge, object);
    TANotification::OnObjectDeleted(&element, edge);
    TANotification::OnObjectAVC(&element, attributes, edge);
    TANotification::OnObjectStateChanged(&element, attributes, edge);
    ASSERT_EQ(pusher.pushed.size(), 4U);
    for (const auto& event : pusher.pushed) {
      EXPECT_EQ(properties(event).at(6),
                edge ? "edgePointRelated=boolean:true" : "edgePointRelated=boolean:false");
    }
  }
}

TEST_F(ObjectNotifications, writeTheNamesOfTheContainmentTree) {
  TEName ems;
  TESubnetworkName subnetwork;
  TETopoLinkName link;
  link.topoLinkId_ = "12";
  EXPECT_EQ(reported(ems),
            "objectName=NVSList_T:EMS=Quor/1; "
            "objectType=ObjectType_T:OT_EMS; objectTypeQualifier=string:EMS");
  EXPECT_EQ(reported(subnetwork),
            "objectName=NVSList_T:EMS=Quor/1|MultiLayerSubnetwork=1; "
            "objectType=ObjectType_T:OT_MULTILAYER_SUBNETWORK; "
            "objectTypeQualifier=string:MultiLayerSubnetwork");
  EXPECT_EQ(reported(link),
            "objectName=NVSList_T:EMS=Quor/1|TopologicalLink=12; "
            "objectType=ObjectType_T:OT_TOPOLOGICAL_LINK; "
            "objectTypeQualifier=string:TopologicalLink");
}

TEST_F(ObjectNotifications, writeTheNamesOfTheMap) {
  CANodeName node;
  node.id_ = "17";
  CASubMapName submap;
  submap.id_ = "/";
  submap.parentId_ = "0";
  CAPhyLinkName physicalLink;
  physicalLink.id_ = "42";
  EXPECT_EQ(reported(node),
            "objectName=NVSList_T:EMS=Quor/1|Node=/parentid=AllSubMap/id=17; "
            "objectType=ObjectType_T:OT_AID; objectTypeQualifier=string:NODE");
  EXPECT_EQ(reported(submap),
            "objectName=NVSList_T:EMS=Quor/1|SubMap=/parentid=0/id=/; "
            "objectType=ObjectType_T:OT_AID; objectTypeQualifier=string:SUBMAP");
  EXPECT_EQ(reported(physicalLink),
            "objectName=NVSList_T:EMS=Quor/1|PhysicalLink=42; "
            "objectType=ObjectType_T:OT_AID; "
            "objectTypeQualifier=string:PHYSICALLINK");
}

TEST_F(ObjectNotifications, writeAidAndDnNames) {
  CAAIDName name;
  name.ids_ = {7, 3, 15};
  EXPECT_EQ(reported(name),
            "objectName=NVSList_T:EMS=Quor/1|ManagedElement=7|AID=7/3/15; "
            "objectType=ObjectType_T:OT_AID; objectTypeQualifier=string:AID");
  name.type_ = 20;
  EXPECT_EQ(reported(name),
            "objectName=NVSList_T:EMS=Quor/1|ManagedElement=7|DN=7/3/15; "
            "objectType=ObjectType_T:OT_AID; objectTypeQualifier=string:DN");
}

TEST_F(ObjectNotifications, announceAConnectionTerminationPointWithoutItsObject) {
  TEName point;
  point.type_ = NAME_CTP;
  TANotification::OnObjectCreated(&point, false, object);
  point.type_ = NAME_PTP;
  TANotification::OnObjectCreated(&point, false, object);
  ASSERT_EQ(pusher.pushed.size(), 2U);
  EXPECT_EQ(body(pusher.pushed[0]), "empty");
  EXPECT_EQ(body(pusher.pushed[1]), "string:created");
}

TEST_F(ObjectNotifications, dropANullName) { expectDropped(nullptr); }

TEST_F(ObjectNotifications, dropADisplayLink) {
  CADispLinkName displayLink;
  displayLink.id_ = "17";
  displayLink.parentId_ = "3";
  expectDropped(&displayLink);
}

TEST_F(ObjectNotifications, dropKindsWithoutObjectType) {
  TEName name;
  for (const int type : {-1, 7, 8, 9, 11, 13, 14, 15, 18, 21}) {
    SCOPED_TRACE(type);
    name.type_ = type;
    expectDropped(&name);
  }
}

TEST_F(ObjectNotifications, dropNamesThatCannotBeWritten) {
  std::vector<std::unique_ptr<TEName>> names;
  names.push_back(std::make_unique<TEMEName>());
  names.push_back(std::make_unique<TETopoLinkName>());
  names.push_back(std::make_unique<CANodeName>());
  names.push_back(std::make_unique<CASubMapName>());
  names.push_back(std::make_unique<CAPhyLinkName>());
  names.push_back(std::make_unique<CAAIDName>());
  for (const auto& name : names) {
    SCOPED_TRACE(name->type_);
    expectDropped(name.get());
  }
  element.meId_ = 100000000000;  // too long to be written
  expectDropped(&element);
}

// A name of the agent's own, with a conversion that answers what the test sets.
class OwnName : public TEName {
 public:
  unsigned long Ems2NmsName(globaldefs::NVSList_T& name) override {
    ++conversions;
    name = makeName({{"EMS", "Quor/1"}, {"Own", "1"}});
    return result;
  }

  int conversions = 0;
  unsigned long result = 0;
};

TEST_F(ObjectNotifications, askTheNameItselfOnce) {
  OwnName name;
  TANotification::OnObjectDeleted(&name, false);
  EXPECT_EQ(name.conversions, 1);
  EXPECT_EQ(properties(pusher.pushed.at(0)).at(1), "objectName=NVSList_T:EMS=Quor/1|Own=1");
}

TEST_F(ObjectNotifications, dropOnAnyConversionCode) {
  OwnName name;
  for (const unsigned long result : {1UL, 0x411800BDUL, 0xFFFFFFFFFFFFFFFFUL, 0x100000000UL}) {
    SCOPED_TRACE(result);
    name.result = result;
    expectDropped(&name);
  }
  EXPECT_EQ(name.conversions, 16);
}

TEST_F(ObjectNotifications, leaveNameObjectAndAttributesAsTheyWere) {
  sendAllFour(&element);
  EXPECT_EQ(pusher.pushed.size(), 4U);
  EXPECT_EQ(element.meId_, 7U);
  EXPECT_EQ(element.type_, 1);
  EXPECT_EQ(element.emsName_, "Quor/1");
  EXPECT_EQ(dumpAny(object), "string:created");
  EXPECT_EQ(attributes.length(), 2U);
}

TEST_F(ObjectNotifications, sharedEntryTakesAnyTypeBodyAndAttributes) {
  TANotification::SendObjectNotification("NT_OWN", &element, true, object, attributes);
  TANotification::SendObjectNotification("NT_OBJECT_CREATION", &element, false, object, attributes);
  TANotification::SendObjectNotification("NT_OWN", nullptr, true, object, attributes);
  ASSERT_EQ(pusher.pushed.size(), 2U);
  EXPECT_EQ(journal.at(0), "header NT_OWN");
  EXPECT_EQ(body(pusher.pushed[0]), "empty");
  EXPECT_EQ(properties(pusher.pushed[1]).size(), 8U);
  EXPECT_EQ(body(pusher.pushed[1]), "string:created");
}

}  // namespace
}  // namespace zk::test
