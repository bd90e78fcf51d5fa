// The one module that is not the standard's: its ids must not look as if it
// were, and what it takes over from the standard stays the standard's.
#include <gtest/gtest.h>

#include <type_traits>

#include "tests/idl/typetext.h"
#include "zk_quornex/idl/managers.h"

namespace zk::test {

namespace {

using namespace topologyMap;

TEST(OwnModule, hasIdsOfItsOwn) {
  EXPECT_STREQ(_tc_MapObject_T->id(), "IDL:zk.quornex/topologyMap/MapObject_T:1.0");
  EXPECT_STREQ(_tc_MapObjectList_T->id(), "IDL:zk.quornex/topologyMap/MapObjectList_T:1.0");
  EXPECT_STREQ(_tc_MapObjectIterator_I->id(), "IDL:zk.quornex/topologyMap/MapObjectIterator_I:1.0");
  EXPECT_STREQ(_tc_TopologyMapMgr_I->id(), "IDL:zk.quornex/topologyMap/TopologyMapMgr_I:1.0");
}

TEST(OwnModule, buildsOnTheStandardsNames) {
  EXPECT_EQ(definitionText(_tc_MapObject_T),
            "struct {NamingAttributes_T name; string userLabel; string nativeEMSName; "
            "string owner; NVSList_T additionalInfo}");
  const CORBA::TypeCode_var name = _tc_MapObject_T->member_type(0);
  EXPECT_EQ(name->id(), standardId("globaldefs/NamingAttributes_T"));
  EXPECT_EQ(definitionText(_tc_MapObjectList_T), "alias sequence<MapObject_T>");
}

TEST(OwnModule, hasAManagerLikeTheOthers) {
  EXPECT_TRUE((std::is_convertible_v<TopologyMapMgr_I::_ptr_type, common::Common_I::_ptr_type>));
}

}  // namespace

}  // namespace zk::test
