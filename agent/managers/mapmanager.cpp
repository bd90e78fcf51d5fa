#include "agent/managers/mapmanager.h"

#include "agent/managers/mapqueries.h"
#include "agent/tmf/errors.h"

namespace zk::agent {

using topologyMap::MapObjectIterator_I_out;
using topologyMap::MapObjectList_T_out;

MapManager::MapManager(Paging paging, Inventory& inventory)
    : ManagerServant(inventory,
                     {"getAllNodes", "getAllSubMaps", "getAllDisplayLinks", "getMapObject"}),
      paging_(std::move(paging)),
      inventory_(inventory) {}

void MapManager::getAllNodes(CORBA::ULong howMany, MapObjectList_T_out list,
                             MapObjectIterator_I_out it) {
  guarded("getAllNodes", [&] {
    answerList<MapObjectIteration>(allNodes(inventory_), howMany, paging_, list, it);
  });
}

void MapManager::getAllSubMaps(CORBA::ULong howMany, MapObjectList_T_out list,
                               MapObjectIterator_I_out it) {
  guarded("getAllSubMaps", [&] {
    answerList<MapObjectIteration>(allSubMaps(inventory_), howMany, paging_, list, it);
  });
}

void MapManager::getAllDisplayLinks(CORBA::ULong howMany, MapObjectList_T_out list,
                                    MapObjectIterator_I_out it) {
  guarded("getAllDisplayLinks", [&] {
    answerList<MapObjectIteration>(allDisplayLinks(inventory_), howMany, paging_, list, it);
  });
}

void MapManager::getMapObject(const globaldefs::NamingAttributes_T& name,
                              topologyMap::MapObject_T_out object) {
  guarded("getMapObject",
          [&] { object = new topologyMap::MapObject_T(mapObjectNamed(inventory_, name)); });
}

}  // namespace zk::agent
