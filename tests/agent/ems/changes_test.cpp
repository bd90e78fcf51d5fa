#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "agent/ems/inventory.h"
#include "tests/agent/ems/support.h"

using namespace zk::agent;
using testing::ElementsAre;
using testing::IsEmpty;
using zk::test::RecordedChanges;

namespace {

// Sites "2" (devices 1 to 10) and "3" (11 to 20); nodes "4" to "23".
class Changes : public testing::Test {
 protected:
  Changes() : inventory(Inventory::open(":memory:", {20, 2})) { inventory->setListener(&heard); }

  static DeviceRecord newDevice(long id = 0) {
    DeviceRecord device;
    device.id = id;
    device.name = "Added";
    device.productName = "Product";
    device.version = "1";
    device.location = "Roof";
    device.siteId = "2";
    device.owner = "Owner";
    return device;
  }

  static LinkRecord newLink(long a, long z) {
    LinkRecord link;
    link.aEnd = {a, "/rack=1/shelf=1/slot=9/port=1"};
    link.zEnd = {z, "/rack=1/shelf=1/slot=9/port=2"};
    link.direction = LinkDirection::UNIDIRECTIONAL;
    link.rate = LinkRate::STM_16;
    link.nativeName = "Spare";
    return link;
  }

  static NodeRecord newNode(const std::string& parentId, long deviceId) {
    NodeRecord node;
    node.parentId = parentId;
    node.deviceId = deviceId;
    return node;
  }

  static SubMapRecord newSubMap(const std::string& id, const std::string& parentId) {
    SubMapRecord subMap;
    subMap.id = id;
    subMap.parentId = parentId;
    return subMap;
  }

  static DisplayLinkRecord newDisplayLink(const std::string& parentId, const std::string& a,
                                          const std::string& z) {
    DisplayLinkRecord link;
    link.parentId = parentId;
    link.aEndId = a;
    link.zEndId = z;
    return link;
  }

