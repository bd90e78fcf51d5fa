#include "agent/ems/tables.h"

#include <charconv>

namespace zk::agent {

namespace {

// References to nothing are null in the tables and empty in the records.
std::optional<std::string> orNull(const std::string& text) {
  return text.empty() ? std::nullopt : std::optional<std::string>(text);
}

constexpr long NODE_ROW = static_cast<long>(ObjectKind::Node);
constexpr long SUBMAP_ROW = static_cast<long>(ObjectKind::SubMap);
static_assert(NODE_ROW == 4 && SUBMAP_ROW == 5, "the tables hold these numbers");

constexpr char INSERT_MAP_OBJECT[] =
    "INSERT INTO map_object (kind, id, user_label, owner, native_name, parent_id, device_id)"
    " VALUES (?, ?, ?, ?, ?, ?, ?)";

}  // namespace

const char* selectOf(const EmsRecord&) {
  return "SELECT user_label, owner, native_name FROM ems WHERE id = ?";
}

void read(const Statement& row, EmsRecord& record) {
  row.read(record.userLabel, record.owner, record.nativeName);
}

void insert(Database& database, const EmsRecord& record) {
  database.execute("INSERT INTO ems (id, user_label, owner, native_name) VALUES ('', ?, ?, ?)",
                   record.userLabel, record.owner, record.nativeName);
}

const char* selectOf(const DeviceRecord&) {
  return "SELECT id, native_name, product_name, user_label, owner, version, location, site_id"
         " FROM device WHERE id = ?";
}

void read(const Statement& row, DeviceRecord& record) {
  row.read(record.id, record.name, record.productName, record.userLabel, record.owner,
           record.version, record.location, record.siteId);
}

void insert(Database& database, const DeviceRecord& record) {
  database.execute(
      "INSERT INTO device (id, native_name, product_name, user_label, owner, version, location,"
      " site_id) VALUES (?, ?, ?, ?, ?, ?, ?, ?)",
      record.id, record.name, record.productName, record.userLabel, record.owner, record.version,
      record.location, orNull(record.siteId));
}

const char* selectOf(const SubnetworkRecord&) {
  return "SELECT id, user_label, owner, native_name, topology FROM subnetwork WHERE id = ?";
}

void read(const Statement& row, SubnetworkRecord& record) {
  row.read(record.id, record.userLabel, record.owner, record.nativeName, record.topology);
}

void insert(Database& database, const SubnetworkRecord& record) {
  database.execute(
      "INSERT INTO subnetwork (id, user_label, owner, native_name, topology)"
      " VALUES (?, ?, ?, ?, ?)",
      record.id, record.userLabel, record.owner, record.nativeName, record.topology);
}

const char* selectOf(const LinkRecord&) {
  return "SELECT id, user_label, owner, native_name, direction, rate, a_device, a_port, z_device,"
         " z_port FROM link WHERE id = ?";
}

void read(const Statement& row, LinkRecord& record) {
  row.read(record.id, record.userLabel, record.owner, record.nativeName, record.direction,
           record.rate, record.aEnd.deviceId, record.aEnd.port, record.zEnd.deviceId,
           record.zEnd.port);
}

void insert(Database& database, const LinkRecord& record) {
  database.execute(
      "INSERT INTO link (id, user_label, owner, native_name, direction, rate, a_device, a_port,"
      " z_device, z_port) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
      record.id, record.userLabel, record.owner, record.nativeName, record.direction, record.rate,
      record.aEnd.deviceId, record.aEnd.port, record.zEnd.deviceId, record.zEnd.port);
}

const char* selectOf(const NodeRecord&) {
  return "SELECT id, user_label, owner, native_name, parent_id, device_id FROM map_object"
         " WHERE id = ? AND kind = 4";
}

void read(const Statement& row, NodeRecord& record) {
  row.read(record.id, record.userLabel, record.owner, record.nativeName, record.parentId,
           record.deviceId);
}

void insert(Database& database, const NodeRecord& record) {
  database.execute(INSERT_MAP_OBJECT, NODE_ROW, record.id, record.userLabel, record.owner,
                   record.nativeName, orNull(record.parentId), record.deviceId);
}

const char* selectOf(const SubMapRecord&) {
  return "SELECT id, user_label, owner, native_name, parent_id FROM map_object"
         " WHERE id = ? AND kind = 5";
}

void read(const Statement& row, SubMapRecord& record) {
  row.read(record.id, record.userLabel, record.owner, record.nativeName, record.parentId);
}

void insert(Database& database, const SubMapRecord& record) {
  database.execute(INSERT_MAP_OBJECT, SUBMAP_ROW, record.id, record.userLabel, record.owner,
                   record.nativeName, orNull(record.parentId), std::optional<long>());
}

const char* selectOf(const DisplayLinkRecord&) {
  return "SELECT id, user_label, owner, native_name, parent_id, a_end, z_end FROM display_link"
         " WHERE id = ?";
}

void read(const Statement& row, DisplayLinkRecord& record) {
  row.read(record.id, record.userLabel, record.owner, record.nativeName, record.parentId,
           record.aEndId, record.zEndId);
}

void insert(Database& database, const DisplayLinkRecord& record) {
  database.execute(
      "INSERT INTO display_link (id, user_label, owner, native_name, parent_id, a_end, z_end)"
      " VALUES (?, ?, ?, ?, ?, ?, ?)",
      record.id, record.userLabel, record.owner, record.nativeName, record.parentId, record.aEndId,
      record.zEndId);
}

const char* selectOf(const PhysicalLinkRecord&) {
  return "SELECT id, link_id FROM physical_link WHERE id = ?";
}

void read(const Statement& row, PhysicalLinkRecord& record) { row.read(record.id, record.linkId); }

void insert(Database& database, const PhysicalLinkRecord& record) {
  database.execute("INSERT INTO physical_link (id, link_id) VALUES (?, ?)", record.id,
                   record.linkId);
}

TableOf tableOf(ObjectKind kind) {
  switch (kind) {
    case ObjectKind::Ems:
      return {"ems", "1"};
    case ObjectKind::Device:
      return {"device", "1"};
    case ObjectKind::Subnetwork:
      return {"subnetwork", "1"};
    case ObjectKind::Link:
      return {"link", "1"};
    case ObjectKind::Node:
      return {"map_object", "kind = 4"};
    case ObjectKind::SubMap:
      return {"map_object", "kind = 5"};
    case ObjectKind::DisplayLink:
      return {"display_link", "1"};
    case ObjectKind::PhysicalLink:
      break;
  }
  return {"physical_link", "1"};
}

long deviceIdOf(const std::string& text) {
  long id = 0;
  const char* end = text.data() + text.size();
  const auto read = std::from_chars(text.data(), end, id);
  const bool plain = read.ec == std::errc() && read.ptr == end && text == std::to_string(id);
  return plain && id > 0 ? id : 0;
}

namespace {

template <class Record>
std::optional<ObjectRecord> findObject(Database& database, const std::string& id) {
  const auto record = find<Record>(database, id);
  return record ? std::optional<ObjectRecord>(*record) : std::nullopt;
}

template <class Record>
std::optional<ObjectRecord> findInSubMap(Database& database, const ObjectKey& key) {
  const auto record = find<Record>(database, key.id);
  const bool there = record && (key.parentId.empty() || key.parentId == record->parentId);
  return there ? std::optional<ObjectRecord>(*record) : std::nullopt;
}

}  // namespace

std::optional<ObjectRecord> find(Database& database, const ObjectKey& key) {
  switch (key.kind) {
    case ObjectKind::Ems:
      return findObject<EmsRecord>(database, key.id);
    case ObjectKind::Device: {
      const auto record = find<DeviceRecord>(database, deviceIdOf(key.id));
      return record ? std::optional<ObjectRecord>(*record) : std::nullopt;
    }
    case ObjectKind::Subnetwork:
      return findObject<SubnetworkRecord>(database, key.id);
    case ObjectKind::Link:
      return findObject<LinkRecord>(database, key.id);
    case ObjectKind::Node:
      return findInSubMap<NodeRecord>(database, key);
    case ObjectKind::SubMap:
      return findInSubMap<SubMapRecord>(database, key);
    case ObjectKind::DisplayLink:
      return findInSubMap<DisplayLinkRecord>(database, key);
    case ObjectKind::PhysicalLink:
      return findObject<PhysicalLinkRecord>(database, key.id);
  }
  return std::nullopt;
}

bool labelTaken(Database& database, ObjectKind kind, const std::string& label,
                const std::string& exceptId) {
  // Physical links have no labels.
  if (label.empty() || kind == ObjectKind::PhysicalLink) {
    return false;
  }
  const TableOf table = tableOf(kind);
  return database.valueOf<bool>(std::string("SELECT 1 FROM ") + table.name + " WHERE " +
                                    table.condition + " AND user_label = ? AND id <> ? LIMIT 1",
                                label, exceptId);
}

void checkTables(Database& database) {
  for (const char* query :
       {selectOf(EmsRecord()), selectOf(DeviceRecord()), selectOf(SubnetworkRecord()),
        selectOf(LinkRecord()), selectOf(NodeRecord()), selectOf(SubMapRecord()),
        selectOf(DisplayLinkRecord()), selectOf(PhysicalLinkRecord())}) {
    database.prepare(query);
  }
}

}  // namespace zk::agent
