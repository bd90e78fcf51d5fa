// The objects of an EMS: their kinds, their names, and the managers that serve
// them. No state. All pass on what the calls throw.
#ifndef ZK_NMS_WIRE_OBJECTS_H
#define ZK_NMS_WIRE_OBJECTS_H

#include <functional>
#include <string>

#include "nms/wire/connection.h"
#include "zk_quornex/idl/managers.h"

namespace zk::nms {

// A kind is called by what the last pair of its objects' names is called:
// "ManagedElement", "Node", …

// The manager's name for objects of this kind. What the program does not know
// lies within an element, whose manager has it.
std::string managerFor(const std::string& kind);

// Whether it is of those that the topology map lists: "Node", "SubMap" or
// "DisplayLink".
bool isMapKind(const std::string& kind);

// An argument of the command line as a name: a full name as it was typed, a
// bare id as the object of this kind in this EMS. Of a map object, paths such as
// /parentid=A/id=7 go as they were typed too, and a bare id is looked for in the
// map, because a name says where the object lies as well; throws RefusedError
// when there is none, or more than one, of it.
globaldefs::NVSList_T objectName(Connection& connection, const std::string& kind,
                                 const std::string& argument);

managedElementManager::ManagedElementMgr_I_var elementManager(Connection& connection);
topologyMap::TopologyMapMgr_I_var topologyMapManager(Connection& connection);

template <class Record>
using Each = std::function<void(const Record&)>;

// All there are, at the top level where there are levels.
void eachElement(Connection& connection, const Each<managedElement::ManagedElement_T>& each);
void eachSubnetwork(Connection& connection,
                    const Each<multiLayerSubnetwork::MultiLayerSubnetwork_T>& each);
void eachLink(Connection& connection, const Each<topologicalLink::TopologicalLink_T>& each);
void eachMapObject(Connection& connection, const std::string& kind,
                   const Each<topologyMap::MapObject_T>& each);

// Their names alone. Of kinds that are listed on their own.
void eachName(Connection& connection, const std::string& kind,
              const Each<globaldefs::NVSList_T>& each);

// The object that a command changes.
struct Target {
  std::string object;          // a full name, or an id of the kind
  std::string command = "me";  // that lists such objects
};

// Throws UsageError, so that nobody logs in for nothing.
void checkTarget(const Target& target);

globaldefs::NVSList_T targetName(Connection& connection, const Target& target);

// The manager that is asked to change it.
common::Common_I_var targetManager(Connection& connection, const globaldefs::NVSList_T& name);

}  // namespace zk::nms

#endif
