// The texts by which the administration interface names kinds and labels. No
// state; any thread may call. All throw Refusal, invalid input, for texts that
// they do not know.
#ifndef ZK_AGENT_ADMIN_KINDS_H
#define ZK_AGENT_ADMIN_KINDS_H

#include "agent/ems/changes.h"
#include "agent/ems/records.h"

namespace zk::agent {

ObjectKind kindNamed(const char* text);
Attribute labelNamed(const char* text);

// "device 7", for reasons.
std::string describe(const char* kind, const char* id);

}  // namespace zk::agent

#endif
