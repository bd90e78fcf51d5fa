#include "agent/managers/managers.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/agent/support/localagent.h"
#include "tests/agent/support/names.h"
#include "tests/agent/support/refusals.h"

namespace {

using topologyMap::MapObject_T_var;
using topologyMap::MapObjectIterator_I_var;
using topologyMap::MapObjectList_T_var;
using topologyMap::TopologyMapMgr_I;
using zk::agent::NodeRecord;
using zk::agent::ObjectKind;
using zk::test::dump;
using zk::test::LocalAgent;
using zk::test::named;
using zk::test::nameOf;
using zk::test::refusalTypeBy;

class MapManager : public testing::Test {
 protected:
  std::string refusalOf(const globaldefs::NVSList_T& name) {
    return refusalTypeBy([&] {
      MapObject_T_var object;
      manager->getMapObject(name, object.out());
    });
  }

  std::string pathOf(const std::string& parent, const std::string& id) {
    return "/parentid=" + parent + "/id=" + id;
  }

  LocalAgent agent{{}, {12, 2}};
  topologyMap::TopologyMapMgr_I_var manager = agent.manager<TopologyMapMgr_I>("TopologyMap");
  const NodeRecord node = [this] {
    const auto ids = agent.inventory->ids(ObjectKind::NODE);
    return *agent.inventory->node(ids.at(0));
  }();
};

TEST_F(MapManager, listsEveryKind) {
  MapObjectList_T_var objects;
  MapObjectIterator_I_var iterator;
  manager->getAllNodes(1000, objects.out(), iterator.out());
  EXPECT_EQ(static_cast<long>(objects->length()), agent.inventory->count(ObjectKind::NODE));
  EXPECT_TRUE(CORBA::is_nil(iterator.in()));
  EXPECT_EQ(dump(objects[0].name), "EMS=Quor/1|Node=" + pathOf(node.parentId, node.id));

  manager->getAllSubMaps(1000, objects.out(), iterator.out());
  EXPECT_EQ(static_cast<long>(objects->length()), agent.inventory->count(ObjectKind::SUB_MAP));
  manager->getAllDisplayLinks(1000, objects.out(), iterator.out());
  EXPECT_EQ(static_cast<long>(objects->length()), agent.inventory->count(ObjectKind::DISPLAY_LINK));
  EXPECT_GT(objects->length(), 0U);
}

TEST_F(MapManager, handsOutTheRestThroughAnIterator) {
  MapObjectList_T_var objects;
  MapObjectIterator_I_var iterator;
  manager->getAllNodes(5, objects.out(), iterator.out());
  EXPECT_EQ(objects->length(), 5U);
  ASSERT_FALSE(CORBA::is_nil(iterator.in()));
  EXPECT_EQ(static_cast<long>(iterator->getLength()), agent.inventory->count(ObjectKind::NODE));
  EXPECT_TRUE(iterator->next_n(5, objects.out()));
  EXPECT_FALSE(iterator->next_n(1000, objects.out()));
  iterator->destroy();
}

TEST_F(MapManager, showsANodeByItsName) {
  MapObject_T_var object;
  manager->getMapObject(named("Node", pathOf(node.parentId, node.id)), object.out());
  EXPECT_STREQ(object->nativeEMSName, node.nativeName.c_str());
  ASSERT_EQ(object->additionalInfo.length(), 1U);
  EXPECT_STREQ(object->additionalInfo[0].name, "managedElement");
  EXPECT_EQ(std::string(object->additionalInfo[0].value), std::to_string(node.deviceId));
}

TEST_F(MapManager, readsAnyParentWhereTheNameLeavesItOpen) {
  for (const std::string& path :
       {"/id=" + node.id, pathOf("AllSubMap", node.id), pathOf(node.parentId, node.id)}) {
    EXPECT_EQ(refusalOf(named("Node", path)), "") << path;
  }
}

TEST_F(MapManager, showsThePhysicalRootByItsNmsName) {
  MapObject_T_var object;
  manager->getMapObject(named("SubMap", pathOf("AllSubmap", "VTMAP_PHY_SUBMAP")), object.out());
  EXPECT_EQ(dump(object->name), "EMS=Quor/1|SubMap=/parentid=AllSubmap/id=/");
}

TEST_F(MapManager, refusesWhatIsNotThere) {
  EXPECT_EQ(refusalOf(named("Node", pathOf("nowhere", node.id))), "ENTITY_NOT_FOUND");
  EXPECT_EQ(refusalOf(named("Node", pathOf(node.parentId, "none"))), "ENTITY_NOT_FOUND");
  EXPECT_EQ(refusalOf(nameOf({{"EMS", "Other/2"}, {"Node", "/id=1"}})), "ENTITY_NOT_FOUND");
}

TEST_F(MapManager, refusesMalformedNamesAndOtherKinds) {
  for (const char* path : {"", "id=1", "/", "/parentid=1", "//id=1", "/parentid=1/id="}) {
    EXPECT_EQ(refusalOf(named("Node", path)), "INVALID_INPUT") << path;
  }
  EXPECT_EQ(refusalOf(named("DisplayLink", "/id=1")), "INVALID_INPUT");
  EXPECT_EQ(refusalOf(named("SubMap", "/parentid=1")), "INVALID_INPUT");
  EXPECT_EQ(refusalOf(named("ManagedElement", "1")), "INVALID_INPUT");
}

TEST_F(MapManager, setsLabelsOfMapObjects) {
  const auto name = named("Node", pathOf(node.parentId, node.id));
  manager->setUserLabel(name, "corner", false);
  MapObject_T_var object;
  manager->getMapObject(name, object.out());
  EXPECT_STREQ(object->userLabel, "corner");
}

}  // namespace
