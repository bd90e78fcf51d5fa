#include <gtest/gtest.h>

#include <set>

#include "agent/ems/inventory.h"
#include "tests/agent/ems/support.h"

using namespace zk::agent;
using zk::test::bytesOf;
using zk::test::TemporaryFolder;

namespace {

std::unique_ptr<Inventory> seeded(int devices, int sites) {
  return Inventory::open(":memory:", {devices, sites});
}

TEST(Seed, hasTheSampleNetworkByDefault) {
  const auto inventory = Inventory::open(":memory:");
  EXPECT_EQ(inventory->count(ObjectKind::EMS), 1);
  EXPECT_EQ(inventory->count(ObjectKind::SUBNETWORK), 1);
  EXPECT_EQ(inventory->count(ObjectKind::DEVICE), 200);
  EXPECT_EQ(inventory->count(ObjectKind::NODE), 200);
  EXPECT_EQ(inventory->count(ObjectKind::SUB_MAP), 10);
  EXPECT_EQ(inventory->count(ObjectKind::LINK), 304);
  EXPECT_EQ(inventory->count(ObjectKind::PHYSICAL_LINK), 304);
  EXPECT_EQ(inventory->count(ObjectKind::DISPLAY_LINK), 304);
}

TEST(Seed, numbersDevicesFromOneWithoutGaps) {
  const auto ids = Inventory::open(":memory:")->deviceIds();
  ASSERT_EQ(ids.size(), 200u);
  for (std::size_t i = 0; i < ids.size(); ++i) {
    EXPECT_EQ(ids[i], static_cast<long>(i) + 1);
  }
}

TEST(Seed, fillsADeviceWhole) {
  const auto device = Inventory::open(":memory:")->device(7);
  ASSERT_TRUE(device);
  EXPECT_EQ(device->name, "Aldermoor-QW40-07");
  EXPECT_EQ(device->productName, "Quor QW-40 Wavelength Terminal");
  EXPECT_EQ(device->userLabel, device->name);
  EXPECT_EQ(device->owner, "Veltra");
  EXPECT_EQ(device->version, "2.7.1");
  EXPECT_EQ(device->location, "Aldermoor, room 1, row 7");
  EXPECT_EQ(device->siteId, "2");
}

TEST(Seed, namesDevicesUniquely) {
  const auto inventory = seeded(500, 40);
  std::set<std::string> names;
  for (const DeviceRecord& device : inventory->devices(inventory->deviceIds())) {
    names.insert(device.name);
  }
  EXPECT_EQ(names.size(), 500u);
}

TEST(Seed, takesEachPortOnce) {
  const auto inventory = Inventory::open(":memory:");
  std::set<std::pair<long, std::string>> ends;
  for (const LinkRecord& link : inventory->links(inventory->ids(ObjectKind::LINK))) {
    ends.insert({link.aEnd.deviceId, link.aEnd.port});
    ends.insert({link.zEnd.deviceId, link.zEnd.port});
    EXPECT_NE(link.aEnd.deviceId, link.zEnd.deviceId) << link.id;
  }
  EXPECT_EQ(ends.size(), 608u);
}

TEST(Seed, placesTheMapInOneTree) {
  const auto inventory = Inventory::open(":memory:");
  EXPECT_EQ(inventory->subMap("/")->parentId, "");
  EXPECT_EQ(inventory->ids(ObjectKind::SUB_MAP, "/"), std::vector<std::string>{"1"});
  EXPECT_EQ(inventory->ids(ObjectKind::SUB_MAP, "1").size(), 8u);
  EXPECT_EQ(inventory->ids(ObjectKind::NODE, "2").size(), 25u);
  EXPECT_EQ(inventory->ids(ObjectKind::DISPLAY_LINK, "2").size(), 25u);
  EXPECT_EQ(inventory->ids(ObjectKind::DISPLAY_LINK, "1").size(), 104u);
  const auto node = inventory->node(inventory->ids(ObjectKind::NODE, "3").front());
  ASSERT_TRUE(node);
  EXPECT_EQ(node->parentId, "3");
  EXPECT_EQ(inventory->device(node->deviceId)->siteId, "3");
}

// What a display link's ends are drawn as must be in the submap that draws it.
TEST(Seed, drawsLinksWhereTheirEndsAre) {
  const auto inventory = Inventory::open(":memory:");
  for (const auto& link : inventory->displayLinks(inventory->ids(ObjectKind::DISPLAY_LINK))) {
    for (const std::string& end : {link.aEndId, link.zEndId}) {
      const bool there = inventory->exists({ObjectKind::NODE, end, link.parentId}) ||
                         inventory->exists({ObjectKind::SUB_MAP, end, link.parentId});
      EXPECT_TRUE(there) << link.id << " end " << end;
    }
  }
}

struct Size {
  int devices, sites;
  long links;
};

TEST(Seed, fitsItsOptions) {
  const Size sizes[] = {{0, 1, 0}, {1, 1, 0}, {2, 1, 1}, {3, 1, 3},  {4, 2, 3},
                        {5, 3, 5}, {1, 5, 0}, {3, 3, 3}, {10, 3, 16}};
  for (const Size& size : sizes) {
    const auto inventory = seeded(size.devices, size.sites);
    SCOPED_TRACE(std::to_string(size.devices) + " devices, " + std::to_string(size.sites) +
                 " sites");
    EXPECT_EQ(inventory->count(ObjectKind::DEVICE), size.devices);
    EXPECT_EQ(inventory->count(ObjectKind::SUB_MAP), size.sites + 2);
    EXPECT_EQ(inventory->count(ObjectKind::LINK), size.links);
    EXPECT_EQ(inventory->deviceIds().size(), static_cast<std::size_t>(size.devices));
  }
}

TEST(Seed, isTheSameEveryTime) {
  const TemporaryFolder folder;
  Inventory::open(folder.file("one"));
  Inventory::open(folder.file("two"));
  EXPECT_EQ(bytesOf(folder.file("one")), bytesOf(folder.file("two")));
  EXPECT_GT(bytesOf(folder.file("one")).size(), 50000u);
}

TEST(Seed, refusesOptionsOutOfRange) {
  const SeedOptions refused[] = {{-1, 8}, {100001, 8}, {200, 0}, {200, 1001}, {200, -1}};
  for (const SeedOptions& options : refused) {
    EXPECT_THROW(Inventory::open(":memory:", options), InventoryError)
        << options.devices << " " << options.sites;
  }
}

TEST(Seed, leavesIdsFreeForWhatComesLater) {
  const auto inventory = Inventory::open(":memory:");
  DeviceRecord device;
  device.name = "New";
  EXPECT_EQ(inventory->create(device), Result::DONE);
  EXPECT_EQ(device.id, 201);
  NodeRecord node;
  node.parentId = "2";
  node.deviceId = 201;
  EXPECT_EQ(inventory->create(node), Result::DONE);
  EXPECT_EQ(node.id, "210");
}

}  // namespace
