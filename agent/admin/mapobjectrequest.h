// A map object that the administration interface asks for. No state; any thread
// may call.
#ifndef ZK_AGENT_ADMIN_MAPOBJECTREQUEST_H
#define ZK_AGENT_ADMIN_MAPOBJECTREQUEST_H

#include <string>

#include "agent/ems/inventory.h"
#include "zk_quornex/idl/names.h"

namespace zk::agent {

// Creates a node, submap, display link or physical link and gives its id. Throws
// Refusal: invalid input for another kind, for an attribute that the kind does
// not have, is given twice, or is missing; otherwise what the EMS answers.
std::string createMapObject(Inventory& inventory, const char* kind,
                            const globaldefs::NVSList_T& attributes);

// Throws Refusal, saying what it was about, unless the result is Done.
void refuseFailure(Result result, const std::string& about);

}  // namespace zk::agent

#endif
