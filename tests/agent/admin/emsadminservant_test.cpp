// The administration interface, called on the servant itself.
#include "agent/admin/emsadminservant.h"

#include <gtest/gtest.h>

#include "tests/agent/ems/support.h"
#include "tests/agent/support/localagent.h"
#include "tests/agent/support/names.h"
#include "tests/agent/support/refusals.h"
#include "tests/platform/waiting.h"

namespace {

using namespace zk::agent;
using zk::test::nameOf;
using zk::test::refusalBy;
using Lines = std::vector<std::string>;

class EmsAdmin : public testing::Test {
 protected:
  EmsAdmin() { inventory->setListener(&changes); }
  ~EmsAdmin() override { inventory->setListener(nullptr); }

  std::string create(const char* kind, const globaldefs::NVSList_T& attributes) {
    return CORBA::String_var(admin->createMapObject(kind, attributes)).in();
  }
  std::string refusalToCreate(const char* kind, const globaldefs::NVSList_T& attributes) {
    return refusalBy([&] { create(kind, attributes); });
  }

  // Submaps "/", "1" and, a site each, "2" and "3"; nodes "4" to "7" of the
  // devices 1 to 4.
  zk::test::LocalAgent agent{{}, {4, 2}};
  Inventory* const inventory = agent.inventory.get();
  zk::test::RecordedChanges changes;
  Traffic traffic{*inventory, {}};
  EmsAdminServant* const admin = new EmsAdminServant(*inventory, traffic, agent.sessions);
  const PortableServer::ServantBase_var owner{admin};
};

TEST_F(EmsAdmin, hasAnIdOfItsOwn) {
  EXPECT_STREQ(emsAdmin::_tc_EmsAdmin_I->id(), "IDL:zk.quornex/emsAdmin/EmsAdmin_I:1.0");
}

TEST_F(EmsAdmin, listsAndEndsSessions) {
  const emsSession::EmsSession_I_var first = agent.logIn("first");
  const emsSession::EmsSession_I_var second = agent.logIn();
  emsAdmin::NmsLoginList_T_var list = admin->getLogins();
  ASSERT_EQ(list->length(), 2U);
  EXPECT_EQ(list[0U].sessionId, 1);
  EXPECT_STREQ(list[0U].user, "first");
  EXPECT_EQ(list[1U].sessionId, 2);
  EXPECT_STREQ(list[1U].user, "");
  admin->endLogin(1);
  EXPECT_EQ(agent.nms->ends, 1);
  EXPECT_TRUE(zk::test::isGone([&] { first->ping(); }));
  list = admin->getLogins();
  ASSERT_EQ(list->length(), 1U);
  EXPECT_EQ(list[0U].sessionId, 2);
  EXPECT_EQ(refusalBy([&] { admin->endLogin(1); }), "ENTITY_NOT_FOUND: there is no session 1");
}

TEST_F(EmsAdmin, createsRenamesAndRemovesADevice) {
  EXPECT_EQ(admin->createDevice("New", "Product", "2"), 5);
  const auto device = inventory->device(5);
  ASSERT_TRUE(device);
  EXPECT_EQ(device->productName, "Product");
  EXPECT_EQ(device->siteId, "2");
  EXPECT_EQ(device->userLabel, "New");
  admin->renameDevice(5, "Newer");
  admin->setLabel("device", "5", "userLabel", "labelled");
  admin->setLabel("device", "5", "owner", "someone");
  admin->setLabel("device", "5", "nativeEMSName", "Newest");
  admin->remove("device", "5");
  EXPECT_EQ(changes.lines(),
            (Lines{"created 1:5", "ems nativeName 1:5 'New' 'Newer'",
                   "ems userLabel 1:5 'New' 'labelled'", "ems owner 1:5 '' 'someone'",
                   "ems nativeName 1:5 'Newer' 'Newest'", "removed 1:5"}));
}

TEST_F(EmsAdmin, createsALink) {
  const CORBA::String_var id = admin->createLink("Trunk", 1, "/port=1", 3, "/port=2");
  const auto link = inventory->link(id.in());
  ASSERT_TRUE(link);
  EXPECT_EQ(link->nativeName, "Trunk");
  EXPECT_EQ(link->aEnd.deviceId, 1);
  EXPECT_EQ(link->aEnd.port, "/port=1");
  EXPECT_EQ(link->zEnd.deviceId, 3);
  EXPECT_EQ(link->zEnd.port, "/port=2");
  admin->remove("link", id);
  EXPECT_FALSE(inventory->link(id.in()));
}

TEST_F(EmsAdmin, createsEachKindOfMapObject) {
  EXPECT_EQ(create("submap", nameOf({{"name", "S"}, {"parent", "/"}, {"id", "s"}})), "s");
  EXPECT_EQ(create("node", nameOf({{"name", "N"}, {"parent", "s"}, {"device", "1"}, {"id", "n"}})),
            "n");
  EXPECT_EQ(
      create("display-link",
             nameOf({{"name", "D"}, {"parent", "s"}, {"aEnd", "n"}, {"zEnd", "4"}, {"id", "d"}})),
      "d");
  EXPECT_EQ(create("physical-link", nameOf({{"link", "1"}, {"id", "p"}})), "p");
  EXPECT_EQ(inventory->node("n")->deviceId, 1);
  EXPECT_EQ(inventory->displayLink("d")->aEndId, "n");
  EXPECT_EQ(inventory->displayLink("d")->zEndId, "4");
  EXPECT_EQ(inventory->physicalLink("p")->linkId, "1");
  for (const auto& [kind, id] : {std::pair{"physical-link", "p"}, std::pair{"display-link", "d"},
                                 std::pair{"node", "n"}, std::pair{"submap", "s"}}) {
    admin->remove(kind, id);
  }
  EXPECT_EQ(changes.lines(),
            (Lines{"created 5://s", "created 4:s/n", "created 6:s/d", "created 7:p", "removed 7:p",
                   "removed 6:s/d", "removed 4:s/n", "removed 5://s"}));
}

TEST_F(EmsAdmin, givesNewIdsToMapObjects) {
  const std::string first = create("submap", nameOf({{"name", "S"}, {"parent", "1"}}));
  const std::string second = create("submap", nameOf({{"name", "S"}, {"parent", "1"}}));
  EXPECT_NE(first, "");
  EXPECT_NE(first, second);
}

TEST_F(EmsAdmin, refusesMapObjectsThatCannotBe) {
  const auto submap = [&](const std::vector<std::pair<std::string, std::string>>& attributes) {
    return refusalToCreate("submap", nameOf(attributes));
  };
  EXPECT_EQ(submap({{"parent", "1"}}), "INVALID_INPUT: missing: name");
  EXPECT_EQ(submap({{"name", "S"}}), "INVALID_INPUT: missing: parent");
  EXPECT_EQ(submap({{"name", "S"}, {"parent", "1"}, {"device", "1"}}),
            "INVALID_INPUT: not an attribute of this kind: device");
  EXPECT_EQ(submap({{"name", "S"}, {"parent", "1"}, {"name", "T"}}),
            "INVALID_INPUT: given twice: name");
  EXPECT_EQ(submap({{"name", "S"}, {"parent", "77"}}),
            "ENTITY_NOT_FOUND: the EMS has no such object: the new object");
  EXPECT_EQ(submap({{"name", "S"}, {"parent", "1"}, {"id", "2"}}),
            "OBJECT_IN_USE: the object is there already: the new object");
  for (const char* id : {"a/b", "a=b", "/", "AllSubMap", "AllSubmap", "VTMAP_PHY_SUBMAP"}) {
    EXPECT_EQ(submap({{"name", "S"}, {"parent", "1"}, {"id", id}}),
              "INVALID_INPUT: the object cannot have this value: the new object")
        << id;
  }
  for (const char* id : {"a/b", "a=b"}) {
    EXPECT_EQ(refusalToCreate(
                  "node", nameOf({{"name", "N"}, {"parent", "2"}, {"device", "1"}, {"id", id}})),
              "INVALID_INPUT: the object cannot have this value: the new object")
        << id;
  }
  for (const char* device : {"x", "-1", "99999999999", "1 "}) {
    EXPECT_EQ(refusalToCreate("node", nameOf({{"name", "N"}, {"parent", "1"}, {"device", device}})),
              std::string("INVALID_INPUT: not the id of a device: ") + device);
  }
  EXPECT_EQ(refusalToCreate("device", nameOf({})),
            "INVALID_INPUT: not an object of the map: device");
  EXPECT_EQ(changes.lines(), Lines{});
}

TEST_F(EmsAdmin, saysWhatTheEmsRefuses) {
  EXPECT_EQ(refusalBy([&] { admin->createDevice("", "Product", ""); }),
            "INVALID_INPUT: the object cannot have this value: the new device");
  EXPECT_EQ(refusalBy([&] { admin->createDevice("New", "Product", "77"); }),
            "ENTITY_NOT_FOUND: the EMS has no such object: the new device");
  EXPECT_EQ(refusalBy([&] { admin->renameDevice(77, "New"); }),
            "ENTITY_NOT_FOUND: the EMS has no such object: device 77");
  EXPECT_EQ(refusalBy([&] { admin->remove("device", "1"); }),
            "OBJECT_IN_USE: other objects refer to it: device 1");
  EXPECT_EQ(refusalBy([&] { admin->remove("ems", ""); }),
            "INVALID_INPUT: the object cannot have this value: ems");
  EXPECT_EQ(refusalBy([&] { admin->remove("planet", "1"); }),
            "INVALID_INPUT: no kind of object is called 'planet'; there are ems, subnetwork, "
            "device, link, node, submap, display-link, physical-link");
  EXPECT_EQ(refusalBy([&] { admin->setLabel("device", "1", "colour", "red"); }),
            "INVALID_INPUT: no label is called 'colour'; there are userLabel, owner, "
            "nativeEMSName");
  EXPECT_EQ(refusalBy([&] { admin->setLabel("node", "4\n5", "owner", "x"); }),
            "ENTITY_NOT_FOUND: the EMS has no such object: node 4?5");
  EXPECT_EQ(refusalBy([&] { admin->clearAlarm(1); }),
            "ENTITY_NOT_FOUND: the EMS has no such object: alarm 1");
  EXPECT_EQ(refusalBy([&] { admin->raiseAlarm(77, "LOS", "", notifications::PS_MAJOR, ""); }),
            "ENTITY_NOT_FOUND: the EMS has no such object: an alarm of device 77");
  EXPECT_EQ(refusalBy([&] { admin->raiseAlarm(1, "LOS", "", notifications::PS_CLEARED, ""); }),
            "INVALID_INPUT: the object cannot have this value: an alarm of device 1");
  EXPECT_EQ(changes.lines(), Lines{});
}

TEST_F(EmsAdmin, labelsTheEmsItself) {
  admin->setLabel("ems", "", "userLabel", "Headquarters");
  EXPECT_EQ(inventory->ems().userLabel, "Headquarters");
}

TEST_F(EmsAdmin, raisesAndClearsAlarms) {
  const auto before = std::chrono::system_clock::now() - std::chrono::milliseconds(1);
  const CORBA::Long id = admin->raiseAlarm(1, "LOS", "/port=1", notifications::PS_MAJOR, "text");
  const auto alarm = inventory->alarm(id);
  ASSERT_TRUE(alarm);
  EXPECT_EQ(alarm->severity, Severity::MAJOR);
  EXPECT_EQ(alarm->additionalText, "text");
  EXPECT_GE(alarm->raisedAt, before);
  EXPECT_EQ(admin->raiseAlarm(1, "LOS", "/port=1", notifications::PS_CRITICAL, "text"), id);
  admin->clearAlarm(id);
  EXPECT_EQ(changes.lines(),
            (Lines{"raised 1 LOS /port=1 severity 2", "raised 1 LOS /port=1 severity 1",
                   "cleared 1 LOS /port=1 severity 5"}));
}

TEST_F(EmsAdmin, setsTheTraffic) {
  admin->setTraffic(1000);
  EXPECT_TRUE(zk::test::becomesTrue([&] { return changes.lines().size() >= 10; }));
  admin->setTraffic(0);
  EXPECT_EQ(traffic.rate(), 0);
  EXPECT_EQ(refusalBy([&] { admin->setTraffic(-1); }),
            "INVALID_INPUT: a rate is 0 to 10000 changes a second");
}

}  // namespace
