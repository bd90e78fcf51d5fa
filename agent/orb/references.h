// Object references on the wire: checked all the way down, because the ORB opens
// each one that it decodes. Pure; any thread may call.
#ifndef ZK_AGENT_ORB_REFERENCES_H
#define ZK_AGENT_ORB_REFERENCES_H

#include "agent/orb/cdr.h"

namespace zk::agent {

// Reads past one reference. The reader fails on one that is damaged, too large (a
// type id of more than 255 bytes, more than 8 profiles, more than 4 KiB in one,
// more than 32 components), or of a protocol version there is not; also on one
// that claims to be reached through a connection of its sender, which only this
// side may say.
void readReference(CdrReader& in);

}  // namespace zk::agent

#endif
