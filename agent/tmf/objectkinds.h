// How kinds of objects and their labels are spelt: by the administration
// interface, and in the names and notifications of the NMS. No state; any thread
// may call.
#ifndef ZK_AGENT_TMF_OBJECTKINDS_H
#define ZK_AGENT_TMF_OBJECTKINDS_H

#include "agent/ems/changes.h"
#include "agent/ems/records.h"

namespace zk::agent {

// By the administration's texts: "device", "userLabel". Throw Refusal, invalid
// input, for texts that they do not know.
ObjectKind kindNamed(const char* text);
Attribute labelNamed(const char* text);

const char* nameOfLabel(Attribute label);

// The first text of the last pair of its objects' names: "ManagedElement". Empty
// for the objects of the map, whose names are layered.
const char* pairNameOf(ObjectKind kind);

}  // namespace zk::agent

#endif
