// TopologyMapMgr_I of one session: the EMS's own map. Safe on any thread.
#ifndef ZK_AGENT_MANAGERS_MAPMANAGER_H
#define ZK_AGENT_MANAGERS_MAPMANAGER_H

#include "agent/managers/managerservant.h"

namespace zk::agent {

class MapManager : public ManagerServant<POA_topologyMap::TopologyMapMgr_I> {
 public:
  MapManager(Paging paging, Inventory& inventory);

  void getAllNodes(CORBA::ULong howMany, topologyMap::MapObjectList_T_out list,
                   topologyMap::MapObjectIterator_I_out it) override;
  void getAllSubMaps(CORBA::ULong howMany, topologyMap::MapObjectList_T_out list,
                     topologyMap::MapObjectIterator_I_out it) override;
  void getAllDisplayLinks(CORBA::ULong howMany, topologyMap::MapObjectList_T_out list,
                          topologyMap::MapObjectIterator_I_out it) override;
  void getMapObject(const globaldefs::NamingAttributes_T& name,
                    topologyMap::MapObject_T_out object) override;
};

}  // namespace zk::agent

#endif
