// Managers that offer nothing: a fake overrides what it has.
#ifndef ZK_TESTS_NMS_SUPPORT_REFUSING_H
#define ZK_TESTS_NMS_SUPPORT_REFUSING_H

#include "zk_quornex/idl/events.h"
#include "zk_quornex/idl/managers.h"
#include "zk_quornex/idl/names.h"

namespace zk::test {

using globaldefs::NVSList_T;
using notifications::EventIterator_I_out;
using notifications::EventList_T_out;
using notifications::PerceivedSeverityList_T;
using notifications::ProbableCauseList_T;
using transmissionParameters::LayerRateList_T;
using NamesOut = globaldefs::NamingAttributesList_T_out;
using NamesIteratorOut = globaldefs::NamingAttributesIterator_I_out;

[[noreturn]] inline void refuse() {
  throw globaldefs::ProcessingFailureException(globaldefs::EXCPT_NOT_IMPLEMENTED, "");
}

template <class Skeleton>
class RefusingCommon : public Skeleton {
 public:
  void setNativeEMSName(const NVSList_T&, const char*) override { refuse(); }
  void setUserLabel(const NVSList_T&, const char*, CORBA::Boolean) override { refuse(); }
  void setOwner(const NVSList_T&, const char*) override { refuse(); }
  void getCapabilities(common::CapabilityList_T_out) override { refuse(); }
  void setAdditionalInfo(const NVSList_T&, NVSList_T&) override { refuse(); }
};

class RefusingEmsMgr : public RefusingCommon<POA_emsMgr::EMSMgr_I> {
 public:
  void getEMS(emsMgr::EMS_T_out) override { refuse(); }
  void getAllTopLevelSubnetworks(CORBA::ULong, multiLayerSubnetwork::SubnetworkList_T_out,
                                 multiLayerSubnetwork::SubnetworkIterator_I_out) override {
    refuse();
  }
  void getAllTopLevelSubnetworkNames(CORBA::ULong, NamesOut, NamesIteratorOut) override {
    refuse();
  }
  void getAllTopLevelTopologicalLinks(CORBA::ULong, topologicalLink::TopologicalLinkList_T_out,
                                      topologicalLink::TopologicalLinkIterator_I_out) override {
    refuse();
  }
  void getAllTopLevelTopologicalLinkNames(CORBA::ULong, NamesOut, NamesIteratorOut) override {
    refuse();
  }
  void getTopLevelTopologicalLink(const NVSList_T&,
                                  topologicalLink::TopologicalLink_T_out) override {
    refuse();
  }
  void getAllEMSAndMEActiveAlarms(const ProbableCauseList_T&, const PerceivedSeverityList_T&,
                                  CORBA::ULong, EventList_T_out, EventIterator_I_out) override {
    refuse();
  }
  void getAllEMSSystemActiveAlarms(const PerceivedSeverityList_T&, CORBA::ULong, EventList_T_out,
                                   EventIterator_I_out) override {
    refuse();
  }
  void createTopologicalLink(const topologicalLink::TLCreateData_T&,
                             topologicalLink::TopologicalLink_T_out) override {
    refuse();
  }
  void deleteTopologicalLink(const NVSList_T&) override { refuse(); }
  void getAllEMSAndMEUnacknowledgedActiveAlarms(const ProbableCauseList_T&,
                                                const PerceivedSeverityList_T&, CORBA::ULong,
                                                EventList_T_out, EventIterator_I_out) override {
    refuse();
  }
  void getAllEMSSystemUnacknowledgedActiveAlarms(const PerceivedSeverityList_T&, CORBA::ULong,
                                                 EventList_T_out, EventIterator_I_out) override {
    refuse();
  }
};

class RefusingElementMgr : public RefusingCommon<POA_managedElementManager::ManagedElementMgr_I> {
 public:
  void getAllManagedElements(CORBA::ULong, managedElement::ManagedElementList_T_out,
                             managedElement::ManagedElementIterator_I_out) override {
    refuse();
  }
  void getAllManagedElementNames(CORBA::ULong, NamesOut, NamesIteratorOut) override { refuse(); }
  void getContainingSubnetworkNames(const NVSList_T&, NamesOut) override { refuse(); }
  void getManagedElement(const NVSList_T&, managedElement::ManagedElement_T_out) override {
    refuse();
  }
  void getAllActiveAlarms(const NVSList_T&, const ProbableCauseList_T&,
                          const PerceivedSeverityList_T&, CORBA::ULong, EventList_T_out,
                          EventIterator_I_out) override {
    refuse();
  }
  void getAllPTPNames(const NVSList_T&, const LayerRateList_T&, const LayerRateList_T&,
                      CORBA::ULong, NamesOut, NamesIteratorOut) override {
    refuse();
  }
  void getContainedPotentialTPNames(const NVSList_T&, const LayerRateList_T&, CORBA::ULong,
                                    NamesOut, NamesIteratorOut) override {
    refuse();
  }
  void getContainedInUseTPNames(const NVSList_T&, const LayerRateList_T&, CORBA::ULong, NamesOut,
                                NamesIteratorOut) override {
    refuse();
  }
  void getContainedCurrentTPNames(const NVSList_T&, const LayerRateList_T&, CORBA::ULong, NamesOut,
                                  NamesIteratorOut) override {
    refuse();
  }
  void getContainingTPNames(const NVSList_T&, NamesOut) override { refuse(); }
  void getAllUnacknowledgedActiveAlarms(const NVSList_T&, const ProbableCauseList_T&,
                                        const PerceivedSeverityList_T&, CORBA::ULong,
                                        EventList_T_out, EventIterator_I_out) override {
    refuse();
  }
};

class RefusingSubnetworkMgr
    : public RefusingCommon<POA_multiLayerSubnetwork::MultiLayerSubnetworkMgr_I> {
 public:
  void getAllManagedElements(const NVSList_T&, CORBA::ULong,
                             managedElement::ManagedElementList_T_out,
                             managedElement::ManagedElementIterator_I_out) override {
    refuse();
  }
  void getAllManagedElementNames(const NVSList_T&, CORBA::ULong, NamesOut,
                                 NamesIteratorOut) override {
    refuse();
  }
  void getMultiLayerSubnetwork(const NVSList_T&,
                               multiLayerSubnetwork::MultiLayerSubnetwork_T_out) override {
    refuse();
  }
  void getAllTopologicalLinks(const NVSList_T&, CORBA::ULong,
                              topologicalLink::TopologicalLinkList_T_out,
                              topologicalLink::TopologicalLinkIterator_I_out) override {
    refuse();
  }
  void getAllTopologicalLinkNames(const NVSList_T&, CORBA::ULong, NamesOut,
                                  NamesIteratorOut) override {
    refuse();
  }
  void getTopologicalLink(const NVSList_T&, topologicalLink::TopologicalLink_T_out) override {
    refuse();
  }
  void getAllEdgePointNames(const NVSList_T&, const LayerRateList_T&, const LayerRateList_T&,
                            CORBA::ULong, NamesOut, NamesIteratorOut) override {
    refuse();
  }
  void getAllSubnetworkConnectionNames(const NVSList_T&, const LayerRateList_T&, CORBA::ULong,
                                       NamesOut, NamesIteratorOut) override {
    refuse();
  }
  void getAllTPPoolNames(const NVSList_T&, CORBA::ULong, NamesOut, NamesIteratorOut) override {
    refuse();
  }
};

class RefusingMapMgr : public RefusingCommon<POA_topologyMap::TopologyMapMgr_I> {
 public:
  void getAllNodes(CORBA::ULong, topologyMap::MapObjectList_T_out,
                   topologyMap::MapObjectIterator_I_out) override {
    refuse();
  }
  void getAllSubMaps(CORBA::ULong, topologyMap::MapObjectList_T_out,
                     topologyMap::MapObjectIterator_I_out) override {
    refuse();
  }
  void getAllDisplayLinks(CORBA::ULong, topologyMap::MapObjectList_T_out,
                          topologyMap::MapObjectIterator_I_out) override {
    refuse();
  }
  void getMapObject(const NVSList_T&, topologyMap::MapObject_T_out) override { refuse(); }
};

}  // namespace zk::test

#endif
