// What every manager is made of: labels, owners and native names of any object,
// its capabilities, its lists. Safe on any thread.
#ifndef ZK_AGENT_MANAGERS_MANAGERS_H
#define ZK_AGENT_MANAGERS_MANAGERS_H

#include <utility>
#include <vector>

#include "agent/ems/inventory.h"
#include "agent/managers/iterators.h"
#include "zk_quornex/idl/managers.h"
#include "zk_quornex/idl/names.h"

namespace zk::agent {

// All throw Refusal. A change is stored, and reported to the NMSs, when the
// call returns.
class CommonOperations {
 public:
  // inventory must outlive this object and be the one behind the platform's EMS
  // services.
  explicit CommonOperations(Inventory& inventory) : inventory_(inventory) {}

  void setUserLabel(const globaldefs::NVSList_T& name, const char* label, bool unique) const;
  void setOwner(const globaldefs::NVSList_T& name, const char* owner) const;
  void setNativeName(const globaldefs::NVSList_T& name, const char* nativeName) const;

 private:
  Inventory& inventory_;
};

// Names of the operations that a manager serves, beyond its common ones.
using OperationNames = std::vector<const char*>;

common::CapabilityList_T capabilitiesOf(const OperationNames& operations);

// The common half of a manager's servant.
template <class Skeleton>
class ManagerServant : public virtual Skeleton, public virtual PortableServer::RefCountServantBase {
 public:
  // What the operations take and give; …Left is the iterator over a list's rest.
  using Name = globaldefs::NamingAttributes_T;
  using NamesOut = globaldefs::NamingAttributesList_T_out;
  using NamesLeft = globaldefs::NamingAttributesIterator_I_out;
  using ElementsOut = managedElement::ManagedElementList_T_out;
  using ElementsLeft = managedElement::ManagedElementIterator_I_out;
  using LinkOut = topologicalLink::TopologicalLink_T_out;
  using LinksOut = topologicalLink::TopologicalLinkList_T_out;
  using LinksLeft = topologicalLink::TopologicalLinkIterator_I_out;
  using EventsOut = notifications::EventList_T_out;
  using EventsLeft = notifications::EventIterator_I_out;
  using Causes = notifications::ProbableCauseList_T;
  using Severities = notifications::PerceivedSeverityList_T;
  using Rates = transmissionParameters::LayerRateList_T;

  // inventory as above.
  ManagerServant(Paging paging, Inventory& inventory, OperationNames operations)
      : inventory_(inventory),
        common_(inventory),
        paging_(std::move(paging)),
        operations_(std::move(operations)) {}

  void setNativeEMSName(const Name& name, const char* text) override {
    common_.setNativeName(name, text);
  }
  void setUserLabel(const Name& name, const char* text, CORBA::Boolean enforceUniqueness) override {
    common_.setUserLabel(name, text, enforceUniqueness);
  }
  void setOwner(const Name& name, const char* text) override { common_.setOwner(name, text); }
  void getCapabilities(common::CapabilityList_T_out capabilities) override {
    capabilities = new common::CapabilityList_T(capabilitiesOf(operations_));
  }
  // The EMS keeps no additional information.
  void setAdditionalInfo(const Name&, globaldefs::NVSList_T&) override { throw notImplemented(); }

 protected:
  // Answers a list operation with what makeList gives of the inventory.
  template <class ListOut, class IteratorOut, class MakeList>
  void answer(const char* operation, CORBA::ULong howMany, ListOut list, IteratorOut iterator,
              MakeList makeList) const {
    refusingFailures(operation,
                     [&] { answerList(makeList(inventory_), howMany, paging_, list, iterator); });
  }

  const Inventory& inventory_;

 private:
  const CommonOperations common_;
  const Paging paging_;
  const OperationNames operations_;
};

// The EMS and its top-level objects. Alarms are those without the causes and
// severities that are listed.
class EmsManager : public ManagerServant<POA_emsMgr::EMSMgr_I> {
 public:
  EmsManager(Paging paging, Inventory& inventory);

  void getEMS(emsMgr::EMS_T_out ems) override;
  void getAllTopLevelSubnetworks(CORBA::ULong howMany,
                                 multiLayerSubnetwork::SubnetworkList_T_out list,
                                 multiLayerSubnetwork::SubnetworkIterator_I_out it) override;
  void getAllTopLevelSubnetworkNames(CORBA::ULong howMany, NamesOut list, NamesLeft it) override;
  void getAllTopLevelTopologicalLinks(CORBA::ULong howMany, LinksOut list, LinksLeft it) override;
  void getAllTopLevelTopologicalLinkNames(CORBA::ULong howMany, NamesOut list,
                                          NamesLeft it) override;
  void getTopLevelTopologicalLink(const Name& name, LinkOut link) override;
  void getAllEMSAndMEActiveAlarms(const Causes& excludedCauses,
                                  const Severities& excludedSeverities, CORBA::ULong howMany,
                                  EventsOut list, EventsLeft it) override;
  void getAllEMSSystemActiveAlarms(const Severities& excludedSeverities, CORBA::ULong howMany,
                                   EventsOut list, EventsLeft it) override;

