// EMSMgr_I of one session: the EMS and its top-level objects. Safe on any
// thread.
#ifndef ZK_AGENT_MANAGERS_EMSMANAGER_H
#define ZK_AGENT_MANAGERS_EMSMANAGER_H

#include "agent/managers/managerservant.h"

namespace zk::agent {

class EmsManager : public ManagerServant<POA_emsMgr::EMSMgr_I> {
 public:
  EmsManager(Paging paging, Inventory& inventory);

  void getEMS(emsMgr::EMS_T_out ems) override;
  void getAllTopLevelSubnetworks(CORBA::ULong howMany,
                                 multiLayerSubnetwork::SubnetworkList_T_out list,
                                 multiLayerSubnetwork::SubnetworkIterator_I_out it) override;
  void getAllTopLevelSubnetworkNames(CORBA::ULong howMany,
                                     globaldefs::NamingAttributesList_T_out list,
                                     globaldefs::NamingAttributesIterator_I_out it) override;
  void getAllTopLevelTopologicalLinks(CORBA::ULong howMany,
                                      topologicalLink::TopologicalLinkList_T_out list,
                                      topologicalLink::TopologicalLinkIterator_I_out it) override;
  void getAllTopLevelTopologicalLinkNames(CORBA::ULong howMany,
                                          globaldefs::NamingAttributesList_T_out list,
                                          globaldefs::NamingAttributesIterator_I_out it) override;
  void getTopLevelTopologicalLink(const globaldefs::NamingAttributes_T& name,
                                  topologicalLink::TopologicalLink_T_out link) override;
  // Those without the causes and severities that are listed.
  void getAllEMSAndMEActiveAlarms(const notifications::ProbableCauseList_T& excludedCauses,
                                  const notifications::PerceivedSeverityList_T& excludedSeverities,
                                  CORBA::ULong howMany, notifications::EventList_T_out list,
                                  notifications::EventIterator_I_out it) override;
  void getAllEMSSystemActiveAlarms(const notifications::PerceivedSeverityList_T& excludedSeverities,
                                   CORBA::ULong howMany, notifications::EventList_T_out list,
                                   notifications::EventIterator_I_out it) override;

  // Not offered.
  void createTopologicalLink(const topologicalLink::TLCreateData_T&,
                             topologicalLink::TopologicalLink_T_out) override {
    throw notImplemented();
  }
  void deleteTopologicalLink(const globaldefs::NamingAttributes_T&) override {
    throw notImplemented();
  }
  void getAllEMSAndMEUnacknowledgedActiveAlarms(const notifications::ProbableCauseList_T&,
                                                const notifications::PerceivedSeverityList_T&,
                                                CORBA::ULong, notifications::EventList_T_out,
                                                notifications::EventIterator_I_out) override {
    throw notImplemented();
  }
  void getAllEMSSystemUnacknowledgedActiveAlarms(const notifications::PerceivedSeverityList_T&,
                                                 CORBA::ULong, notifications::EventList_T_out,
                                                 notifications::EventIterator_I_out) override {
    throw notImplemented();
  }
};

}  // namespace zk::agent

#endif
