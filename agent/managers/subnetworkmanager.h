// MultiLayerSubnetworkMgr_I of one session: the subnetwork, its elements and its
// links. Safe on any thread.
#ifndef ZK_AGENT_MANAGERS_SUBNETWORKMANAGER_H
#define ZK_AGENT_MANAGERS_SUBNETWORKMANAGER_H

#include "agent/managers/managerservant.h"

namespace zk::agent {

class SubnetworkManager
    : public ManagerServant<POA_multiLayerSubnetwork::MultiLayerSubnetworkMgr_I> {
 public:
  SubnetworkManager(Paging paging, Inventory& inventory);

  void getAllManagedElements(const globaldefs::NamingAttributes_T& subnetwork, CORBA::ULong howMany,
                             managedElement::ManagedElementList_T_out list,
                             managedElement::ManagedElementIterator_I_out it) override;
  void getAllManagedElementNames(const globaldefs::NamingAttributes_T& subnetwork,
                                 CORBA::ULong howMany, globaldefs::NamingAttributesList_T_out list,
                                 globaldefs::NamingAttributesIterator_I_out it) override;
  void getMultiLayerSubnetwork(
      const globaldefs::NamingAttributes_T& name,
      multiLayerSubnetwork::MultiLayerSubnetwork_T_out subnetwork) override;
  void getAllTopologicalLinks(const globaldefs::NamingAttributes_T& subnetwork,
                              CORBA::ULong howMany, topologicalLink::TopologicalLinkList_T_out list,
                              topologicalLink::TopologicalLinkIterator_I_out it) override;
  void getAllTopologicalLinkNames(const globaldefs::NamingAttributes_T& subnetwork,
                                  CORBA::ULong howMany, globaldefs::NamingAttributesList_T_out list,
                                  globaldefs::NamingAttributesIterator_I_out it) override;
  void getTopologicalLink(const globaldefs::NamingAttributes_T& name,
                          topologicalLink::TopologicalLink_T_out link) override;

  // Not offered.
  void getAllEdgePointNames(const globaldefs::NamingAttributes_T&,
                            const transmissionParameters::LayerRateList_T&,
                            const transmissionParameters::LayerRateList_T&, CORBA::ULong,
                            globaldefs::NamingAttributesList_T_out,
                            globaldefs::NamingAttributesIterator_I_out) override {
    throw notImplemented();
  }
  void getAllSubnetworkConnectionNames(const globaldefs::NamingAttributes_T&,
                                       const transmissionParameters::LayerRateList_T&, CORBA::ULong,
                                       globaldefs::NamingAttributesList_T_out,
                                       globaldefs::NamingAttributesIterator_I_out) override {
    throw notImplemented();
  }
  void getAllTPPoolNames(const globaldefs::NamingAttributes_T&, CORBA::ULong,
                         globaldefs::NamingAttributesList_T_out,
                         globaldefs::NamingAttributesIterator_I_out) override {
    throw notImplemented();
  }
};

}  // namespace zk::agent

#endif
