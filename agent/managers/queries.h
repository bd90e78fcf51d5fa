// What the managers' list operations answer from: a snapshot of the ids, and
// the records fetched page by page from the inventory, which must outlive the
// lists. No state of their own; any thread may call.
//
// The EMS has one subnetwork, which holds every element and every link; links
// are named directly beneath the EMS and are therefore also its top-level ones.
#ifndef ZK_AGENT_MANAGERS_QUERIES_H
#define ZK_AGENT_MANAGERS_QUERIES_H

#include <optional>
#include <set>
#include <string>

#include "agent/ems/inventory.h"
#include "agent/managers/iterators.h"
#include "zk_quornex/idl/events.h"
#include "zk_quornex/idl/managers.h"
#include "zk_quornex/idl/names.h"

namespace zk::agent {

PagedList<managedElement::ManagedElementList_T> allElements(const Inventory& inventory);
PagedList<globaldefs::NamingAttributesList_T> allElementNames(const Inventory& inventory);
PagedList<topologicalLink::TopologicalLinkList_T> allLinks(const Inventory& inventory);
PagedList<globaldefs::NamingAttributesList_T> allLinkNames(const Inventory& inventory);
PagedList<multiLayerSubnetwork::SubnetworkList_T> allSubnetworks(const Inventory& inventory);
PagedList<globaldefs::NamingAttributesList_T> allSubnetworkNames(const Inventory& inventory);
PagedList<topologyMap::MapObjectList_T> allNodes(const Inventory& inventory);
PagedList<topologyMap::MapObjectList_T> allSubMaps(const Inventory& inventory);
PagedList<topologyMap::MapObjectList_T> allDisplayLinks(const Inventory& inventory);

// One object by the name a client gave. Throw Refusal.
managedElement::ManagedElement_T elementNamed(const Inventory& inventory,
                                              const globaldefs::NVSList_T& name);
topologicalLink::TopologicalLink_T linkNamed(const Inventory& inventory,
                                             const globaldefs::NVSList_T& name);
multiLayerSubnetwork::MultiLayerSubnetwork_T subnetworkNamed(const Inventory& inventory,
                                                             const globaldefs::NVSList_T& name);
// A node, submap or display link. A parent in the name has to be the object's
// own.
topologyMap::MapObject_T mapObjectNamed(const Inventory& inventory,
                                        const globaldefs::NVSList_T& name);

// The element's id, when there is one of this name. Throws Refusal.
long existingDeviceId(const Inventory& inventory, const globaldefs::NVSList_T& name);

// The subnetwork that holds the element of this name.
globaldefs::NVSList_T subnetworkNameOfElement(const Inventory& inventory,
                                              const globaldefs::NVSList_T& name);

// What a query leaves out. Filters on the NMS's notifications have no say here:
// the query is how it learns what it did not hear.
struct ExcludedAlarms {
  std::set<std::string> probableCauses;
  std::set<Severity> severities;

  // Throws Refusal, invalid input, for lists that are longer than they can mean.
  ExcludedAlarms(const notifications::ProbableCauseList_T& causes,
                 const notifications::PerceivedSeverityList_T& severities);
  bool contains(const AlarmRecord& alarm) const;
};

// Instead of a device: the EMS itself.
inline constexpr long THE_EMS = 0;

// Oldest first; of the device, of the EMS itself, or without one of all.
// Alarms raised after the call are not in the list, those cleared meanwhile are
// left out, and each is told as it is when its page is fetched. inventory must
// outlive the list.
PagedList<notifications::EventList_T> activeAlarms(const Inventory& inventory,
                                                   const ExcludedAlarms& excluded,
                                                   std::optional<long> deviceId = std::nullopt);

}  // namespace zk::agent

#endif
