// Objects that come and go in the embedded EMS.
#include "agent/tmf/names.h"
#include "tests/agent/tmf/network.h"
#include "tests/mo/recordtext.h"
#include "tests/support/objectevent.h"
#include "zk_quornex/names/aidname.h"
#include "zk_quornex/names/mapname.h"
#include "zk_quornex/names/tename.h"

namespace {

using namespace zk::agent;
using zk::test::dumpEvent;
using zk::test::dumpName;
using zk::test::Network;
using zk::test::recordText;
using Texts = std::vector<std::string>;

// An event about an object, whose type, name, object type, qualifier and body
// differ.
std::string objectEvent(const std::string& type, const std::string& name,
                        const std::string& objectType, const std::string& qualifier,
                        const std::string& body) {
  return zk::test::objectEventText(
      {"tmf_mtnm|" + type + "|", "EMS=Quor/1|" + name, objectType, qualifier, "20121120094200.0Z"},
      false, body);
}

std::string creation(const std::string& name, const std::string& objectType,
                     const std::string& qualifier, const std::string& body) {
  return objectEvent("NT_OBJECT_CREATION", name, objectType, qualifier, body);
}

std::string deletion(const std::string& name, const std::string& objectType,
                     const std::string& qualifier) {
  return objectEvent("NT_OBJECT_DELETION", name, objectType, qualifier, "empty");
}

template <class Struct>
const Struct& bodyOf(const CosNotification::StructuredEvent& event) {
  const Struct* body = nullptr;
  if (!(event.remainder_of_body >>= body)) {
    throw std::runtime_error("another body: " + zk::test::dumpAny(event.remainder_of_body));
  }
  return *body;
}

std::string textOf(const topologyMap::MapObject_T& object) {
  return dumpName(object.name) + " '" + object.userLabel.in() + "' '" + object.nativeEMSName.in() +
         "' '" + object.owner.in() + "' " + dumpName(object.additionalInfo);
}

class ObjectNotifications : public Network {
 protected:
  DeviceRecord createDevice() {
    DeviceRecord device;
    device.name = "Gannet-QA8-01";
    device.productName = "Quor QA-8 Access Multiplexer";
    device.version = "3.1.4";
    device.location = "Gannet, room 1";
    EXPECT_EQ(inventory->create(device), Result::DONE);
    return device;
  }

