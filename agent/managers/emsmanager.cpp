#include "agent/managers/emsmanager.h"

#include "agent/managers/activealarms.h"
#include "agent/managers/queries.h"
#include "agent/tmf/errors.h"
#include "agent/tmf/nmsrecords.h"

namespace zk::agent {

EmsManager::EmsManager(Paging paging, Inventory& inventory)
    : ManagerServant(std::move(paging), inventory,
                     {"getEMS", "getAllTopLevelSubnetworks", "getAllTopLevelSubnetworkNames",
                      "getAllTopLevelTopologicalLinks", "getAllTopLevelTopologicalLinkNames",
                      "getTopLevelTopologicalLink", "getAllEMSAndMEActiveAlarms",
                      "getAllEMSSystemActiveAlarms"}) {}

void EmsManager::getEMS(emsMgr::EMS_T_out ems) {
  refusingFailures("getEMS", [&] { ems = new emsMgr::EMS_T(emsOf(inventory_.ems())); });
}

void EmsManager::getAllTopLevelSubnetworks(CORBA::ULong howMany,
                                           multiLayerSubnetwork::SubnetworkList_T_out list,
                                           multiLayerSubnetwork::SubnetworkIterator_I_out it) {
  answer("getAllTopLevelSubnetworks", howMany, list, it,
         [&] { return allSubnetworks(inventory_); });
}

void EmsManager::getAllTopLevelSubnetworkNames(CORBA::ULong howMany,
                                               globaldefs::NamingAttributesList_T_out list,
                                               globaldefs::NamingAttributesIterator_I_out it) {
  answer("getAllTopLevelSubnetworkNames", howMany, list, it,
         [&] { return allSubnetworkNames(inventory_); });
}

void EmsManager::getAllTopLevelTopologicalLinks(CORBA::ULong howMany,
                                                topologicalLink::TopologicalLinkList_T_out list,
                                                topologicalLink::TopologicalLinkIterator_I_out it) {
  answer("getAllTopLevelTopologicalLinks", howMany, list, it, [&] { return allLinks(inventory_); });
}

void EmsManager::getAllTopLevelTopologicalLinkNames(CORBA::ULong howMany,
                                                    globaldefs::NamingAttributesList_T_out list,
                                                    globaldefs::NamingAttributesIterator_I_out it) {
  answer("getAllTopLevelTopologicalLinkNames", howMany, list, it,
         [&] { return allLinkNames(inventory_); });
}

void EmsManager::getTopLevelTopologicalLink(const globaldefs::NamingAttributes_T& name,
                                            topologicalLink::TopologicalLink_T_out link) {
  refusingFailures("getTopLevelTopologicalLink", [&] {
    link = new topologicalLink::TopologicalLink_T(linkNamed(inventory_, name));
  });
}

void EmsManager::getAllEMSAndMEActiveAlarms(
    const notifications::ProbableCauseList_T& excludedCauses,
    const notifications::PerceivedSeverityList_T& excludedSeverities, CORBA::ULong howMany,
    notifications::EventList_T_out list, notifications::EventIterator_I_out it) {
  answer("getAllEMSAndMEActiveAlarms", howMany, list, it, [&] {
    return activeAlarms(inventory_, {excludedCauses, excludedSeverities});
  });
}

void EmsManager::getAllEMSSystemActiveAlarms(
    const notifications::PerceivedSeverityList_T& excludedSeverities, CORBA::ULong howMany,
    notifications::EventList_T_out list, notifications::EventIterator_I_out it) {
  answer("getAllEMSSystemActiveAlarms", howMany, list, it, [&] {
    return activeAlarms(inventory_, {{}, excludedSeverities}, THE_EMS);
  });
}

}  // namespace zk::agent
