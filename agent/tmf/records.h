// From the embedded EMS's records to those the NMS is answered with. No state;
// any thread may call.
#ifndef ZK_AGENT_TMF_RECORDS_H
#define ZK_AGENT_TMF_RECORDS_H

#include "agent/ems/inventory.h"
#include "zk_quornex/idl/managers.h"

namespace zk::agent {

// The library's own texts, and over them what the EMS has stored: a stored text
// that is empty leaves the library's.
emsMgr::EMS_T emsOf(const EmsRecord& record);

// Likewise for one device. Returns 0, or the code of the EMS's services or of
// the name, with element not to be used; a device that was removed a moment ago
// gives Result::NoSuchObject.
unsigned long fillElement(const DeviceRecord& record, managedElement::ManagedElement_T& element);

multiLayerSubnetwork::MultiLayerSubnetwork_T subnetworkOf(const SubnetworkRecord& record);
topologicalLink::TopologicalLink_T linkOf(const LinkRecord& record);

}  // namespace zk::agent

#endif
