#include "nms/wire/objects.h"

#include <algorithm>
#include <vector>

#include "nms/wire/lists.h"
#include "nms/wire/text.h"

namespace zk::nms {
namespace {

struct Kind {
  const char* command;  // that lists such objects; empty: none does
  const char* name;
  const char* manager;
};

const Kind KINDS[] = {{"ems", "EMS", "EMS"},
                      {"me", "ManagedElement", "ManagedElement"},
                      {"subnetwork", "MultiLayerSubnetwork", "MultiLayerSubnetwork"},
                      {"link", "TopologicalLink", "MultiLayerSubnetwork"},
                      {"node", "Node", "TopologyMap"},
                      {"submap", "SubMap", "TopologyMap"},
                      {"displaylink", "DisplayLink", "TopologyMap"},
                      {"", "PhysicalLink", "TopologyMap"}};

// Null when there is none of the name.
const Kind* kindNamed(const std::string& name) {
  const auto found = std::find_if(std::begin(KINDS), std::end(KINDS),
                                  [&](const Kind& kind) { return kind.name == name; });
  return found == std::end(KINDS) ? nullptr : found;
}

std::string kindOf(const Target& target) {
  for (const Kind& kind : KINDS) {
    if (*kind.command != '\0' && kind.command == target.command) {
      return kind.name;
    }
  }
  throw UsageError("not a kind of object: '" + target.command +
                   "'; there are ems, me, subnetwork, link, node, submap and displaylink");
}

// Whether a path such as /parentid=A/id=7 ends in this id. Ids may hold
// slashes, so the end is compared rather than the path taken apart.
bool endsInId(const std::string& path, const std::string& id) {
  const std::string end = "/id=" + id;
  return path.size() >= end.size() && path.compare(path.size() - end.size(), end.size(), end) == 0;
}

std::vector<globaldefs::NVSList_T> mapNamesWithId(Connection& connection, const std::string& kind,
                                                  const std::string& id) {
  std::vector<globaldefs::NVSList_T> found;
  eachMapObject(connection, kind, [&](const topologyMap::MapObject_T& object) {
    const CORBA::ULong length = object.name.length();
    if (length > 0 && endsInId(object.name[length - 1].value.in(), id)) {
      found.push_back(object.name);
    }
  });
  return found;
}

globaldefs::NVSList_T mapNameWithId(Connection& connection, const std::string& kind,
                                    const std::string& id) {
  const auto found = mapNamesWithId(connection, kind, id);
  if (found.size() == 1) {
    return found.front();
  }
  const std::string quoted = "'" + printable(asUtf8(id)) + "'";
  throw RefusedError(found.empty() ? "the map has no " + kind + " with the id " + quoted
                                   : "the map has several objects of the kind " + kind +
                                         " with the id " + quoted + ": give a full name");
}

}  // namespace

std::string managerFor(const std::string& kind) {
  const Kind* const known = kindNamed(kind);
  return known == nullptr ? "ManagedElement" : known->manager;
}

bool isMapKind(const std::string& kind) {
  const Kind* const known = kindNamed(kind);
  return known != nullptr && managerFor(kind) == "TopologyMap" && *known->command != '\0';
}

globaldefs::NVSList_T objectName(Connection& connection, const std::string& kind,
                                 const std::string& argument) {
  if (isFullName(argument)) {
    return toName(parsePairs(argument));
  }
  if (isMapKind(kind) && argument.front() != '/') {
    return mapNameWithId(connection, kind, argument);
  }
  emsMgr::EMS_T_var ems;
  connection.emsManager()->getEMS(ems.out());
  Pairs pairs = toPairs(ems->name);
  pairs.emplace_back(kind, argument);
  return toName(pairs);
}

managedElementManager::ManagedElementMgr_I_var elementManager(Connection& connection) {
  return connection.manager<managedElementManager::ManagedElementMgr_I>("ManagedElement");
}

topologyMap::TopologyMapMgr_I_var topologyMapManager(Connection& connection) {
  return connection.manager<topologyMap::TopologyMapMgr_I>("TopologyMap");
}

void eachElement(Connection& connection, const Each<managedElement::ManagedElement_T>& each) {
  using namespace managedElement;
  drainAnswer<ManagedElementList_T_var, ManagedElementIterator_I_var>(
      connection.page(),
      [&](ManagedElementList_T_out list, ManagedElementIterator_I_out iterator) {
        elementManager(connection)->getAllManagedElements(connection.page(), list, iterator);
      },
      each);
}

void eachSubnetwork(Connection& connection,
                    const Each<multiLayerSubnetwork::MultiLayerSubnetwork_T>& each) {
  using namespace multiLayerSubnetwork;
  drainAnswer<SubnetworkList_T_var, SubnetworkIterator_I_var>(
      connection.page(),
      [&](SubnetworkList_T_out list, SubnetworkIterator_I_out iterator) {
        connection.emsManager()->getAllTopLevelSubnetworks(connection.page(), list, iterator);
      },
      each);
}

void eachLink(Connection& connection, const Each<topologicalLink::TopologicalLink_T>& each) {
  using namespace topologicalLink;
  drainAnswer<TopologicalLinkList_T_var, TopologicalLinkIterator_I_var>(
      connection.page(),
      [&](TopologicalLinkList_T_out list, TopologicalLinkIterator_I_out iterator) {
        connection.emsManager()->getAllTopLevelTopologicalLinks(connection.page(), list, iterator);
      },
      each);
}

void eachMapObject(Connection& connection, const std::string& kind,
                   const Each<topologyMap::MapObject_T>& each) {
  using namespace topologyMap;
  const CORBA::ULong page = connection.page();
  drainAnswer<MapObjectList_T_var, MapObjectIterator_I_var>(
      page,
      [&](MapObjectList_T_out list, MapObjectIterator_I_out iterator) {
        const auto manager = topologyMapManager(connection);
        if (kind == "Node") {
          manager->getAllNodes(page, list, iterator);
        } else if (kind == "SubMap") {
          manager->getAllSubMaps(page, list, iterator);
        } else {
          manager->getAllDisplayLinks(page, list, iterator);
        }
      },
      each);
}

void eachName(Connection& connection, const std::string& kind,
              const Each<globaldefs::NVSList_T>& each) {
  using namespace globaldefs;
  if (isMapKind(kind)) {
    eachMapObject(connection, kind,
                  [&](const topologyMap::MapObject_T& object) { each(object.name); });
    return;
  }
  const CORBA::ULong page = connection.page();
  drainAnswer<NamingAttributesList_T_var, NamingAttributesIterator_I_var>(
      page,
      [&](NamingAttributesList_T_out list, NamingAttributesIterator_I_out iterator) {
        if (kind == "ManagedElement") {
          elementManager(connection)->getAllManagedElementNames(page, list, iterator);
        } else if (kind == "MultiLayerSubnetwork") {
          connection.emsManager()->getAllTopLevelSubnetworkNames(page, list, iterator);
        } else {
          connection.emsManager()->getAllTopLevelTopologicalLinkNames(page, list, iterator);
        }
      },
      each);
}

void checkTarget(const Target& target) {
  checkArgument(target.object);
  if (kindOf(target) == "EMS" && target.object.find('=') == std::string::npos) {
    throw UsageError("an EMS is given by its full name, as in EMS=Quor/1");
  }
}

globaldefs::NVSList_T targetName(Connection& connection, const Target& target) {
  return objectName(connection, kindOf(target), target.object);
}

common::Common_I_var targetManager(Connection& connection, const globaldefs::NVSList_T& name) {
  const CORBA::ULong length = name.length();
  const std::string kind = length == 0 ? "" : name[length - 1].name.in();
  return connection.manager<common::Common_I>(managerFor(kind).c_str());
}

}  // namespace zk::nms
