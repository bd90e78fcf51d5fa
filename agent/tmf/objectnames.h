// Names that clients give, read through the library and checked against what
// the operation expects. No state; any thread may call.
#ifndef ZK_AGENT_TMF_OBJECTNAMES_H
#define ZK_AGENT_TMF_OBJECTNAMES_H

#include <memory>
#include <string>

#include "agent/ems/records.h"
#include "zk_quornex/idl/names.h"
#include "zk_quornex/names/nameconvert.h"

namespace zk::agent {

// Any name the library converts. Throws Refusal: invalid input for a malformed
// name, entity not found for one of another EMS and for an identifier that the
// library would read as a different one.
std::unique_ptr<NS_QUORCORBA::TEName> readName(const globaldefs::NVSList_T& name);

// The identifier in a name of the kind that the operation is about. Throws
// Refusal as above, and invalid input for a name of another kind.
long readDeviceId(const globaldefs::NVSList_T& name);
std::string readLinkId(const globaldefs::NVSList_T& name);
std::string readSubnetworkId(const globaldefs::NVSList_T& name);

// The object that a converted name means to the embedded EMS. Throws Refusal,
// not implemented, for a kind that it does not keep.
ObjectKey keyOfName(const NS_QUORCORBA::TEName& name);

// What the NMS calls these objects. Throw Refusal, internal error, for an
// identifier that cannot be written.
globaldefs::NVSList_T nameOfDevice(long id);
globaldefs::NVSList_T nameOfLink(const std::string& id);
globaldefs::NVSList_T nameOfSubnetwork(const std::string& id);
globaldefs::NVSList_T nameOfPort(const LinkEnd& end);

}  // namespace zk::agent

#endif
