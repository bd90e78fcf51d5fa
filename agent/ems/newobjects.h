// What a new object must be before it is stored. The caller holds the
// inventory's lock.
#ifndef ZK_AGENT_EMS_NEWOBJECTS_H
#define ZK_AGENT_EMS_NEWOBJECTS_H

#include "agent/ems/records.h"
#include "agent/ems/result.h"
#include "agent/ems/sqlite.h"

namespace zk::agent {

// Done, or why the object cannot be created. Whether its id is taken, and
// whether the devices and links it refers to exist, is left to the tables.
Result checkNew(Database& database, const DeviceRecord& device);
Result checkNew(Database& database, const LinkRecord& link);
Result checkNew(Database& database, const NodeRecord& node);
Result checkNew(Database& database, const SubMapRecord& subMap);
Result checkNew(Database& database, const DisplayLinkRecord& displayLink);
Result checkNew(Database& database, const PhysicalLinkRecord& physicalLink);

}  // namespace zk::agent

#endif
