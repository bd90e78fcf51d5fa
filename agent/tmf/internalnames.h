// The library's names for the embedded EMS's objects. No state; any thread may
// call.
#ifndef ZK_AGENT_TMF_INTERNALNAMES_H
#define ZK_AGENT_TMF_INTERNALNAMES_H

#include <memory>

#include "agent/ems/records.h"
#include "zk_quornex/names/nameconvert.h"

namespace zk::agent {

// Never null.
std::unique_ptr<NS_QUORCORBA::TEName> internalNameOf(const ObjectRecord& object);

// The same as the NMS writes it. Throws Refusal, internal error, for an object
// that cannot be named.
globaldefs::NVSList_T nmsNameOf(const ObjectRecord& object);

}  // namespace zk::agent

#endif
