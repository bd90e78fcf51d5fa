// What of the interface definitions travels on the wire: repository ids, member
// and value names, their order, and the kinds of the aliases.
#include <gtest/gtest.h>

#include <ostream>
#include <vector>

#include "tests/idl/typetext.h"
#include "zk_quornex/idl/channel.h"
#include "zk_quornex/idl/events.h"
#include "zk_quornex/idl/managers.h"
#include "zk_quornex/idl/names.h"
#include "zk_quornex/idl/sessions.h"

namespace zk::test {

namespace {

struct WireType {
  CORBA::TypeCode_ptr type;
  const char* path;  // module and name, as in the repository id
  const char* definition;
};

void PrintTo(const WireType& type, std::ostream* out) { *out << type.path; }

// A function, for the type codes of the stubs are set up while the process loads.
std::vector<WireType> globaldefsTypes() {
  using namespace globaldefs;
  return {
      {_tc_NameAndStringValue_T, "globaldefs/NameAndStringValue_T",
       "struct {string name; string value}"},
      {_tc_NVSList_T, "globaldefs/NVSList_T", "alias sequence<NameAndStringValue_T>"},
      {_tc_NamingAttributes_T, "globaldefs/NamingAttributes_T", "alias NVSList_T"},
      {_tc_NamingAttributesList_T, "globaldefs/NamingAttributesList_T",
       "alias sequence<NamingAttributes_T>"},
      {_tc_Time_T, "globaldefs/Time_T", "alias string"},
      {_tc_ConnectionDirection_T, "globaldefs/ConnectionDirection_T", "enum {CD_UNI, CD_BI}"},
      {_tc_ExceptionType_T, "globaldefs/ExceptionType_T",
       "enum {EXCPT_NOT_IMPLEMENTED, EXCPT_INTERNAL_ERROR, EXCPT_INVALID_INPUT, "
       "EXCPT_OBJECT_IN_USE, EXCPT_TP_INVALID_ENDPOINT, EXCPT_ENTITY_NOT_FOUND, "
       "EXCPT_TIMESLOT_IN_USE, EXCPT_PROTECTION_EFFORT_NOT_MET, EXCPT_NOT_IN_VALID_STATE, "
       "EXCPT_UNABLE_TO_COMPLY, EXCPT_NE_COMM_LOSS, EXCPT_CAPACITY_EXCEEDED, "
       "EXCPT_ACCESS_DENIED, EXCPT_TOO_MANY_OPEN_ITERATORS, "
       "EXCPT_UNSUPPORTED_ROUTING_CONSTRAINTS, EXCPT_USERLABEL_IN_USE}"},
      {_tc_ProcessingFailureException, "globaldefs/ProcessingFailureException",
       "exception {ExceptionType_T exceptionType; string errorReason}"},
      {_tc_NamingAttributesIterator_I, "globaldefs/NamingAttributesIterator_I", "interface"},
  };
}

std::vector<WireType> sessionTypes() {
  return {
      {common::_tc_Capability_T, "common/Capability_T", "alias NameAndStringValue_T"},
      {common::_tc_CapabilityList_T, "common/CapabilityList_T", "alias sequence<Capability_T>"},
      {common::_tc_Common_I, "common/Common_I", "interface"},
      {session::_tc_Session_I, "session/Session_I", "interface"},
      {nmsSession::_tc_NmsSession_I, "nmsSession/NmsSession_I", "interface"},
      {emsSession::_tc_EmsSession_I, "emsSession/EmsSession_I", "interface"},
      {emsSession::EmsSession_I::_tc_managerNames_T, "emsSession/EmsSession_I/managerNames_T",
       "alias sequence<string>"},
      {mtnmVersion::_tc_Version_I, "mtnmVersion/Version_I", "interface"},
      {emsSessionFactory::_tc_EmsSessionFactory_I, "emsSessionFactory/EmsSessionFactory_I",
       "interface"},
  };
}

std::vector<WireType> transmissionTypes() {
  using namespace transmissionParameters;
  return {
      {_tc_LayerRate_T, "transmissionParameters/LayerRate_T", "alias short"},
      {_tc_LayerRateList_T, "transmissionParameters/LayerRateList_T",
       "alias sequence<LayerRate_T>"},
      {_tc_LayeredParameters_T, "transmissionParameters/LayeredParameters_T",
       "struct {LayerRate_T layer; NVSList_T transmissionParams}"},
  };
}

std::vector<WireType> elementTypes() {
  return {
      {emsMgr::_tc_EMS_T, "emsMgr/EMS_T",
       "struct {NamingAttributes_T name; string userLabel; string nativeEMSName; string owner; "
       "string emsVersion; string type; NVSList_T additionalInfo}"},
      {emsMgr::_tc_EMSMgr_I, "emsMgr/EMSMgr_I", "interface"},
      {managedElement::_tc_CommunicationState_T, "managedElement/CommunicationState_T",
       "enum {CS_AVAILABLE, CS_UNAVAILABLE}"},
      {managedElement::_tc_ManagedElement_T, "managedElement/ManagedElement_T",
       "struct {NamingAttributes_T name; string userLabel; string nativeEMSName; string owner; "
       "string location; string version; string productName; "
       "CommunicationState_T communicationState; boolean emsInSyncState; "
       "LayerRateList_T supportedRates; NVSList_T additionalInfo}"},
      {managedElement::_tc_ManagedElementList_T, "managedElement/ManagedElementList_T",
       "alias sequence<ManagedElement_T>"},
      {managedElement::_tc_ManagedElementIterator_I, "managedElement/ManagedElementIterator_I",
       "interface"},
      {managedElementManager::_tc_ManagedElementMgr_I, "managedElementManager/ManagedElementMgr_I",
       "interface"},
  };
}

std::vector<WireType> subnetworkTypes() {
  using namespace multiLayerSubnetwork;
  return {
      {_tc_Topology_T, "multiLayerSubnetwork/Topology_T",
       "enum {TOPO_SINGLETON, TOPO_CHAIN, TOPO_PSR, TOPO_OPEN_PSR, TOPO_SPRING, "
       "TOPO_OPEN_SPRING, TOPO_MESH}"},
      {_tc_EMSFreedomLevel_T, "multiLayerSubnetwork/EMSFreedomLevel_T",
       "enum {EMSFL_CC_AT_SNC_LAYER, EMSFL_TERMINATE_AND_MAP, EMSFL_HIGHER_ORDER_SNCS, "
       "EMSFL_RECONFIGURATION}"},
      {_tc_MultiLayerSubnetwork_T, "multiLayerSubnetwork/MultiLayerSubnetwork_T",
       "struct {NamingAttributes_T name; string userLabel; string nativeEMSName; string owner; "
       "Topology_T subnetworkType; LayerRateList_T supportedRates; NVSList_T additionalInfo}"},
      {_tc_SubnetworkList_T, "multiLayerSubnetwork/SubnetworkList_T",
       "alias sequence<MultiLayerSubnetwork_T>"},
      {_tc_SubnetworkIterator_I, "multiLayerSubnetwork/SubnetworkIterator_I", "interface"},
      {_tc_MultiLayerSubnetworkMgr_I, "multiLayerSubnetwork/MultiLayerSubnetworkMgr_I",
       "interface"},
  };
}

std::vector<WireType> linkTypes() {
  using namespace topologicalLink;
  return {
      {_tc_TopologicalLink_T, "topologicalLink/TopologicalLink_T",
       "struct {NamingAttributes_T name; string userLabel; string nativeEMSName; string owner; "
       "ConnectionDirection_T direction; LayerRate_T rate; NamingAttributes_T aEndTP; "
       "NamingAttributes_T zEndTP; NVSList_T additionalInfo}"},
      {_tc_TopologicalLinkList_T, "topologicalLink/TopologicalLinkList_T",
       "alias sequence<TopologicalLink_T>"},
      {_tc_TLCreateData_T, "topologicalLink/TLCreateData_T",
       "struct {string userLabel; boolean forceUniqueness; string owner; "
       "ConnectionDirection_T direction; LayerRate_T rate; NamingAttributes_T aEndTP; "
       "NamingAttributes_T zEndTP; NVSList_T additionalCreationInfo}"},
      {_tc_TopologicalLinkIterator_I, "topologicalLink/TopologicalLinkIterator_I", "interface"},
  };
}

std::vector<WireType> notificationTypes() {
  using namespace notifications;
  return {
      {_tc_ObjectType_T, "notifications/ObjectType_T",
       "enum {OT_EMS, OT_MANAGED_ELEMENT, OT_MULTILAYER_SUBNETWORK, OT_TOPOLOGICAL_LINK, "
       "OT_SUBNETWORK_CONNECTION, OT_PHYSICAL_TERMINATION_POINT, "
       "OT_CONNECTION_TERMINATION_POINT, OT_TERMINATION_POINT_POOL, OT_EQUIPMENT_HOLDER, "
       "OT_EQUIPMENT, OT_PROTECTION_GROUP, OT_TRAFFIC_DESCRIPTOR, OT_AID}"},
      {_tc_ObjectTypeQualifier_T, "notifications/ObjectTypeQualifier_T", "alias string"},
      {_tc_NameAndAnyValue_T, "notifications/NameAndAnyValue_T", "struct {string name; any value}"},
      {_tc_NVList_T, "notifications/NVList_T", "alias sequence<NameAndAnyValue_T>"},
      {_tc_EventList_T, "notifications/EventList_T", "alias sequence<StructuredEvent>"},
      {_tc_FileTransferStatus_T, "notifications/FileTransferStatus_T",
       "enum {FT_IN_PROGRESS, FT_FAILED, FT_COMPLETED}"},
      {_tc_PerceivedSeverity_T, "notifications/PerceivedSeverity_T",
       "enum {PS_INDETERMINATE, PS_CRITICAL, PS_MAJOR, PS_MINOR, PS_WARNING, PS_CLEARED}"},
      {_tc_PerceivedSeverityList_T, "notifications/PerceivedSeverityList_T",
       "alias sequence<PerceivedSeverity_T>"},
      {_tc_ProbableCauseList_T, "notifications/ProbableCauseList_T", "alias sequence<string>"},
      {_tc_ServiceAffecting_T, "notifications/ServiceAffecting_T",
       "enum {SA_UNKNOWN, SA_SERVICE_AFFECTING, SA_NON_SERVICE_AFFECTING}"},
      {_tc_AcknowledgeIndication_T, "notifications/AcknowledgeIndication_T",
       "enum {AI_EVENT_ACKNOWLEDGED, AI_EVENT_UNACKNOWLEDGED, AI_NA}"},
      {_tc_AlarmId_T, "notifications/AlarmId_T",
       "struct {NamingAttributes_T objectName; LayerRate_T layerRate; string probableCause; "
       "string probableCauseQualifier}"},
      {_tc_CorrelatedNotifications_T, "notifications/CorrelatedNotifications_T",
       "struct {NamingAttributes_T source; sequence<string> notifIDs}"},
      {_tc_EventIterator_I, "notifications/EventIterator_I", "interface"},
  };
}

class WireTypes : public testing::TestWithParam<WireType> {};

TEST_P(WireTypes, haveTheIdThatEveryStubHas) {
  EXPECT_EQ(GetParam().type->id(), standardId(GetParam().path));
}

TEST_P(WireTypes, areNamedAsInTheirId) {
  const std::string path = GetParam().path;
  EXPECT_EQ(GetParam().type->name(), path.substr(path.rfind('/') + 1));
}

TEST_P(WireTypes, haveTheirPartsInOrder) {
  EXPECT_EQ(definitionText(GetParam().type), GetParam().definition);
}

std::string testName(const testing::TestParamInfo<WireType>& info) {
  const std::string path = info.param.path;
  return path.substr(path.rfind('/') + 1);
}

INSTANTIATE_TEST_SUITE_P(Globaldefs, WireTypes, testing::ValuesIn(globaldefsTypes()), testName);
INSTANTIATE_TEST_SUITE_P(Session, WireTypes, testing::ValuesIn(sessionTypes()), testName);
INSTANTIATE_TEST_SUITE_P(Transmission, WireTypes, testing::ValuesIn(transmissionTypes()), testName);
INSTANTIATE_TEST_SUITE_P(Element, WireTypes, testing::ValuesIn(elementTypes()), testName);
INSTANTIATE_TEST_SUITE_P(Subnetwork, WireTypes, testing::ValuesIn(subnetworkTypes()), testName);
INSTANTIATE_TEST_SUITE_P(Link, WireTypes, testing::ValuesIn(linkTypes()), testName);
INSTANTIATE_TEST_SUITE_P(Notification, WireTypes, testing::ValuesIn(notificationTypes()), testName);

// The notification service's own types must not take over our prefix.
TEST(NotificationService, keepsItsOwnPrefix) {
  EXPECT_STREQ(CosNotification::_tc_StructuredEvent->id(),
               "IDL:omg.org/CosNotification/StructuredEvent:1.0");
  EXPECT_STREQ(CosNotification::_tc_PropertySeq->id(),
               "IDL:omg.org/CosNotification/PropertySeq:1.0");
  EXPECT_STREQ(CosNotifyChannelAdmin::_tc_EventChannel->id(),
               "IDL:omg.org/CosNotifyChannelAdmin/EventChannel:1.0");
}

TEST(NotificationService, sharesItsEventWithTheEventLists) {
  const CORBA::TypeCode_var list = notifications::_tc_EventList_T->content_type();
  const CORBA::TypeCode_var event = list->content_type();
  EXPECT_STREQ(event->id(), "IDL:omg.org/CosNotification/StructuredEvent:1.0");
}

}  // namespace

}  // namespace zk::test