  // Not offered.
  void createTopologicalLink(const topologicalLink::TLCreateData_T&, LinkOut) override {
    throw notImplemented();
  }
  void deleteTopologicalLink(const Name&) override { throw notImplemented(); }
  void getAllEMSAndMEUnacknowledgedActiveAlarms(const Causes&, const Severities&, CORBA::ULong,
                                                EventsOut, EventsLeft) override {
    throw notImplemented();
  }
  void getAllEMSSystemUnacknowledgedActiveAlarms(const Severities&, CORBA::ULong, EventsOut,
                                                 EventsLeft) override {
    throw notImplemented();
  }
};

// The devices. Alarms are those without the causes and severities that are listed.
class ElementManager : public ManagerServant<POA_managedElementManager::ManagedElementMgr_I> {
 public:
  ElementManager(Paging paging, Inventory& inventory);

  void getAllManagedElements(CORBA::ULong howMany, ElementsOut list, ElementsLeft it) override;
  void getAllManagedElementNames(CORBA::ULong howMany, NamesOut list, NamesLeft it) override;
  void getContainingSubnetworkNames(const Name& name, NamesOut names) override;
  void getManagedElement(const Name& name, managedElement::ManagedElement_T_out element) override;
  void getAllActiveAlarms(const Name& name, const Causes& excludedCauses,
                          const Severities& excludedSeverities, CORBA::ULong howMany,
                          EventsOut list, EventsLeft it) override;

  // Not offered.
  void getAllPTPNames(const Name&, const Rates&, const Rates&, CORBA::ULong, NamesOut,
                      NamesLeft) override {
    throw notImplemented();
  }
  void getContainedPotentialTPNames(const Name&, const Rates&, CORBA::ULong, NamesOut,
                                    NamesLeft) override {
    throw notImplemented();
  }
  void getContainedInUseTPNames(const Name&, const Rates&, CORBA::ULong, NamesOut,
                                NamesLeft) override {
    throw notImplemented();
  }
  void getContainedCurrentTPNames(const Name&, const Rates&, CORBA::ULong, NamesOut,
                                  NamesLeft) override {
    throw notImplemented();
  }
  void getContainingTPNames(const Name&, NamesOut) override { throw notImplemented(); }
  void getAllUnacknowledgedActiveAlarms(const Name&, const Causes&, const Severities&, CORBA::ULong,
                                        EventsOut, EventsLeft) override {
    throw notImplemented();
  }
};

// The subnetwork, its elements and its links.
class SubnetworkManager
    : public ManagerServant<POA_multiLayerSubnetwork::MultiLayerSubnetworkMgr_I> {
 public:
  SubnetworkManager(Paging paging, Inventory& inventory);

  void getAllManagedElements(const Name& subnetwork, CORBA::ULong howMany, ElementsOut list,
                             ElementsLeft it) override;
  void getAllManagedElementNames(const Name& subnetwork, CORBA::ULong howMany, NamesOut list,
                                 NamesLeft it) override;
  void getMultiLayerSubnetwork(
      const Name& name, multiLayerSubnetwork::MultiLayerSubnetwork_T_out subnetwork) override;
  void getAllTopologicalLinks(const Name& subnetwork, CORBA::ULong howMany, LinksOut list,
                              LinksLeft it) override;
  void getAllTopologicalLinkNames(const Name& subnetwork, CORBA::ULong howMany, NamesOut list,
                                  NamesLeft it) override;
  void getTopologicalLink(const Name& name, LinkOut link) override;

  // Not offered.
  void getAllEdgePointNames(const Name&, const Rates&, const Rates&, CORBA::ULong, NamesOut,
                            NamesLeft) override {
    throw notImplemented();
  }
  void getAllSubnetworkConnectionNames(const Name&, const Rates&, CORBA::ULong, NamesOut,
                                       NamesLeft) override {
    throw notImplemented();
  }
  void getAllTPPoolNames(const Name&, CORBA::ULong, NamesOut, NamesLeft) override {
    throw notImplemented();
  }

 private:
  // What all gives of the EMS, if this is the subnetwork's name.
  template <class ListOut, class IteratorOut, class List>
  void answerWithin(const Name& subnetwork, const char* operation, CORBA::ULong howMany,
                    ListOut list, IteratorOut it, PagedList<List> (*all)(const Inventory&)) const;
};

// The EMS's own map.
class MapManager : public ManagerServant<POA_topologyMap::TopologyMapMgr_I> {
 public:
  using ObjectsOut = topologyMap::MapObjectList_T_out;
  using ObjectsLeft = topologyMap::MapObjectIterator_I_out;

  MapManager(Paging paging, Inventory& inventory);

  void getAllNodes(CORBA::ULong howMany, ObjectsOut list, ObjectsLeft it) override;
  void getAllSubMaps(CORBA::ULong howMany, ObjectsOut list, ObjectsLeft it) override;
  void getAllDisplayLinks(CORBA::ULong howMany, ObjectsOut list, ObjectsLeft it) override;
  void getMapObject(const Name& name, topologyMap::MapObject_T_out object) override;
};

}  // namespace zk::agent

#endif
