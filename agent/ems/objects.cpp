#include "agent/ems/objects.h"

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <type_traits>
#include <utility>

namespace zk::agent {

namespace {

// The last that the platform's EMS services take.
constexpr long LAST_DEVICE_ID = std::numeric_limits<int>::max();

bool isInSubMap(ObjectKind kind) {
  return kind == ObjectKind::NODE || kind == ObjectKind::SUB_MAP ||
         kind == ObjectKind::DISPLAY_LINK;
}

bool hasTextIds(ObjectKind kind) { return kind != ObjectKind::EMS && kind != ObjectKind::DEVICE; }

// More conditions may follow.
std::string selectFrom(ObjectKind kind, const std::string& columns) {
  const Place& place = placeOf(kind);
  return "SELECT " + columns + " FROM " + place.table + " WHERE " + place.condition();
}

// --- Attributes ---

template <class Record>
std::string* textOf(Record& record, std::string& nativeName, Attribute attribute) {
  switch (attribute) {
    case Attribute::USER_LABEL:
      return &record.userLabel;
    case Attribute::OWNER:
      return &record.owner;
    case Attribute::NATIVE_NAME:
      break;
  }
  return &nativeName;
}

std::string* textOf(Labels& labels, Attribute attribute) {
  return textOf(labels, labels.nativeName, attribute);
}
std::string* textOf(DeviceRecord& device, Attribute attribute) {
  return textOf(device, device.name, attribute);
}
std::string* textOf(PhysicalLinkRecord&, Attribute) { return nullptr; }

// --- Finding ---

// The device id that the text writes in plain decimal, or 0.
long deviceIdOf(const std::string& text) {
  long id = 0;
  const char* end = text.data() + text.size();
  const auto read = std::from_chars(text.data(), end, id);
  const bool plain = read.ec == std::errc() && read.ptr == end && text == std::to_string(id);
  return plain && id > 0 ? id : 0;
}

template <class Record>
std::optional<ObjectRecord> findObject(Tables& tables, const std::string& id) {
  std::optional<Record> record;
  if constexpr (std::is_same_v<Record, DeviceRecord>) {
    record = tables.find<Record>(deviceIdOf(id));
  } else {
    record = tables.find<Record>(id);
  }
  return record ? std::optional<ObjectRecord>(std::move(*record)) : std::nullopt;
}

std::optional<ObjectRecord> findAnywhere(Tables& tables, const ObjectKey& key) {
  static constexpr std::array FINDERS{
      findObject<EmsRecord>,         findObject<DeviceRecord>,      findObject<SubnetworkRecord>,
      findObject<LinkRecord>,        findObject<NodeRecord>,        findObject<SubMapRecord>,
      findObject<DisplayLinkRecord>, findObject<PhysicalLinkRecord>};
  return FINDERS[static_cast<std::size_t>(key.kind)](tables, key.id);
}

// --- Creation ---

// Nodes and submaps share a table, and so count together.
long counterOf(ObjectKind kind) {
  return static_cast<long>(kind == ObjectKind::SUB_MAP ? ObjectKind::NODE : kind);
}

// Someone may have chosen the id that is next for an object of his own.
bool isTaken(Tables& tables, ObjectKind kind, long id) {
  return tables.valueOf<bool>(std::string("SELECT 1 FROM ") + placeOf(kind).table + " WHERE id = ?",
                              std::to_string(id));
}

long newId(Tables& tables, ObjectKind kind) {
  long id = std::max(
      1L, tables.valueOf<long>("SELECT next FROM counter WHERE kind = ?", counterOf(kind)));
  while (isTaken(tables, kind, id)) {
    ++id;
  }
  setNextId(tables, kind, id + 1);
  return id;
}

Result checkParent(Tables& tables, const std::string& parentId) {
  return tables.find<SubMapRecord>(parentId) ? Result::DONE : Result::NO_SUCH_OBJECT;
}

// Done, or why the object cannot be created. Whether its id is taken, and
// whether the devices and links it refers to exist, is left to the tables.
Result checkNew(Tables& tables, const DeviceRecord& device) {
  if (device.id < 0 || device.id > LAST_DEVICE_ID || device.name.empty()) {
    return Result::BAD_VALUE;
  }
  return device.siteId.empty() ? Result::DONE : checkParent(tables, device.siteId);
}

Result checkNew(Tables&, const LinkRecord& link) {
  const bool known = link.direction == LinkDirection::UNIDIRECTIONAL ||
                     link.direction == LinkDirection::BIDIRECTIONAL;
  return known ? Result::DONE : Result::BAD_VALUE;
}

Result checkNew(Tables&, const PhysicalLinkRecord&) { return Result::DONE; }

template <class MapObject>
Result checkNew(Tables& tables, const MapObject& object) {
  return checkParent(tables, object.parentId);
}

template <class Record>
Result giveId(Tables& tables, Record& record) {
  if (record.id.empty()) {
    record.id = std::to_string(newId(tables, keyOf(record).kind));
  }
  return Result::DONE;
}

Result giveId(Tables& tables, DeviceRecord& device) {
  if (device.id == 0) {
    device.id = newId(tables, ObjectKind::DEVICE);
  }
  return device.id <= LAST_DEVICE_ID ? Result::DONE : Result::BAD_VALUE;
}

template <class Record>
void giveLabel(Record& record) {
  std::string* label = textOf(record, Attribute::USER_LABEL);
  if (label != nullptr && label->empty()) {
    *label = *textOf(record, Attribute::NATIVE_NAME);
  }
}

template <class Record>
Result insertNew(Tables& tables, const Record& record) {
  try {
    tables.insert(record);
    return Result::DONE;
  } catch (const SQLite::Exception& error) {
    switch (error.getExtendedErrorCode()) {
      case SQLITE_CONSTRAINT_FOREIGNKEY:
        return Result::NO_SUCH_OBJECT;
      case SQLITE_CONSTRAINT_PRIMARYKEY:
      case SQLITE_CONSTRAINT_UNIQUE:
        return Result::OBJECT_EXISTS;
      default:
        throw;
    }
  }
}

template <class Record>
Result createOne(Tables& tables, Record& record) {
  Result step = checkNew(tables, record);
  if (step == Result::DONE) {
    step = giveId(tables, record);
  }
  giveLabel(record);
  return step == Result::DONE ? insertNew(tables, record) : step;
}

// There is one of each, and it stays.
Result createOne(Tables&, EmsRecord&) { return Result::BAD_VALUE; }
Result createOne(Tables&, SubnetworkRecord&) { return Result::BAD_VALUE; }

// --- Removal ---

bool isPermanent(const ObjectKey& key) {
  return key.kind == ObjectKind::EMS || key.kind == ObjectKind::SUBNETWORK ||
         (key.kind == ObjectKind::SUB_MAP && key.id == ROOT_SUBMAP_ID);
}

Result deleteObject(Tables& tables, const ObjectKey& key) {
  try {
    tables.execute(std::string("DELETE FROM ") + placeOf(key.kind).table + " WHERE id = ?", key.id);
    return Result::DONE;
  } catch (const SQLite::Exception& error) {
    if (error.getExtendedErrorCode() != SQLITE_CONSTRAINT_FOREIGNKEY) {
      throw;
    }
    return Result::OBJECT_IN_USE;
  }
}

}  // namespace

void setNextId(Tables& tables, ObjectKind kind, long next) {
  tables.execute("INSERT OR REPLACE INTO counter (kind, next) VALUES (?, ?)", counterOf(kind),
                 next);
}

std::optional<ObjectRecord> Objects::find(const ObjectKey& key) const {
  std::optional<ObjectRecord> object = findAnywhere(tables_, key);
  const bool there = object && (!isInSubMap(key.kind) || key.parentId.empty() ||
                                key.parentId == keyOf(*object).parentId);
  return there ? object : std::nullopt;
}

std::vector<std::string> Objects::ids(ObjectKind kind, const std::string& parentId) const {
  if (!hasTextIds(kind)) {
    return {};
  }
  const std::string all = selectFrom(kind, "id");
  const std::string inOrder = " ORDER BY rowid";
  return parentId.empty() || !isInSubMap(kind)
             ? tables_.valuesOf<std::string>(all + inOrder)
             : tables_.valuesOf<std::string>(all + " AND parent_id = ?" + inOrder, parentId);
}

long Objects::count(ObjectKind kind) const {
  return tables_.valueOf<long>(selectFrom(kind, "count(*)"));
}

bool Objects::labelInUse(ObjectKind kind, const std::string& label,
                         const std::string& exceptId) const {
  const bool hasLabels = kind != ObjectKind::PHYSICAL_LINK;
  return hasLabels && !label.empty() &&
         tables_.valueOf<bool>(selectFrom(kind, "1") + " AND user_label = ? AND id <> ? LIMIT 1",
                               label, exceptId);
}

Result Objects::create(ObjectRecord& object, ListenerCalls& calls) {
  const Result result =
      std::visit([this](auto& record) { return createOne(tables_, record); }, object);
  calls.push_back([told = object](ChangeListener& listener) { listener.created(told); });
  return result;
}

Result Objects::remove(const ObjectKey& key, ListenerCalls& calls) {
  const std::optional<ObjectRecord> object = find(key);
  if (!object) {
    return Result::NO_SUCH_OBJECT;
  }
  if (isPermanent(key)) {
    return Result::BAD_VALUE;
  }
  if (const auto* device = std::get_if<DeviceRecord>(&*object)) {
    alarms_.clearAllOf(device->id, calls);
  }
  calls.push_back([told = *object](ChangeListener& listener) { listener.removed(told); });
  return deleteObject(tables_, key);
}

Result Objects::checkText(const ObjectKey& key, Attribute attribute, const std::string& text,
                          const ChangeOptions& options) const {
  if (key.kind == ObjectKind::DEVICE && attribute == Attribute::NATIVE_NAME && text.empty()) {
    return Result::BAD_VALUE;
  }
  const bool mustBeUnique = attribute == Attribute::USER_LABEL && options.uniqueLabel;
  return mustBeUnique && labelInUse(key.kind, text, key.id) ? Result::LABEL_IN_USE : Result::DONE;
}

Result Objects::store(const ObjectKey& key, AttributeChange change, ListenerCalls& calls) {
  std::string* text =
      std::visit([&](auto& record) { return textOf(record, change.attribute); }, change.record);
  if (text == nullptr) {
    return Result::NO_SUCH_OBJECT;
  }
  if (*text == change.after) {
    return Result::DONE;
  }
  change.before = std::exchange(*text, change.after);
  std::visit([&](const auto& record) { tables_.update(record, key.id); }, change.record);
  calls.push_back(
      [told = std::move(change)](ChangeListener& listener) { listener.attributeChanged(told); });
  return Result::DONE;
}

Result Objects::setAttribute(const ObjectKey& key, Attribute attribute, const std::string& text,
                             const ChangeOptions& options, ListenerCalls& calls) {
  std::optional<ObjectRecord> object = find(key);
  if (!object) {
    return Result::NO_SUCH_OBJECT;
  }
  const Result allowed = checkText(key, attribute, text, options);
  return allowed != Result::DONE
             ? allowed
             : store(key, {std::move(*object), attribute, {}, text, options.origin}, calls);
}

}  // namespace zk::agent
