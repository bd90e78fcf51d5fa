// An enum travels as its index: the numbers themselves, both as the program
// knows them and as they are written.
#include <gtest/gtest.h>

#include "zk_quornex/idl/events.h"
#include "zk_quornex/idl/managers.h"
#include "zk_quornex/idl/names.h"

namespace zk::test {

namespace {

TEST(WireValues, ofExceptionTypes) {
  using namespace globaldefs;
  EXPECT_EQ(int{EXCPT_NOT_IMPLEMENTED}, 0);
  EXPECT_EQ(int{EXCPT_INTERNAL_ERROR}, 1);
  EXPECT_EQ(int{EXCPT_INVALID_INPUT}, 2);
  EXPECT_EQ(int{EXCPT_OBJECT_IN_USE}, 3);
  EXPECT_EQ(int{EXCPT_TP_INVALID_ENDPOINT}, 4);
  EXPECT_EQ(int{EXCPT_ENTITY_NOT_FOUND}, 5);
  EXPECT_EQ(int{EXCPT_TIMESLOT_IN_USE}, 6);
  EXPECT_EQ(int{EXCPT_PROTECTION_EFFORT_NOT_MET}, 7);
  EXPECT_EQ(int{EXCPT_NOT_IN_VALID_STATE}, 8);
  EXPECT_EQ(int{EXCPT_UNABLE_TO_COMPLY}, 9);
  EXPECT_EQ(int{EXCPT_NE_COMM_LOSS}, 10);
  EXPECT_EQ(int{EXCPT_CAPACITY_EXCEEDED}, 11);
  EXPECT_EQ(int{EXCPT_ACCESS_DENIED}, 12);
  EXPECT_EQ(int{EXCPT_TOO_MANY_OPEN_ITERATORS}, 13);
  EXPECT_EQ(int{EXCPT_UNSUPPORTED_ROUTING_CONSTRAINTS}, 14);
  EXPECT_EQ(int{EXCPT_USERLABEL_IN_USE}, 15);
}

TEST(WireValues, ofObjectTypes) {
  using namespace notifications;
  EXPECT_EQ(int{OT_EMS}, 0);
  EXPECT_EQ(int{OT_MANAGED_ELEMENT}, 1);
  EXPECT_EQ(int{OT_MULTILAYER_SUBNETWORK}, 2);
  EXPECT_EQ(int{OT_TOPOLOGICAL_LINK}, 3);
  EXPECT_EQ(int{OT_SUBNETWORK_CONNECTION}, 4);
  EXPECT_EQ(int{OT_PHYSICAL_TERMINATION_POINT}, 5);
  EXPECT_EQ(int{OT_CONNECTION_TERMINATION_POINT}, 6);
  EXPECT_EQ(int{OT_TERMINATION_POINT_POOL}, 7);
  EXPECT_EQ(int{OT_EQUIPMENT_HOLDER}, 8);
  EXPECT_EQ(int{OT_EQUIPMENT}, 9);
  EXPECT_EQ(int{OT_PROTECTION_GROUP}, 10);
  EXPECT_EQ(int{OT_TRAFFIC_DESCRIPTOR}, 11);
  EXPECT_EQ(int{OT_AID}, 12);
}

TEST(WireValues, ofTheSmallerEnums) {
  EXPECT_EQ(int{globaldefs::CD_UNI}, 0);
  EXPECT_EQ(int{globaldefs::CD_BI}, 1);
  EXPECT_EQ(int{managedElement::CS_AVAILABLE}, 0);
  EXPECT_EQ(int{managedElement::CS_UNAVAILABLE}, 1);
  EXPECT_EQ(int{multiLayerSubnetwork::TOPO_SINGLETON}, 0);
  EXPECT_EQ(int{multiLayerSubnetwork::TOPO_MESH}, 6);
  EXPECT_EQ(int{multiLayerSubnetwork::EMSFL_CC_AT_SNC_LAYER}, 0);
  EXPECT_EQ(int{multiLayerSubnetwork::EMSFL_RECONFIGURATION}, 3);
  EXPECT_EQ(int{notifications::FT_IN_PROGRESS}, 0);
  EXPECT_EQ(int{notifications::FT_FAILED}, 1);
  EXPECT_EQ(int{notifications::FT_COMPLETED}, 2);
  EXPECT_EQ(int{notifications::PS_INDETERMINATE}, 0);
  EXPECT_EQ(int{notifications::PS_CLEARED}, 5);
  EXPECT_EQ(int{notifications::SA_UNKNOWN}, 0);
  EXPECT_EQ(int{notifications::SA_NON_SERVICE_AFFECTING}, 2);
  EXPECT_EQ(int{notifications::AI_EVENT_ACKNOWLEDGED}, 0);
  EXPECT_EQ(int{notifications::AI_NA}, 2);
}

// What an NMS sees of a value put into an Any.
template <class Value>
std::string idInAny(const Value& value) {
  CORBA::Any any;
  any <<= value;
  const CORBA::TypeCode_var type = any.type();
  return type->id();
}

TEST(WireValues, carryTheirIdInsideAnAny) {
  EXPECT_EQ(idInAny(globaldefs::NVSList_T()), "IDL:mtnm.tmforum.org/globaldefs/NVSList_T:1.0");
  EXPECT_EQ(idInAny(notifications::NVList_T()), "IDL:mtnm.tmforum.org/notifications/NVList_T:1.0");
  EXPECT_EQ(idInAny(notifications::OT_AID), "IDL:mtnm.tmforum.org/notifications/ObjectType_T:1.0");
  EXPECT_EQ(idInAny(managedElement::ManagedElement_T()),
            "IDL:mtnm.tmforum.org/managedElement/ManagedElement_T:1.0");
}

TEST(WireValues, areTheSameUnderEitherNameOfAName) {
  EXPECT_TRUE(globaldefs::_tc_NVSList_T->equivalent(globaldefs::_tc_NamingAttributes_T));
  EXPECT_FALSE(globaldefs::_tc_NVSList_T->equivalent(notifications::_tc_NVList_T));
}

TEST(WireValues, ofTheExceptionItself) {
  const globaldefs::ProcessingFailureException failure(globaldefs::EXCPT_ENTITY_NOT_FOUND, "why");
  EXPECT_STREQ(failure._rep_id(), "IDL:mtnm.tmforum.org/globaldefs/ProcessingFailureException:1.0");
  EXPECT_STREQ(failure._name(), "ProcessingFailureException");
}

}  // namespace

}  // namespace zk::test
