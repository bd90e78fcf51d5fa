#include "agent/ems/records.h"

namespace zk::agent {

namespace {

// Nodes and submaps without a known parent carry these in their NMS names.
bool standsForAnySubMap(const std::string& parentId) {
  return parentId == "AllSubMap" || parentId == "AllSubmap";
}

struct KeyOf {
  ObjectKey operator()(const EmsRecord&) const { return ObjectKey::ems(); }
  ObjectKey operator()(const DeviceRecord& record) const {
    return {ObjectKind::Device, std::to_string(record.id), {}};
  }
  ObjectKey operator()(const SubnetworkRecord& record) const {
    return ObjectKey::subnetwork(record.id);
  }
  ObjectKey operator()(const LinkRecord& record) const { return ObjectKey::link(record.id); }
  ObjectKey operator()(const NodeRecord& record) const {
    return {ObjectKind::Node, record.id, record.parentId};
  }
  ObjectKey operator()(const SubMapRecord& record) const {
    return {ObjectKind::SubMap, record.id, record.parentId};
  }
  ObjectKey operator()(const DisplayLinkRecord& record) const {
    return {ObjectKind::DisplayLink, record.id, record.parentId};
  }
  ObjectKey operator()(const PhysicalLinkRecord& record) const {
    return {ObjectKind::PhysicalLink, record.id, {}};
  }
};

}  // namespace

ObjectKey ObjectKey::mapObject(ObjectKind kind, std::string id, std::string parentId) {
  if (standsForAnySubMap(parentId)) {
    parentId.clear();
  } else if (parentId == "VTMAP_PHY_SUBMAP") {
    parentId = ROOT_SUBMAP_ID;
  }
  return {kind, std::move(id), std::move(parentId)};
}

bool operator==(const ObjectKey& left, const ObjectKey& right) {
  return left.kind == right.kind && left.id == right.id && left.parentId == right.parentId;
}

ObjectKey keyOf(const ObjectRecord& record) { return std::visit(KeyOf(), record); }

}  // namespace zk::agent
