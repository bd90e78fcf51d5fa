// New ids: each kind counts its own, and never gives one out twice. Nodes and
// submaps count together. The caller holds the inventory's lock.
#ifndef ZK_AGENT_EMS_IDS_H
#define ZK_AGENT_EMS_IDS_H

#include <string>

#include "agent/ems/records.h"
#include "agent/ems/sqlite.h"

namespace zk::agent {

// The last device id that an NMS can name.
inline constexpr long LAST_DEVICE_ID = 2147483647;

// The next id that no object of the kind has; in the caller's transaction.
long newId(Database& database, ObjectKind kind);

void setNextId(Database& database, ObjectKind kind, long next);

}  // namespace zk::agent

#endif
