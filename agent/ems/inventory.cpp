#include "agent/ems/inventory.h"

#include "agent/ems/alarmtable.h"
#include "agent/ems/inventoryimpl.h"
#include "agent/ems/tables.h"

namespace zk::agent {

namespace {

bool isInSubMap(ObjectKind kind) {
  return kind == ObjectKind::Node || kind == ObjectKind::SubMap || kind == ObjectKind::DisplayLink;
}

bool hasTextIds(ObjectKind kind) { return kind != ObjectKind::Ems && kind != ObjectKind::Device; }

// "<columns> FROM <table>", of the kind's rows only; more conditions may follow.
std::string selectFrom(ObjectKind kind, const std::string& columns) {
  const TableOf table = tableOf(kind);
  return "SELECT " + columns + " FROM " + table.name + " WHERE " + table.condition;
}

template <class Value>
std::vector<Value> column(Statement row) {
  std::vector<Value> values;
  Value value{};
  while (row.step()) {
    row.read(value);
    values.push_back(value);
  }
  return values;
}

template <class Record, class Id>
std::vector<Record> findAll(Database& database, const std::vector<Id>& ids) {
  std::vector<Record> records;
  records.reserve(ids.size());
  for (const Id& id : ids) {
    if (auto record = find<Record>(database, id)) {
      records.push_back(std::move(*record));
    }
  }
  return records;
}

}  // namespace

std::unique_ptr<Inventory> Inventory::open(const std::string& path, const SeedOptions& seed) {
  return std::unique_ptr<Inventory>(new Inventory(std::make_unique<Impl>(path, seed)));
}

Inventory::Inventory(std::unique_ptr<Impl> impl) : impl_(std::move(impl)) {}

Inventory::~Inventory() = default;

const std::string& Inventory::path() const { return impl_->path(); }

void Inventory::setListener(ChangeListener* listener) { impl_->delivery().setListener(listener); }

EmsRecord Inventory::ems() const {
  return impl_->query([](Database& database) {
    return find<EmsRecord>(database, std::string()).value_or(EmsRecord());
  });
}

SubnetworkRecord Inventory::subnetwork() const {
  return impl_->query([](Database& database) {
    return find<SubnetworkRecord>(database, std::string(SUBNETWORK_ID))
        .value_or(SubnetworkRecord());
  });
}

std::optional<DeviceRecord> Inventory::device(long id) const {
  return impl_->query([&](Database& database) { return find<DeviceRecord>(database, id); });
}

std::optional<LinkRecord> Inventory::link(const std::string& id) const {
  return impl_->query([&](Database& database) { return find<LinkRecord>(database, id); });
}

std::optional<NodeRecord> Inventory::node(const std::string& id) const {
  return impl_->query([&](Database& database) { return find<NodeRecord>(database, id); });
}

std::optional<SubMapRecord> Inventory::subMap(const std::string& id) const {
  return impl_->query([&](Database& database) { return find<SubMapRecord>(database, id); });
}

std::optional<DisplayLinkRecord> Inventory::displayLink(const std::string& id) const {
  return impl_->query([&](Database& database) { return find<DisplayLinkRecord>(database, id); });
}

std::optional<PhysicalLinkRecord> Inventory::physicalLink(const std::string& id) const {
  return impl_->query([&](Database& database) { return find<PhysicalLinkRecord>(database, id); });
}

bool Inventory::exists(const ObjectKey& key) const {
  return impl_->query([&](Database& database) { return find(database, key).has_value(); });
}

std::vector<long> Inventory::deviceIds() const {
  return impl_->query([](Database& database) {
    return column<long>(database.prepare("SELECT id FROM device ORDER BY id"));
  });
}

std::vector<DeviceRecord> Inventory::devices(const std::vector<long>& ids) const {
  return impl_->query([&](Database& database) { return findAll<DeviceRecord>(database, ids); });
}

std::vector<std::string> Inventory::ids(ObjectKind kind, const std::string& parentId) const {
  if (!hasTextIds(kind)) {
    return {};
  }
  const std::string all = selectFrom(kind, "id");
  const std::string inOrder = " ORDER BY rowid";
  return impl_->query([&](Database& database) {
    if (parentId.empty() || !isInSubMap(kind)) {
      return column<std::string>(database.prepare(all + inOrder));
    }
    return column<std::string>(database.prepare(all + " AND parent_id = ?" + inOrder, parentId));
  });
}

std::vector<LinkRecord> Inventory::links(const std::vector<std::string>& ids) const {
  return impl_->query([&](Database& database) { return findAll<LinkRecord>(database, ids); });
}

std::vector<NodeRecord> Inventory::nodes(const std::vector<std::string>& ids) const {
  return impl_->query([&](Database& database) { return findAll<NodeRecord>(database, ids); });
}

std::vector<SubMapRecord> Inventory::subMaps(const std::vector<std::string>& ids) const {
  return impl_->query([&](Database& database) { return findAll<SubMapRecord>(database, ids); });
}

std::vector<DisplayLinkRecord> Inventory::displayLinks(const std::vector<std::string>& ids) const {
  return impl_->query(
      [&](Database& database) { return findAll<DisplayLinkRecord>(database, ids); });
}

std::vector<PhysicalLinkRecord> Inventory::physicalLinks(
    const std::vector<std::string>& ids) const {
  return impl_->query(
      [&](Database& database) { return findAll<PhysicalLinkRecord>(database, ids); });
}

long Inventory::count(ObjectKind kind) const {
  return impl_->query(
      [&](Database& database) { return database.valueOf<long>(selectFrom(kind, "count(*)")); });
}

bool Inventory::labelInUse(ObjectKind kind, const std::string& label,
                           const std::string& exceptId) const {
  return impl_->query(
      [&](Database& database) { return labelTaken(database, kind, label, exceptId); });
}

std::optional<AlarmRecord> Inventory::alarm(long id) const {
  return impl_->query([&](Database& database) { return findAlarm(database, id); });
}

std::vector<AlarmRecord> Inventory::activeAlarms(std::optional<long> deviceId) const {
  return impl_->query([&](Database& database) { return listAlarms(database, deviceId); });
}

}  // namespace zk::agent
