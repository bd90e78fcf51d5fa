#include "agent/managers/elementmanager.h"

#include "agent/base/sequences.h"
#include "agent/managers/activealarms.h"
#include "agent/managers/queries.h"
#include "agent/tmf/errors.h"

namespace zk::agent {

using globaldefs::NamingAttributes_T;
using globaldefs::NamingAttributesIterator_I_out;
using globaldefs::NamingAttributesList_T_out;

ElementManager::ElementManager(Paging paging, Inventory& inventory)
    : ManagerServant(std::move(paging), inventory,
                     {"getAllManagedElements", "getAllManagedElementNames",
                      "getContainingSubnetworkNames", "getManagedElement", "getAllActiveAlarms"}) {}

void ElementManager::getAllManagedElements(CORBA::ULong howMany,
                                           managedElement::ManagedElementList_T_out list,
                                           managedElement::ManagedElementIterator_I_out it) {
  answer("getAllManagedElements", howMany, list, it, [&] { return allElements(inventory_); });
}

void ElementManager::getAllManagedElementNames(CORBA::ULong howMany,
                                               NamingAttributesList_T_out list,
                                               NamingAttributesIterator_I_out it) {
  answer("getAllManagedElementNames", howMany, list, it,
         [&] { return allElementNames(inventory_); });
}

void ElementManager::getContainingSubnetworkNames(const NamingAttributes_T& name,
                                                  NamingAttributesList_T_out names) {
  refusingFailures("getContainingSubnetworkNames", [&] {
    auto list = std::make_unique<globaldefs::NamingAttributesList_T>();
    append(*list, subnetworkNameOfElement(inventory_, name));
    names = list.release();
  });
}

void ElementManager::getManagedElement(const NamingAttributes_T& name,
                                       managedElement::ManagedElement_T_out element) {
  refusingFailures("getManagedElement", [&] {
    element = new managedElement::ManagedElement_T(elementNamed(inventory_, name));
  });
}

void ElementManager::getAllActiveAlarms(
    const NamingAttributes_T& name, const notifications::ProbableCauseList_T& excludedCauses,
    const notifications::PerceivedSeverityList_T& excludedSeverities, CORBA::ULong howMany,
    notifications::EventList_T_out list, notifications::EventIterator_I_out it) {
  answer("getAllActiveAlarms", howMany, list, it, [&] {
    const long device = existingDeviceId(inventory_, name);
    return activeAlarms(inventory_, {excludedCauses, excludedSeverities}, device);
  });
}

}  // namespace zk::agent
