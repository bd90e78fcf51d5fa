// The EMS's own topology map, as its own manager serves it. No state.
#ifndef ZK_NMS_WIRE_TOPOLOGYMAP_H
#define ZK_NMS_WIRE_TOPOLOGYMAP_H

#include <functional>
#include <string>

#include "nms/wire/connection.h"

namespace zk::nms {

topologyMap::TopologyMapMgr_I_var topologyMapManager(Connection& connection);

// kind is what the last pair of a name is called: "Node", "SubMap" or
// "DisplayLink".
bool isMapKind(const std::string& kind);

void eachMapObject(Connection& connection, const std::string& kind, CORBA::ULong page,
                   const std::function<void(const topologyMap::MapObject_T&)>& each);

// An argument as the name of a map object. Full names and paths such as
// /parentid=A/id=7 go as they were typed. A bare id is looked for in the map,
// because a name says where the object lies as well; throws RefusedError when
// there is none, or more than one, of it.
globaldefs::NVSList_T mapObjectName(Connection& connection, const std::string& kind,
                                    const std::string& argument, CORBA::ULong page);

}  // namespace zk::nms

#endif
