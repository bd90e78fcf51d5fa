#include "agent/managers/mapmanager.h"

#include "agent/managers/queries.h"
#include "agent/tmf/errors.h"

namespace zk::agent {

using topologyMap::MapObjectIterator_I_out;
using topologyMap::MapObjectList_T_out;

MapManager::MapManager(Paging paging, Inventory& inventory)
    : ManagerServant(std::move(paging), inventory,
                     {"getAllNodes", "getAllSubMaps", "getAllDisplayLinks", "getMapObject"}) {}

void MapManager::getAllNodes(CORBA::ULong howMany, MapObjectList_T_out list,
                             MapObjectIterator_I_out it) {
  answer("getAllNodes", howMany, list, it, [&] { return allNodes(inventory_); });
}

void MapManager::getAllSubMaps(CORBA::ULong howMany, MapObjectList_T_out list,
                               MapObjectIterator_I_out it) {
  answer("getAllSubMaps", howMany, list, it, [&] { return allSubMaps(inventory_); });
}

void MapManager::getAllDisplayLinks(CORBA::ULong howMany, MapObjectList_T_out list,
                                    MapObjectIterator_I_out it) {
  answer("getAllDisplayLinks", howMany, list, it, [&] { return allDisplayLinks(inventory_); });
}

void MapManager::getMapObject(const globaldefs::NamingAttributes_T& name,
                              topologyMap::MapObject_T_out object) {
  refusingFailures("getMapObject", [&] {
    object = new topologyMap::MapObject_T(mapObjectNamed(inventory_, name));
  });
}

}  // namespace zk::agent
