#include "agent/managers/subnetworkmanager.h"

#include "agent/managers/queries.h"
#include "agent/tmf/errors.h"

namespace zk::agent {

using globaldefs::NamingAttributes_T;
using globaldefs::NamingAttributesIterator_I_out;
using globaldefs::NamingAttributesList_T_out;

SubnetworkManager::SubnetworkManager(Paging paging, Inventory& inventory)
    : ManagerServant(inventory, {"getAllManagedElements", "getAllManagedElementNames",
                                 "getMultiLayerSubnetwork", "getAllTopologicalLinks",
                                 "getAllTopologicalLinkNames", "getTopologicalLink"}),
      paging_(std::move(paging)),
      inventory_(inventory) {}

void SubnetworkManager::getAllManagedElements(const NamingAttributes_T& subnetwork,
                                              CORBA::ULong howMany,
                                              managedElement::ManagedElementList_T_out list,
                                              managedElement::ManagedElementIterator_I_out it) {
  guarded("getAllManagedElements", [&] {
    subnetworkNamed(inventory_, subnetwork);
    answerList<ElementIteration>(allElements(inventory_), howMany, paging_, list, it);
  });
}

void SubnetworkManager::getAllManagedElementNames(const NamingAttributes_T& subnetwork,
                                                  CORBA::ULong howMany,
                                                  NamingAttributesList_T_out list,
                                                  NamingAttributesIterator_I_out it) {
  guarded("getAllManagedElementNames", [&] {
    subnetworkNamed(inventory_, subnetwork);
    answerList<NameIteration>(allElementNames(inventory_), howMany, paging_, list, it);
  });
}

void SubnetworkManager::getMultiLayerSubnetwork(
    const NamingAttributes_T& name, multiLayerSubnetwork::MultiLayerSubnetwork_T_out subnetwork) {
  guarded("getMultiLayerSubnetwork", [&] {
    subnetwork =
        new multiLayerSubnetwork::MultiLayerSubnetwork_T(subnetworkNamed(inventory_, name));
  });
}

void SubnetworkManager::getAllTopologicalLinks(const NamingAttributes_T& subnetwork,
                                               CORBA::ULong howMany,
                                               topologicalLink::TopologicalLinkList_T_out list,
                                               topologicalLink::TopologicalLinkIterator_I_out it) {
  guarded("getAllTopologicalLinks", [&] {
    subnetworkNamed(inventory_, subnetwork);
    answerList<LinkIteration>(allLinks(inventory_), howMany, paging_, list, it);
  });
}

void SubnetworkManager::getAllTopologicalLinkNames(const NamingAttributes_T& subnetwork,
                                                   CORBA::ULong howMany,
                                                   NamingAttributesList_T_out list,
                                                   NamingAttributesIterator_I_out it) {
  guarded("getAllTopologicalLinkNames", [&] {
    subnetworkNamed(inventory_, subnetwork);
    answerList<NameIteration>(allLinkNames(inventory_), howMany, paging_, list, it);
  });
}

void SubnetworkManager::getTopologicalLink(const NamingAttributes_T& name,
                                           topologicalLink::TopologicalLink_T_out link) {
  guarded("getTopologicalLink",
          [&] { link = new topologicalLink::TopologicalLink_T(linkNamed(inventory_, name)); });
}

void SubnetworkManager::getAllEdgePointNames(const NamingAttributes_T&,
                                             const transmissionParameters::LayerRateList_T&,
                                             CORBA::ULong, NamingAttributesList_T_out,
                                             NamingAttributesIterator_I_out) {
  throw notImplemented();
}

void SubnetworkManager::getAllSubnetworkConnectionNames(
    const NamingAttributes_T&, const transmissionParameters::LayerRateList_T&, CORBA::ULong,
    NamingAttributesList_T_out, NamingAttributesIterator_I_out) {
  throw notImplemented();
}

void SubnetworkManager::getAllTPPoolNames(const NamingAttributes_T&, CORBA::ULong,
                                          NamingAttributesList_T_out,
                                          NamingAttributesIterator_I_out) {
  throw notImplemented();
}

}  // namespace zk::agent
