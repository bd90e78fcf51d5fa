#include "agent/managers/subnetworkmanager.h"

#include "agent/managers/queries.h"
#include "agent/tmf/errors.h"

namespace zk::agent {

using globaldefs::NamingAttributes_T;
using globaldefs::NamingAttributesIterator_I_out;
using globaldefs::NamingAttributesList_T_out;

SubnetworkManager::SubnetworkManager(Paging paging, Inventory& inventory)
    : ManagerServant(
          std::move(paging), inventory,
          {"getAllManagedElements", "getAllManagedElementNames", "getMultiLayerSubnetwork",
           "getAllTopologicalLinks", "getAllTopologicalLinkNames", "getTopologicalLink"}) {}

void SubnetworkManager::getAllManagedElements(const NamingAttributes_T& subnetwork,
                                              CORBA::ULong howMany,
                                              managedElement::ManagedElementList_T_out list,
                                              managedElement::ManagedElementIterator_I_out it) {
  answer("getAllManagedElements", howMany, list, it, [&] {
    subnetworkNamed(inventory_, subnetwork);
    return allElements(inventory_);
  });
}

void SubnetworkManager::getAllManagedElementNames(const NamingAttributes_T& subnetwork,
                                                  CORBA::ULong howMany,
                                                  NamingAttributesList_T_out list,
                                                  NamingAttributesIterator_I_out it) {
  answer("getAllManagedElementNames", howMany, list, it, [&] {
    subnetworkNamed(inventory_, subnetwork);
    return allElementNames(inventory_);
  });
}

void SubnetworkManager::getMultiLayerSubnetwork(
    const NamingAttributes_T& name, multiLayerSubnetwork::MultiLayerSubnetwork_T_out subnetwork) {
  refusingFailures("getMultiLayerSubnetwork", [&] {
    subnetwork =
        new multiLayerSubnetwork::MultiLayerSubnetwork_T(subnetworkNamed(inventory_, name));
  });
}

void SubnetworkManager::getAllTopologicalLinks(const NamingAttributes_T& subnetwork,
                                               CORBA::ULong howMany,
                                               topologicalLink::TopologicalLinkList_T_out list,
                                               topologicalLink::TopologicalLinkIterator_I_out it) {
  answer("getAllTopologicalLinks", howMany, list, it, [&] {
    subnetworkNamed(inventory_, subnetwork);
    return allLinks(inventory_);
  });
}

void SubnetworkManager::getAllTopologicalLinkNames(const NamingAttributes_T& subnetwork,
                                                   CORBA::ULong howMany,
                                                   NamingAttributesList_T_out list,
                                                   NamingAttributesIterator_I_out it) {
  answer("getAllTopologicalLinkNames", howMany, list, it, [&] {
    subnetworkNamed(inventory_, subnetwork);
    return allLinkNames(inventory_);
  });
}

void SubnetworkManager::getTopologicalLink(const NamingAttributes_T& name,
                                           topologicalLink::TopologicalLink_T_out link) {
  refusingFailures("getTopologicalLink", [&] {
    link = new topologicalLink::TopologicalLink_T(linkNamed(inventory_, name));
  });
}

}  // namespace zk::agent
