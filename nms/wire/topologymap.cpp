#include "nms/wire/topologymap.h"

#include <vector>

#include "nms/wire/iterate.h"
#include "nms/wire/names.h"
#include "nms/wire/text.h"

namespace zk::nms {
namespace {

// Whether a path such as /parentid=A/id=7 ends in this id. Ids may hold
// slashes, so the end is compared rather than the path taken apart.
bool endsInId(const std::string& path, const std::string& id) {
  const std::string end = "/id=" + id;
  return path.size() >= end.size() && path.compare(path.size() - end.size(), end.size(), end) == 0;
}

std::vector<globaldefs::NVSList_T> namesWithId(Connection& connection, const std::string& kind,
                                               const std::string& id, CORBA::ULong page) {
  std::vector<globaldefs::NVSList_T> found;
  eachMapObject(connection, kind, page, [&](const topologyMap::MapObject_T& object) {
    const CORBA::ULong length = object.name.length();
    if (length > 0 && endsInId(object.name[length - 1].value.in(), id)) {
      found.push_back(object.name);
    }
  });
  return found;
}

}  // namespace

topologyMap::TopologyMapMgr_I_var topologyMapManager(Connection& connection) {
  return connection.manager<topologyMap::TopologyMapMgr_I>("TopologyMap");
}

bool isMapKind(const std::string& kind) {
  return kind == "Node" || kind == "SubMap" || kind == "DisplayLink";
}

void eachMapObject(Connection& connection, const std::string& kind, CORBA::ULong page,
                   const std::function<void(const topologyMap::MapObject_T&)>& each) {
  const auto manager = topologyMapManager(connection);
  topologyMap::MapObjectList_T_var objects;
  topologyMap::MapObjectIterator_I_var iterator;
  if (kind == "Node") {
    manager->getAllNodes(page, objects.out(), iterator.out());
  } else if (kind == "SubMap") {
    manager->getAllSubMaps(page, objects.out(), iterator.out());
  } else {
    manager->getAllDisplayLinks(page, objects.out(), iterator.out());
  }
  drain(page, objects, iterator, each);
}

globaldefs::NVSList_T mapObjectName(Connection& connection, const std::string& kind,
                                    const std::string& argument, CORBA::ULong page) {
  if (isFullName(argument) || argument.front() == '/') {
    return connection.objectName(argument, kind.c_str());
  }
  const auto found = namesWithId(connection, kind, argument, page);
  if (found.size() == 1) {
    return found.front();
  }
  const std::string id = "'" + printable(asUtf8(argument)) + "'";
  throw RefusedError(found.empty() ? "the map has no " + kind + " with the id " + id
                                   : "the map has several objects of the kind " + kind +
                                         " with the id " + id + ": give a full name");
}

}  // namespace zk::nms