  RecordedChanges heard;
  std::unique_ptr<Inventory> inventory;
};

TEST_F(Changes, createADeviceAsAsked) {
  DeviceRecord device = newDevice();
  ASSERT_EQ(inventory->create(device), Result::DONE);
  EXPECT_EQ(device.id, 21);
  const auto stored = inventory->device(21);
  ASSERT_TRUE(stored);
  EXPECT_EQ(stored->name, "Added");
  EXPECT_EQ(stored->productName, "Product");
  EXPECT_EQ(stored->version, "1");
  EXPECT_EQ(stored->location, "Roof");
  EXPECT_EQ(stored->siteId, "2");
  EXPECT_EQ(stored->owner, "Owner");
  EXPECT_EQ(stored->userLabel, "Added");
  EXPECT_THAT(heard.lines(), ElementsAre("created 1:21"));
}

TEST_F(Changes, createALinkAsAsked) {
  LinkRecord link = newLink(1, 20);
  ASSERT_EQ(inventory->create(link), Result::DONE);
  const auto stored = inventory->link(link.id);
  ASSERT_TRUE(stored);
  EXPECT_EQ(stored->aEnd.deviceId, 1);
  EXPECT_EQ(stored->aEnd.port, link.aEnd.port);
  EXPECT_EQ(stored->zEnd.deviceId, 20);
  EXPECT_EQ(stored->zEnd.port, link.zEnd.port);
  EXPECT_EQ(stored->direction, LinkDirection::UNIDIRECTIONAL);
  EXPECT_EQ(stored->rate, LinkRate::STM_16);
  EXPECT_EQ(stored->userLabel, "Spare");
  EXPECT_THAT(heard.lines(), ElementsAre("created 3:" + link.id));
}

TEST_F(Changes, createMapObjectsAsAsked) {
  SubMapRecord subMap = newSubMap("annex", "2");
  ASSERT_EQ(inventory->create(subMap), Result::DONE);
  NodeRecord one = newNode("annex", 1);
  NodeRecord two = newNode("annex", 2);
  two.id = "two";
  ASSERT_EQ(inventory->create(one), Result::DONE);
  ASSERT_EQ(inventory->create(two), Result::DONE);
  DisplayLinkRecord line = newDisplayLink("annex", one.id, "two");
  line.nativeName = "Line";
  ASSERT_EQ(inventory->create(line), Result::DONE);
  EXPECT_EQ(inventory->subMap("annex")->parentId, "2");
  EXPECT_EQ(inventory->node("two")->deviceId, 2);
  EXPECT_EQ(inventory->displayLink(line.id)->aEndId, one.id);
  EXPECT_EQ(inventory->displayLink(line.id)->zEndId, "two");
  EXPECT_EQ(inventory->displayLink(line.id)->userLabel, "Line");
  EXPECT_THAT(inventory->ids(ObjectKind::NODE, "annex"), ElementsAre("24", "two"));
  EXPECT_THAT(heard.lines(), ElementsAre("created 5:2/annex", "created 4:annex/24",
                                         "created 4:annex/two", "created 6:annex/" + line.id));
}

TEST_F(Changes, createAPhysicalLinkAsAsked) {
  PhysicalLinkRecord physical;
  physical.linkId = "3";
  ASSERT_EQ(inventory->create(physical), Result::DONE);
  EXPECT_EQ(inventory->physicalLink(physical.id)->linkId, "3");
  EXPECT_THAT(heard.lines(), ElementsAre("created 7:" + physical.id));
}

TEST_F(Changes, skipNewIdsThatAreTaken) {
  DeviceRecord chosen = newDevice(21);
  DeviceRecord given = newDevice();
  EXPECT_EQ(inventory->create(chosen), Result::DONE);
  EXPECT_EQ(inventory->create(given), Result::DONE);
  EXPECT_EQ(given.id, 22);
  SubMapRecord subMap = newSubMap("24", "/");
  NodeRecord node = newNode("2", 1);
  EXPECT_EQ(inventory->create(subMap), Result::DONE);
  EXPECT_EQ(inventory->create(node), Result::DONE);
  EXPECT_EQ(node.id, "25");
}

TEST_F(Changes, neverGiveAnIdTwice) {
  DeviceRecord first = newDevice();
  ASSERT_EQ(inventory->create(first), Result::DONE);
  ASSERT_EQ(inventory->remove(ObjectKey::device(21)), Result::DONE);
  DeviceRecord second = newDevice();
  ASSERT_EQ(inventory->create(second), Result::DONE);
  EXPECT_EQ(second.id, 22);
}

TEST_F(Changes, takeDeviceIdsThatAnNmsCanName) {
  DeviceRecord last = newDevice(2147483647);
  DeviceRecord beyond = newDevice(2147483648);
  DeviceRecord negative = newDevice(-1);
  EXPECT_EQ(inventory->create(last), Result::DONE);
  EXPECT_EQ(inventory->create(beyond), Result::BAD_VALUE);
  EXPECT_EQ(inventory->create(negative), Result::BAD_VALUE);
  EXPECT_EQ(beyond.id, 2147483648);
  EXPECT_EQ(inventory->count(ObjectKind::DEVICE), 21);
  DeviceRecord given = newDevice();
  EXPECT_EQ(inventory->create(given), Result::DONE);
  EXPECT_EQ(given.id, 21);
}

TEST_F(Changes, refuseWhatCannotBeCreated) {
  struct Refused {
    const char* what;
    std::function<Result()> create;
    Result result;
  };
  const auto device = [&](long id, const char* name, const char* site) {
    DeviceRecord record = newDevice(id);
    record.name = name;
    record.siteId = site;
    return inventory->create(record);
  };
  const auto link = [&](const char* id, long a, long z, int direction) {
    LinkRecord record = newLink(a, z);
    record.id = id;
    record.direction = static_cast<LinkDirection>(direction);
    return inventory->create(record);
  };
  const auto node = [&](const char* id, const char* parent, long of) {
    NodeRecord record = newNode(parent, of);
    record.id = id;
    return inventory->create(record);
  };
  const auto subMap = [&](const char* id, const char* parent) {
    SubMapRecord record = newSubMap(id, parent);
    return inventory->create(record);
  };
  const auto line = [&](const char* id, const char* parent, const char* a, const char* z) {
    DisplayLinkRecord record = newDisplayLink(parent, a, z);
    record.id = id;
    return inventory->create(record);
  };
  const auto physical = [&](const char* id, const char* of) {
    PhysicalLinkRecord record{id, of};
    return inventory->create(record);
  };
  const std::vector<Refused> table{
      {"device id taken", [&] { return device(5, "N", "2"); }, Result::OBJECT_EXISTS},
      {"device without name", [&] { return device(0, "", "2"); }, Result::BAD_VALUE},
      {"device at no site", [&] { return device(0, "N", "77"); }, Result::NO_SUCH_OBJECT},
      {"device at a node", [&] { return device(0, "N", "5"); }, Result::NO_SUCH_OBJECT},
      {"link id taken", [&] { return link("1", 1, 2, 1); }, Result::OBJECT_EXISTS},
      {"link from nowhere", [&] { return link("", 99, 2, 1); }, Result::NO_SUCH_OBJECT},
      {"link to nowhere", [&] { return link("", 1, 99, 1); }, Result::NO_SUCH_OBJECT},
      {"link in no direction", [&] { return link("", 1, 2, 2); }, Result::BAD_VALUE},
      {"node id taken by a node", [&] { return node("5", "2", 1); }, Result::OBJECT_EXISTS},
      {"node id taken by a submap", [&] { return node("3", "2", 1); }, Result::OBJECT_EXISTS},
      {"node in nothing", [&] { return node("", "", 1); }, Result::NO_SUCH_OBJECT},
      {"node in no submap", [&] { return node("", "99", 1); }, Result::NO_SUCH_OBJECT},
      {"node in a node", [&] { return node("", "5", 1); }, Result::NO_SUCH_OBJECT},
      {"node of no device", [&] { return node("", "2", 99); }, Result::NO_SUCH_OBJECT},
      {"submap in itself", [&] { return subMap("x", "x"); }, Result::NO_SUCH_OBJECT},
      {"second root", [&] { return subMap("/", "2"); }, Result::OBJECT_EXISTS},
      {"submap without parent", [&] { return subMap("x", ""); }, Result::NO_SUCH_OBJECT},
      {"line in nothing", [&] { return line("", "", "5", "6"); }, Result::NO_SUCH_OBJECT},
      {"line from nowhere", [&] { return line("", "2", "99", "6"); }, Result::NO_SUCH_OBJECT},
      {"line to nowhere", [&] { return line("", "2", "5", ""); }, Result::NO_SUCH_OBJECT},
      {"line id taken", [&] { return line("1", "2", "5", "6"); }, Result::OBJECT_EXISTS},
      {"physical link of nothing", [&] { return physical("", "99"); }, Result::NO_SUCH_OBJECT},
      {"physical link id taken", [&] { return physical("1", "1"); }, Result::OBJECT_EXISTS},
  };
  for (const Refused& refused : table) {
    EXPECT_EQ(refused.create(), refused.result) << refused.what;
  }
  EXPECT_THAT(heard.lines(), IsEmpty());
  EXPECT_EQ(inventory->count(ObjectKind::DEVICE), 20);
  EXPECT_EQ(inventory->count(ObjectKind::NODE), 20);
  EXPECT_EQ(inventory->count(ObjectKind::SUB_MAP), 4);
}

TEST_F(Changes, leaveARefusedRecordAsItWas) {
  LinkRecord link = newLink(1, 99);
  EXPECT_EQ(inventory->create(link), Result::NO_SUCH_OBJECT);
  EXPECT_EQ(link.id, "");
  EXPECT_EQ(link.userLabel, "");
  // Nor does the refused one use up an id.
  LinkRecord next = newLink(1, 2);
  EXPECT_EQ(inventory->create(next), Result::DONE);
  EXPECT_EQ(next.id, std::to_string(inventory->count(ObjectKind::LINK)));
}

TEST_F(Changes, removeInTheOrderThatReferencesAllow) {
  DeviceRecord device = newDevice();
  ASSERT_EQ(inventory->create(device), Result::DONE);
  const ObjectKey deviceKey = ObjectKey::device(21);
  LinkRecord link = newLink(21, 1);
  ASSERT_EQ(inventory->create(link), Result::DONE);
  PhysicalLinkRecord physical{"fibre", link.id};
  ASSERT_EQ(inventory->create(physical), Result::DONE);
  NodeRecord node = newNode("2", 21);
  ASSERT_EQ(inventory->create(node), Result::DONE);
  DisplayLinkRecord line = newDisplayLink("2", node.id, "4");
  ASSERT_EQ(inventory->create(line), Result::DONE);
  const std::size_t createdLines = heard.lines().size();

  EXPECT_EQ(inventory->remove(deviceKey), Result::OBJECT_IN_USE);
  EXPECT_EQ(inventory->remove(ObjectKey::link(link.id)), Result::OBJECT_IN_USE);
  EXPECT_EQ(inventory->remove({ObjectKind::NODE, node.id, "2"}), Result::OBJECT_IN_USE);
  EXPECT_EQ(heard.lines().size(), createdLines);

  EXPECT_EQ(inventory->remove({ObjectKind::PHYSICAL_LINK, "fibre", {}}), Result::DONE);
  EXPECT_EQ(inventory->remove(ObjectKey::link(link.id)), Result::DONE);
  EXPECT_EQ(inventory->remove(deviceKey), Result::OBJECT_IN_USE);
  EXPECT_EQ(inventory->remove({ObjectKind::DISPLAY_LINK, line.id, "2"}), Result::DONE);
  EXPECT_EQ(inventory->remove({ObjectKind::NODE, node.id, "2"}), Result::DONE);
  EXPECT_EQ(inventory->remove(deviceKey), Result::DONE);
  EXPECT_FALSE(inventory->device(21));
  EXPECT_FALSE(inventory->link(link.id));
  EXPECT_FALSE(inventory->node(node.id));
  const auto lines = heard.lines();
  EXPECT_THAT(std::vector<std::string>(lines.begin() + 5, lines.end()),
              ElementsAre("removed 7:fibre", "removed 3:" + link.id, "removed 6:2/" + line.id,
                          "removed 4:2/" + node.id, "removed 1:21"));
}

TEST_F(Changes, removeOnlyEmptySubMaps) {
  SubMapRecord outer = newSubMap("outer", "/");
  SubMapRecord inner = newSubMap("inner", "outer");
  ASSERT_EQ(inventory->create(outer), Result::DONE);
  ASSERT_EQ(inventory->create(inner), Result::DONE);
  EXPECT_EQ(inventory->remove({ObjectKind::SUB_MAP, "outer", {}}), Result::OBJECT_IN_USE);
  EXPECT_EQ(inventory->remove({ObjectKind::SUB_MAP, "2", {}}), Result::OBJECT_IN_USE);
  EXPECT_EQ(inventory->remove({ObjectKind::SUB_MAP, "inner", {}}), Result::DONE);
  EXPECT_EQ(inventory->remove({ObjectKind::SUB_MAP, "outer", {}}), Result::DONE);
}

TEST_F(Changes, keepWhatTheEmsCannotDoWithout) {
  EXPECT_EQ(inventory->remove(ObjectKey::ems()), Result::BAD_VALUE);
  EXPECT_EQ(inventory->remove(ObjectKey::subnetwork("1")), Result::BAD_VALUE);
  EXPECT_EQ(inventory->remove({ObjectKind::SUB_MAP, "/", {}}), Result::BAD_VALUE);
  EXPECT_THAT(heard.lines(), IsEmpty());
}

TEST_F(Changes, knowNothingOfUnknownObjects) {
  const ObjectKey unknown[] = {ObjectKey::device(21),
                               ObjectKey::device(0),
                               ObjectKey::device(4294967297),
                               {ObjectKind::DEVICE, "01", {}},
                               {ObjectKind::DEVICE, " 1", {}},
                               {ObjectKind::DEVICE, "1.0", {}},
                               {ObjectKind::DEVICE, "+1", {}},
                               {ObjectKind::DEVICE, "-1", {}},
                               {ObjectKind::DEVICE, "", {}},
                               {ObjectKind::DEVICE, "99999999999999999999", {}},
                               ObjectKey::link(""),
                               ObjectKey::link("01"),
                               ObjectKey::link("99"),
                               ObjectKey::subnetwork("2"),
                               {ObjectKind::EMS, "1", {}},
                               {ObjectKind::NODE, "3", {}},
                               {ObjectKind::SUB_MAP, "5", {}},
                               {ObjectKind::NODE, "4", "3"},
                               {ObjectKind::SUB_MAP, "2", "/"},
                               {ObjectKind::DISPLAY_LINK, "1", "1"},
                               {ObjectKind::PHYSICAL_LINK, "99", {}}};
  for (const ObjectKey& key : unknown) {
    SCOPED_TRACE(zk::test::dump(key));
    EXPECT_FALSE(inventory->exists(key));
    EXPECT_EQ(inventory->setOwner(key, "x"), Result::NO_SUCH_OBJECT);
    EXPECT_EQ(inventory->remove(key), Result::NO_SUCH_OBJECT);
  }
  EXPECT_FALSE(inventory->device(-1));
  EXPECT_FALSE(inventory->device(4294967297));
  EXPECT_THAT(heard.lines(), IsEmpty());
}

TEST_F(Changes, leaveOutWhatIsGoneFromAPage) {
  DeviceRecord device = newDevice();
  ASSERT_EQ(inventory->create(device), Result::DONE);
  const std::vector<long> ids = inventory->deviceIds();
  ASSERT_EQ(inventory->remove(ObjectKey::device(21)), Result::DONE);
  EXPECT_EQ(inventory->devices(ids).size(), 20u);
  const auto page = inventory->devices({3, 21, 1});
  ASSERT_EQ(page.size(), 2u);
  EXPECT_EQ(page[0].id, 3);
  EXPECT_EQ(page[1].id, 1);
}

TEST_F(Changes, listIdsOfTextKindsOnly) {
  EXPECT_THAT(inventory->ids(ObjectKind::EMS), IsEmpty());
  EXPECT_THAT(inventory->ids(ObjectKind::DEVICE), IsEmpty());
  EXPECT_THAT(inventory->ids(ObjectKind::SUBNETWORK), ElementsAre("1"));
  EXPECT_THAT(inventory->ids(ObjectKind::SUB_MAP), ElementsAre("/", "1", "2", "3"));
  EXPECT_THAT(inventory->ids(ObjectKind::SUB_MAP, "99"), IsEmpty());
  EXPECT_THAT(inventory->ids(ObjectKind::LINK, "99").size(), inventory->count(ObjectKind::LINK));
}

}  // namespace
