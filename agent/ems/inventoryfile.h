// The inventory's file: opened, checked, and made on first start.
#ifndef ZK_AGENT_EMS_INVENTORYFILE_H
#define ZK_AGENT_EMS_INVENTORYFILE_H

#include <string>

#include "agent/ems/inventory.h"
#include "agent/ems/tables.h"

namespace zk::agent {

// See Inventory::open. The connection keeps every other one out until it closes,
// or its process ends in whatever way.
Tables openInventoryFile(const std::string& path, const SeedOptions& seed);

}  // namespace zk::agent

#endif