  template <class Record>
  void create(Record& record) {
    ASSERT_EQ(inventory->create(record), Result::DONE);
  }
};

TEST_F(ObjectNotifications, tellADevice) {
  createDevice();
  const auto event = onlyEvent();
  EXPECT_EQ(dumpEvent(event), creation("ManagedElement=5", "OT_MANAGED_ELEMENT", "ManagedElement",
                                       "ManagedElement_T"));
  EXPECT_EQ(recordText(bodyOf<managedElement::ManagedElement_T>(event)),
            "name EMS=Quor/1|ManagedElement=5\n"
            "userLabel Gannet-QA8-01\n"
            "nativeEMSName Gannet-QA8-01\n"
            "owner Veltra\n"
            "location Gannet, room 1\n"
            "version 3.1.4\n"
            "productName Quor QA-8 Access Multiplexer\n"
            "communicationState 0\n"
            "emsInSyncState true\n"
            "supportedRates 0\n"
            "additionalInfo \n");
  ASSERT_EQ(inventory->remove(ObjectKey::device(5)), Result::DONE);
  EXPECT_EQ(told(), Texts{deletion("ManagedElement=5", "OT_MANAGED_ELEMENT", "ManagedElement")});
}

TEST_F(ObjectNotifications, tellALink) {
  LinkRecord link;
  link.nativeName = "North ring";
  link.owner = "Veltra";
  link.direction = LinkDirection::UNIDIRECTIONAL;
  link.rate = LinkRate::STM_16;
  link.aEnd = {1, "/rack=1/port=7"};
  link.zEnd = {2, "/rack=1/port=8"};
  create(link);
  const std::string name = "TopologicalLink=" + link.id;
  const auto event = onlyEvent();
  EXPECT_EQ(dumpEvent(event),
            creation(name, "OT_TOPOLOGICAL_LINK", "TopologicalLink", "TopologicalLink_T"));
  const auto& body = bodyOf<topologicalLink::TopologicalLink_T>(event);
  EXPECT_EQ(dumpName(body.name), "EMS=Quor/1|" + name);
  EXPECT_STREQ(body.userLabel, "North ring");
  EXPECT_EQ(body.direction, globaldefs::CD_UNI);
  EXPECT_EQ(body.rate, 22);
  EXPECT_EQ(dumpName(body.aEndTP), "EMS=Quor/1|ManagedElement=1|PTP=/rack=1/port=7");
  EXPECT_EQ(dumpName(body.zEndTP), "EMS=Quor/1|ManagedElement=2|PTP=/rack=1/port=8");
  ASSERT_EQ(inventory->remove(ObjectKey::link(link.id)), Result::DONE);
  EXPECT_EQ(told(), Texts{deletion(name, "OT_TOPOLOGICAL_LINK", "TopologicalLink")});
}

TEST_F(ObjectNotifications, tellANode) {
  NodeRecord node;
  node.id = "n9";
  node.parentId = "2";
  node.deviceId = 3;
  node.nativeName = "Node nine";
  node.owner = "Veltra";
  create(node);
  const auto event = onlyEvent();
  EXPECT_EQ(dumpEvent(event), creation("Node=/parentid=2/id=n9", "OT_AID", "NODE", "MapObject_T"));
  EXPECT_EQ(textOf(bodyOf<topologyMap::MapObject_T>(event)),
            "EMS=Quor/1|Node=/parentid=2/id=n9 'Node nine' 'Node nine' 'Veltra' managedElement=3");
  ASSERT_EQ(inventory->remove({ObjectKind::NODE, "n9", {}}), Result::DONE);
  EXPECT_EQ(told(), Texts{deletion("Node=/parentid=2/id=n9", "OT_AID", "NODE")});
}

// "/" would break the path, so the parent goes by its NMS text; what the NMS
// gets must be a name that it can use.
TEST_F(ObjectNotifications, tellASubMapInThePhysicalRoot) {
  SubMapRecord subMap;
  subMap.id = "s9";
  subMap.parentId = ROOT_SUBMAP_ID;
  subMap.nativeName = "Second network";
  create(subMap);
  const std::string name = "SubMap=/parentid=VTMAP_PHY_SUBMAP/id=s9";
  const auto event = onlyEvent();
  EXPECT_EQ(dumpEvent(event), creation(name, "OT_AID", "SUBMAP", "MapObject_T"));
  EXPECT_EQ(textOf(bodyOf<topologyMap::MapObject_T>(event)),
            "EMS=Quor/1|" + name + " 'Second network' 'Second network' '' ");
  NS_QUORCORBA::CASubMapName read;
  ASSERT_EQ(read.Nms2EmsName(bodyOf<topologyMap::MapObject_T>(event).name), 0U);
  ASSERT_EQ(inventory->remove(keyOfName(read)), Result::DONE);
  EXPECT_EQ(told(), Texts{deletion(name, "OT_AID", "SUBMAP")});
}

TEST_F(ObjectNotifications, tellAPhysicalLink) {
  PhysicalLinkRecord link;
  link.id = "p9";
  link.linkId = "1";
  create(link);
  const auto event = onlyEvent();
  EXPECT_EQ(dumpEvent(event), creation("PhysicalLink=p9", "OT_AID", "PHYSICALLINK", "MapObject_T"));
  EXPECT_EQ(textOf(bodyOf<topologyMap::MapObject_T>(event)),
            "EMS=Quor/1|PhysicalLink=p9 '' '' '' topologicalLink=1");
  ASSERT_EQ(inventory->remove({ObjectKind::PHYSICAL_LINK, "p9", {}}), Result::DONE);
  EXPECT_EQ(told(), Texts{deletion("PhysicalLink=p9", "OT_AID", "PHYSICALLINK")});
}

TEST_F(ObjectNotifications, leaveOutDisplayLinks) {
  DisplayLinkRecord link;
  link.id = "d9";
  link.parentId = "1";
  link.aEndId = "2";
  link.zEndId = "3";
  link.nativeName = "drawn";
  create(link);
  const ObjectKey key{ObjectKind::DISPLAY_LINK, "d9", {}};
  ASSERT_EQ(inventory->setUserLabel(key, "drawn again"), Result::DONE);
  ASSERT_EQ(inventory->remove(key), Result::DONE);
  createDevice();  // the next event is about something else: nothing is on its way
  EXPECT_EQ(told(), Texts{creation("ManagedElement=5", "OT_MANAGED_ELEMENT", "ManagedElement",
                                   "ManagedElement_T")});
}

TEST_F(ObjectNotifications, areNotSentForRefusedChanges) {
  DeviceRecord nameless;
  EXPECT_EQ(inventory->create(nameless), Result::BAD_VALUE);
  EXPECT_EQ(inventory->remove(ObjectKey::device(1)), Result::OBJECT_IN_USE);
  EXPECT_EQ(inventory->remove(ObjectKey::device(77)), Result::NO_SUCH_OBJECT);
  EXPECT_EQ(told(), Texts{});
}

// Between its creation and its telling somebody else removed it.
TEST_F(ObjectNotifications, announceADeviceThatIsGoneWithoutItsRecord) {
  DeviceRecord gone;
  gone.id = 99;
  gone.name = "gone";
  ChangeNotifier(*inventory).created(gone);
  EXPECT_EQ(told(),
            Texts{creation("ManagedElement=99", "OT_MANAGED_ELEMENT", "ManagedElement", "empty")});
}

TEST_F(ObjectNotifications, endWithTheirReporting) {
  {
    const auto quiet = Inventory::open(":memory:", {4, 2});
    { const ChangeReporting shortLived(*quiet); }
    DeviceRecord device;
    device.name = "unheard";
    ASSERT_EQ(quiet->create(device), Result::DONE);
  }
  EXPECT_EQ(told(), Texts{});
}

}  // namespace
