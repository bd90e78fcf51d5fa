// ManagedElementMgr_I of one session: the devices. Safe on any thread.
#ifndef ZK_AGENT_MANAGERS_ELEMENTMANAGER_H
#define ZK_AGENT_MANAGERS_ELEMENTMANAGER_H

#include "agent/managers/managerservant.h"

namespace zk::agent {

class ElementManager : public ManagerServant<POA_managedElementManager::ManagedElementMgr_I> {
 public:
  ElementManager(Paging paging, Inventory& inventory);

  void getAllManagedElements(CORBA::ULong howMany, managedElement::ManagedElementList_T_out list,
                             managedElement::ManagedElementIterator_I_out it) override;
  void getAllManagedElementNames(CORBA::ULong howMany, globaldefs::NamingAttributesList_T_out list,
                                 globaldefs::NamingAttributesIterator_I_out it) override;
  void getContainingSubnetworkNames(const globaldefs::NamingAttributes_T& name,
                                    globaldefs::NamingAttributesList_T_out names) override;
  void getManagedElement(const globaldefs::NamingAttributes_T& name,
                         managedElement::ManagedElement_T_out element) override;
  // Those without the causes and severities that are listed.
  void getAllActiveAlarms(const globaldefs::NamingAttributes_T& name,
                          const notifications::ProbableCauseList_T& excludedCauses,
                          const notifications::PerceivedSeverityList_T& excludedSeverities,
                          CORBA::ULong howMany, notifications::EventList_T_out list,
                          notifications::EventIterator_I_out it) override;

  // Not offered.
  void getAllPTPNames(const globaldefs::NamingAttributes_T&,
                      const transmissionParameters::LayerRateList_T&,
                      const transmissionParameters::LayerRateList_T&, CORBA::ULong,
                      globaldefs::NamingAttributesList_T_out,
                      globaldefs::NamingAttributesIterator_I_out) override {
    throw notImplemented();
  }
  void getContainedPotentialTPNames(const globaldefs::NamingAttributes_T&,
                                    const transmissionParameters::LayerRateList_T&, CORBA::ULong,
                                    globaldefs::NamingAttributesList_T_out,
                                    globaldefs::NamingAttributesIterator_I_out) override {
    throw notImplemented();
  }
  void getContainedInUseTPNames(const globaldefs::NamingAttributes_T&,
                                const transmissionParameters::LayerRateList_T&, CORBA::ULong,
                                globaldefs::NamingAttributesList_T_out,
                                globaldefs::NamingAttributesIterator_I_out) override {
    throw notImplemented();
  }
  void getContainedCurrentTPNames(const globaldefs::NamingAttributes_T&,
                                  const transmissionParameters::LayerRateList_T&, CORBA::ULong,
                                  globaldefs::NamingAttributesList_T_out,
                                  globaldefs::NamingAttributesIterator_I_out) override {
    throw notImplemented();
  }
  void getContainingTPNames(const globaldefs::NamingAttributes_T&,
                            globaldefs::NamingAttributesList_T_out) override {
    throw notImplemented();
  }
  void getAllUnacknowledgedActiveAlarms(const globaldefs::NamingAttributes_T&,
                                        const notifications::ProbableCauseList_T&,
                                        const notifications::PerceivedSeverityList_T&, CORBA::ULong,
                                        notifications::EventList_T_out,
                                        notifications::EventIterator_I_out) override {
    throw notImplemented();
  }
};

}  // namespace zk::agent

#endif
