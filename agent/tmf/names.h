// Names of objects between the NMS, the library and the embedded EMS, both
// ways, and how their kinds and labels are spelt. No state; any thread may call.
#ifndef ZK_AGENT_TMF_NAMES_H
#define ZK_AGENT_TMF_NAMES_H

#include <memory>
#include <string>

#include "agent/ems/changes.h"
#include "agent/ems/records.h"
#include "zk_quornex/idl/names.h"

namespace NS_QUORCORBA {
class TEName;
}  // namespace NS_QUORCORBA

namespace zk::agent {

struct DeleteName {
  void operator()(NS_QUORCORBA::TEName* name) const;
};

// The library's form of a name.
using InternalName = std::unique_ptr<NS_QUORCORBA::TEName, DeleteName>;

// Any name the library converts; never null. Throws Refusal: invalid input for a
// malformed name, entity not found for one of another EMS and for an identifier
// that the library would read as a different one.
InternalName readName(const globaldefs::NVSList_T& name);

// The object that the name means to the embedded EMS. Throws Refusal as above,
// and not implemented for a kind that the EMS does not keep.
ObjectKey keyOfName(const NS_QUORCORBA::TEName& name);
ObjectKey readKey(const globaldefs::NVSList_T& name);

// The identifier in a name of the kind that the operation is about. Throws
// Refusal as above, and invalid input for a name of another kind.
long readDeviceId(const globaldefs::NVSList_T& name);
std::string readLinkId(const globaldefs::NVSList_T& name);
std::string readSubnetworkId(const globaldefs::NVSList_T& name);

// Whether a node, submap or display link with the id can be named: it stands in a
// path of key=value layers, where some characters would end it, and some texts
// mean other objects. True for the empty one, which asks the EMS for a new id.
bool canNameMapObject(const std::string& id);

// The library's name of an object; never null.
InternalName internalNameOf(const ObjectKey& key);

// What the NMS calls the object, or the port. Throws Refusal, internal error,
// for an identifier that cannot be written.
globaldefs::NVSList_T nmsNameOf(const ObjectKey& key);
globaldefs::NVSList_T nmsNameOf(const LinkEnd& end);

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
