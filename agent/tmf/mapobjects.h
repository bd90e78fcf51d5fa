// The objects of the EMS's map as the NMS is told of them. No state; any thread
// may call. All throw Refusal, internal error, for an object that cannot be
// named.
#ifndef ZK_AGENT_TMF_MAPOBJECTS_H
#define ZK_AGENT_TMF_MAPOBJECTS_H

#include "agent/ems/records.h"
#include "zk_quornex/idl/managers.h"

namespace zk::agent {

topologyMap::MapObject_T mapObjectOf(const NodeRecord& node);
topologyMap::MapObject_T mapObjectOf(const SubMapRecord& subMap);
topologyMap::MapObject_T mapObjectOf(const DisplayLinkRecord& displayLink);
// It has no labels; "topologicalLink" in its additionalInfo is the id of the
// link over it.
topologyMap::MapObject_T mapObjectOf(const PhysicalLinkRecord& physicalLink);

}  // namespace zk::agent

#endif
