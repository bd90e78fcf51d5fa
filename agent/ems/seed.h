// The sample network of a new inventory.
//
// Submap "/" holds the submap "1", the whole network, which holds one submap a
// site; a site's submap holds a node for each of its devices. The devices of a
// site make a ring of links, and every second one is linked to its counterpart
// at the next site. Every link has its physical link, and a display link in the
// submap where it is seen: the site's, or between sites the network's.
#ifndef ZK_AGENT_EMS_SEED_H
#define ZK_AGENT_EMS_SEED_H

#include "agent/ems/inventory.h"
#include "agent/ems/tables.h"

namespace zk::agent {

// Fills the empty tables, in the caller's transaction. Throws InventoryError for
// options out of their range.
void seedInventory(Tables& tables, const SeedOptions& options);

}  // namespace zk::agent

#endif
