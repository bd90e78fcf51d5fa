// What the map manager answers from: lists of the map's objects of one kind, and
// one object by its name. The inventory must outlive the lists. No state of
// their own; any thread may call.
#ifndef ZK_AGENT_MANAGERS_MAPQUERIES_H
#define ZK_AGENT_MANAGERS_MAPQUERIES_H

#include "agent/ems/inventory.h"
#include "agent/managers/pagedlist.h"
#include "zk_quornex/idl/managers.h"
#include "zk_quornex/idl/names.h"

namespace zk::agent {

PagedList<topologyMap::MapObjectList_T> allNodes(const Inventory& inventory);
PagedList<topologyMap::MapObjectList_T> allSubMaps(const Inventory& inventory);
PagedList<topologyMap::MapObjectList_T> allDisplayLinks(const Inventory& inventory);

// A node, submap or display link by the name a client gave. A parent in the name
// has to be the object's own. Throws Refusal.
topologyMap::MapObject_T mapObjectNamed(const Inventory& inventory,
                                        const globaldefs::NVSList_T& name);

}  // namespace zk::agent

#endif
