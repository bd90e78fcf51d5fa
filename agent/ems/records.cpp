#include "agent/ems/records.h"

namespace zk::agent {

namespace {

std::string idOf(const EmsRecord&) { return {}; }
std::string idOf(const DeviceRecord& device) { return std::to_string(device.id); }
template <class Record>
std::string idOf(const Record& record) {
  return record.id;
}

std::string parentOf(const NodeRecord& node) { return node.parentId; }
std::string parentOf(const SubMapRecord& subMap) { return subMap.parentId; }
std::string parentOf(const DisplayLinkRecord& link) { return link.parentId; }
template <class Record>
std::string parentOf(const Record&) {
  return {};
}

}  // namespace

bool operator==(const ObjectKey& left, const ObjectKey& right) {
  return left.kind == right.kind && left.id == right.id && left.parentId == right.parentId;
}

ObjectKey keyOf(const ObjectRecord& object) {
  const auto kind = static_cast<ObjectKind>(object.index());
  return std::visit(
      [kind](const auto& record) {
        return ObjectKey{kind, idOf(record), parentOf(record)};
      },
      object);
}

}  // namespace zk::agent
