#include "agent/managers/emsmanager.h"

#include "agent/managers/activealarms.h"
#include "agent/managers/queries.h"
#include "agent/tmf/errors.h"
#include "agent/tmf/records.h"

namespace zk::agent {

EmsManager::EmsManager(Paging paging, Inventory& inventory)
    : ManagerServant(inventory, {"getEMS", "getAllTopLevelSubnetworks",
                                 "getAllTopLevelSubnetworkNames", "getAllTopLevelTopologicalLinks",
                                 "getAllTopLevelTopologicalLinkNames", "getTopLevelTopologicalLink",
                                 "getAllEMSAndMEActiveAlarms", "getAllEMSSystemActiveAlarms"}),
      paging_(std::move(paging)),
      inventory_(inventory) {}

void EmsManager::getEMS(emsMgr::EMS_T_out ems) {
  guarded("getEMS", [&] { ems = new emsMgr::EMS_T(emsOf(inventory_.ems())); });
}

void EmsManager::getAllTopLevelSubnetworks(CORBA::ULong howMany,
                                           multiLayerSubnetwork::SubnetworkList_T_out list,
                                           multiLayerSubnetwork::SubnetworkIterator_I_out it) {
  guarded("getAllTopLevelSubnetworks", [&] {
    answerList<SubnetworkIteration>(allSubnetworks(inventory_), howMany, paging_, list, it);
  });
}

void EmsManager::getAllTopLevelSubnetworkNames(CORBA::ULong howMany,
                                               globaldefs::NamingAttributesList_T_out list,
                                               globaldefs::NamingAttributesIterator_I_out it) {
  guarded("getAllTopLevelSubnetworkNames", [&] {
    answerList<NameIteration>(allSubnetworkNames(inventory_), howMany, paging_, list, it);
  });
}

void EmsManager::getAllTopLevelTopologicalLinks(CORBA::ULong howMany,
                                                topologicalLink::TopologicalLinkList_T_out list,
                                                topologicalLink::TopologicalLinkIterator_I_out it) {
  guarded("getAllTopLevelTopologicalLinks",
          [&] { answerList<LinkIteration>(allLinks(inventory_), howMany, paging_, list, it); });
}

void EmsManager::getAllTopLevelTopologicalLinkNames(CORBA::ULong howMany,
                                                    globaldefs::NamingAttributesList_T_out list,
                                                    globaldefs::NamingAttributesIterator_I_out it) {
  guarded("getAllTopLevelTopologicalLinkNames",
          [&] { answerList<NameIteration>(allLinkNames(inventory_), howMany, paging_, list, it); });
}

void EmsManager::getTopLevelTopologicalLink(const globaldefs::NamingAttributes_T& name,
                                            topologicalLink::TopologicalLink_T_out link) {
  guarded("getTopLevelTopologicalLink",
          [&] { link = new topologicalLink::TopologicalLink_T(linkNamed(inventory_, name)); });
}

void EmsManager::getAllEMSAndMEActiveAlarms(
    const notifications::ProbableCauseList_T& excludedCauses,
    const notifications::PerceivedSeverityList_T& excludedSeverities, CORBA::ULong howMany,
    notifications::EventList_T_out list, notifications::EventIterator_I_out it) {
  guarded("getAllEMSAndMEActiveAlarms", [&] {
    answerList<EventIteration>(activeAlarms(inventory_, {excludedCauses, excludedSeverities}),
                               howMany, paging_, list, it);
  });
}

void EmsManager::getAllEMSSystemActiveAlarms(
    const notifications::PerceivedSeverityList_T& excludedSeverities, CORBA::ULong howMany,
    notifications::EventList_T_out list, notifications::EventIterator_I_out it) {
  guarded("getAllEMSSystemActiveAlarms", [&] {
    answerList<EventIteration>(activeAlarms(inventory_, {{}, excludedSeverities}, THE_EMS), howMany,
                               paging_, list, it);
  });
}

void EmsManager::createTopologicalLink(const topologicalLink::TLCreateData_T&,
                                       topologicalLink::TopologicalLink_T_out) {
  throw notImplemented();
}

void EmsManager::deleteTopologicalLink(const globaldefs::NamingAttributes_T&) {
  throw notImplemented();
}

void EmsManager::getAllEMSAndMEUnacknowledgedActiveAlarms(
    const notifications::ProbableCauseList_T&, const notifications::PerceivedSeverityList_T&,
    CORBA::ULong, notifications::EventList_T_out, notifications::EventIterator_I_out) {
  throw notImplemented();
}

void EmsManager::getAllEMSSystemUnacknowledgedActiveAlarms(
    const notifications::PerceivedSeverityList_T&, CORBA::ULong, notifications::EventList_T_out,
    notifications::EventIterator_I_out) {
  throw notImplemented();
}

}  // namespace zk::agent
