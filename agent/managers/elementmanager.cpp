#include "agent/managers/elementmanager.h"

#include "agent/managers/activealarms.h"
#include "agent/managers/queries.h"
#include "agent/tmf/errors.h"

namespace zk::agent {

using globaldefs::NamingAttributes_T;
using globaldefs::NamingAttributesIterator_I_out;
using globaldefs::NamingAttributesList_T_out;
using transmissionParameters::LayerRateList_T;

ElementManager::ElementManager(Paging paging, Inventory& inventory)
    : ManagerServant(inventory,
                     {"getAllManagedElements", "getAllManagedElementNames",
                      "getContainingSubnetworkNames", "getManagedElement", "getAllActiveAlarms"}),
      paging_(std::move(paging)),
      inventory_(inventory) {}

void ElementManager::getAllManagedElements(CORBA::ULong howMany,
                                           managedElement::ManagedElementList_T_out list,
                                           managedElement::ManagedElementIterator_I_out it) {
  guarded("getAllManagedElements", [&] {
    answerList<ElementIteration>(allElements(inventory_), howMany, paging_, list, it);
  });
}

void ElementManager::getAllManagedElementNames(CORBA::ULong howMany,
                                               NamingAttributesList_T_out list,
                                               NamingAttributesIterator_I_out it) {
  guarded("getAllManagedElementNames", [&] {
    answerList<NameIteration>(allElementNames(inventory_), howMany, paging_, list, it);
  });
}

void ElementManager::getContainingSubnetworkNames(const NamingAttributes_T& name,
                                                  NamingAttributesList_T_out names) {
  guarded("getContainingSubnetworkNames", [&] {
    globaldefs::NamingAttributesList_T_var list = new globaldefs::NamingAttributesList_T;
    appendEntry(list.inout(), subnetworkNameOfElement(inventory_, name));
    names = list._retn();
  });
}

void ElementManager::getManagedElement(const NamingAttributes_T& name,
                                       managedElement::ManagedElement_T_out element) {
  guarded("getManagedElement",
          [&] { element = new managedElement::ManagedElement_T(elementNamed(inventory_, name)); });
}

void ElementManager::getAllActiveAlarms(
    const NamingAttributes_T& name, const notifications::ProbableCauseList_T& excludedCauses,
    const notifications::PerceivedSeverityList_T& excludedSeverities, CORBA::ULong howMany,
    notifications::EventList_T_out list, notifications::EventIterator_I_out it) {
  guarded("getAllActiveAlarms", [&] {
    const long device = existingDeviceId(inventory_, name);
    answerList<EventIteration>(
        activeAlarms(inventory_, {excludedCauses, excludedSeverities}, device), howMany, paging_,
        list, it);
  });
}

void ElementManager::getAllPTPNames(const NamingAttributes_T&, const LayerRateList_T&,
                                    const LayerRateList_T&, CORBA::ULong,
                                    NamingAttributesList_T_out, NamingAttributesIterator_I_out) {
  throw notImplemented();
}

void ElementManager::getContainedPotentialTPNames(const NamingAttributes_T&, const LayerRateList_T&,
                                                  CORBA::ULong, NamingAttributesList_T_out,
                                                  NamingAttributesIterator_I_out) {
  throw notImplemented();
}

void ElementManager::getContainedInUseTPNames(const NamingAttributes_T&, const LayerRateList_T&,
                                              CORBA::ULong, NamingAttributesList_T_out,
                                              NamingAttributesIterator_I_out) {
  throw notImplemented();
}

void ElementManager::getContainedCurrentTPNames(const NamingAttributes_T&, const LayerRateList_T&,
                                                CORBA::ULong, NamingAttributesList_T_out,
                                                NamingAttributesIterator_I_out) {
  throw notImplemented();
}

void ElementManager::getContainingTPNames(const NamingAttributes_T&, NamingAttributesList_T_out) {
  throw notImplemented();
}

void ElementManager::getAllUnacknowledgedActiveAlarms(const NamingAttributes_T&,
                                                      const notifications::ProbableCauseList_T&,
                                                      const notifications::PerceivedSeverityList_T&,
                                                      CORBA::ULong, notifications::EventList_T_out,
                                                      notifications::EventIterator_I_out) {
  throw notImplemented();
}

}  // namespace zk::agent
