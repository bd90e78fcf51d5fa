#include "agent/managers/mapqueries.h"

#include <optional>

#include "agent/managers/listof.h"
#include "agent/tmf/errors.h"
#include "agent/tmf/mapobjects.h"
#include "agent/tmf/objectnames.h"

namespace zk::agent {

namespace {

using topologyMap::MapObject_T;
using topologyMap::MapObjectList_T;

template <class Record>
using FetchSome = std::vector<Record> (Inventory::*)(const std::vector<std::string>&) const;

template <class Record>
PagedList<MapObjectList_T> allOf(const Inventory& inventory, ObjectKind kind,
                                 FetchSome<Record> fetch) {
  return listOf<MapObjectList_T>(
      inventory.ids(kind),
      [&inventory, fetch](const std::vector<std::string>& ids) { return (inventory.*fetch)(ids); },
      [](MapObjectList_T& out, const Record& record) { appendEntry(out, mapObjectOf(record)); });
}

template <class Record>
std::optional<MapObject_T> heldBy(const std::optional<Record>& record,
                                  const std::string& parentId) {
  if (!record || (!parentId.empty() && record->parentId != parentId)) {
    return std::nullopt;
  }
  return mapObjectOf(*record);
}

std::optional<MapObject_T> find(const Inventory& inventory, const ObjectKey& key) {
  switch (key.kind) {
    case ObjectKind::Node:
      return heldBy(inventory.node(key.id), key.parentId);
    case ObjectKind::SubMap:
      return heldBy(inventory.subMap(key.id), key.parentId);
    case ObjectKind::DisplayLink:
      return heldBy(inventory.displayLink(key.id), key.parentId);
    default:
      throw refusal(globaldefs::EXCPT_INVALID_INPUT,
                    "expected the name of a node, submap or display link");
  }
}

}  // namespace

PagedList<MapObjectList_T> allNodes(const Inventory& inventory) {
  return allOf<NodeRecord>(inventory, ObjectKind::Node, &Inventory::nodes);
}

PagedList<MapObjectList_T> allSubMaps(const Inventory& inventory) {
  return allOf<SubMapRecord>(inventory, ObjectKind::SubMap, &Inventory::subMaps);
}

PagedList<MapObjectList_T> allDisplayLinks(const Inventory& inventory) {
  return allOf<DisplayLinkRecord>(inventory, ObjectKind::DisplayLink, &Inventory::displayLinks);
}

MapObject_T mapObjectNamed(const Inventory& inventory, const globaldefs::NVSList_T& name) {
  const auto object = find(inventory, keyOfName(*readName(name)));
  if (!object) {
    throw refusalOf(codeOf(Result::NoSuchObject), name);
  }
  return *object;
}

}  // namespace zk::agent
