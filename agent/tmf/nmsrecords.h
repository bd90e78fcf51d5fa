// From the embedded EMS's records to those that the NMS is told. No state; any
// thread may call. All but fillElement throw Refusal, internal error, for an
// object that cannot be named.
#ifndef ZK_AGENT_TMF_NMSRECORDS_H
#define ZK_AGENT_TMF_NMSRECORDS_H

#include "agent/ems/records.h"
#include "zk_quornex/idl/managers.h"

namespace zk::agent {

// The library's own texts, and over them what the EMS has stored: a stored text
// that is empty leaves the library's.
emsMgr::EMS_T emsOf(const EmsRecord& record);

// Likewise for one device. Returns 0, or the code of the EMS's services or of
// the name, with element not to be used; a device that was removed a moment ago
// gives Result::NO_SUCH_OBJECT.
unsigned long fillElement(const DeviceRecord& record, managedElement::ManagedElement_T& element);

multiLayerSubnetwork::MultiLayerSubnetwork_T subnetworkOf(const SubnetworkRecord& record);
topologicalLink::TopologicalLink_T linkOf(const LinkRecord& record);

topologyMap::MapObject_T mapObjectOf(const NodeRecord& node);
topologyMap::MapObject_T mapObjectOf(const SubMapRecord& subMap);
topologyMap::MapObject_T mapObjectOf(const DisplayLinkRecord& displayLink);
// It has no labels; "topologicalLink" in its additionalInfo is the id of the
// link over it.
topologyMap::MapObject_T mapObjectOf(const PhysicalLinkRecord& physicalLink);

}  // namespace zk::agent

#endif
