#include "agent/ems/newobjects.h"

#include "agent/ems/ids.h"
#include "agent/ems/tables.h"

namespace zk::agent {

namespace {

// A map object's id stands in a path of key=value layers in its NMS name, where
// these characters would end it; an empty one asks for a new id.
bool canBeMapId(const std::string& id) {
  return id.find_first_of("/=") == std::string::npos &&
         ObjectKey::mapObject(ObjectKind::SubMap, {}, id).parentId == id;
}

Result checkParent(Database& database, const std::string& parentId) {
  return find<SubMapRecord>(database, parentId) ? Result::Done : Result::NoSuchObject;
}

Result checkMapObject(Database& database, const std::string& id, const std::string& parentId) {
  return canBeMapId(id) ? checkParent(database, parentId) : Result::BadValue;
}

}  // namespace

Result checkNew(Database& database, const DeviceRecord& device) {
  if (device.id < 0 || device.id > LAST_DEVICE_ID || device.name.empty()) {
    return Result::BadValue;
  }
  return device.siteId.empty() ? Result::Done : checkParent(database, device.siteId);
}

Result checkNew(Database&, const LinkRecord& link) {
  return link.direction == 0 || link.direction == 1 ? Result::Done : Result::BadValue;
}

Result checkNew(Database& database, const NodeRecord& node) {
  return checkMapObject(database, node.id, node.parentId);
}

Result checkNew(Database& database, const SubMapRecord& subMap) {
  return checkMapObject(database, subMap.id, subMap.parentId);
}

Result checkNew(Database& database, const DisplayLinkRecord& displayLink) {
  return checkMapObject(database, displayLink.id, displayLink.parentId);
}

Result checkNew(Database&, const PhysicalLinkRecord&) { return Result::Done; }

}  // namespace zk::agent
