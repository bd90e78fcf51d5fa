// The inventory's operations that create and remove objects, and its alarms.
#include <sqlite3.h>

#include "agent/ems/alarmtable.h"
#include "agent/ems/ids.h"
#include "agent/ems/inventory.h"
#include "agent/ems/inventoryimpl.h"
#include "agent/ems/newobjects.h"
#include "agent/ems/tables.h"

namespace zk::agent {

namespace {

using Calls = std::vector<ListenerCall>;

// --- Creation ---

template <class Record>
Result giveId(Database& database, Record& record) {
  if (record.id.empty()) {
    record.id = std::to_string(newId(database, keyOf(record).kind));
  }
  return Result::Done;
}

Result giveId(Database& database, DeviceRecord& device) {
  if (device.id == 0) {
    device.id = newId(database, ObjectKind::Device);
  }
  return device.id <= LAST_DEVICE_ID ? Result::Done : Result::BadValue;
}

void giveLabel(Labels& labels) {
  if (labels.userLabel.empty()) {
    labels.userLabel = labels.nativeName;
  }
}

void giveLabel(DeviceRecord& device) {
  if (device.userLabel.empty()) {
    device.userLabel = device.name;
  }
}

void giveLabel(PhysicalLinkRecord&) {}

template <class Record>
Result insertNew(Database& database, const Record& record) {
  try {
    insert(database, record);
    return Result::Done;
  } catch (const SqliteError& error) {
    switch (error.code()) {
      case SQLITE_CONSTRAINT_FOREIGNKEY:
        return Result::NoSuchObject;
      case SQLITE_CONSTRAINT_PRIMARYKEY:
      case SQLITE_CONSTRAINT_UNIQUE:
        return Result::ObjectExists;
      default:
        throw;
    }
  }
}

// --- Removal ---

bool isPermanent(const ObjectKey& key) {
  return key.kind == ObjectKind::Ems || key.kind == ObjectKind::Subnetwork ||
         (key.kind == ObjectKind::SubMap && key.id == ROOT_SUBMAP_ID);
}

Result deleteObject(Database& database, const ObjectKey& key) {
  try {
    database.execute(std::string("DELETE FROM ") + tableOf(key.kind).name + " WHERE id = ?",
                     key.id);
    return Result::Done;
  } catch (const SqliteError& error) {
    if (error.code() != SQLITE_CONSTRAINT_FOREIGNKEY) {
      throw;
    }
    return Result::ObjectInUse;
  }
}

// --- Alarms ---

void clear(Database& database, AlarmRecord alarm, Calls& calls) {
  deleteAlarm(database, alarm.id);
  alarm.severity = Severity::Cleared;
  calls.push_back(
      [told = std::move(alarm)](ChangeListener& listener) { listener.alarmCleared(told); });
}

void clearAlarmsOf(Database& database, const ObjectRecord& object, Calls& calls) {
  if (const auto* device = std::get_if<DeviceRecord>(&object)) {
    for (const AlarmRecord& alarm : listAlarms(database, device->id)) {
      clear(database, alarm, calls);
    }
  }
}

Result checkAlarm(Database& database, const AlarmRecord& alarm) {
  if (alarm.severity == Severity::Cleared || alarm.probableCause.empty()) {
    return Result::BadValue;
  }
  const bool known = alarm.deviceId == 0 || find<DeviceRecord>(database, alarm.deviceId);
  return known ? Result::Done : Result::NoSuchObject;
}

bool sameContents(const AlarmRecord& left, const AlarmRecord& right) {
  return left.severity == right.severity && left.additionalText == right.additionalText &&
         left.nativeProbableCause == right.nativeProbableCause;
}

// Whether there is anything to tell.
bool storeAlarm(Database& database, AlarmRecord& alarm) {
  const std::optional<AlarmRecord> active = findSameAlarm(database, alarm);
  if (!active) {
    insertAlarm(database, alarm);
    return true;
  }
  alarm.id = active->id;
  alarm.raisedAt = active->raisedAt;
  if (sameContents(*active, alarm)) {
    return false;
  }
  updateAlarm(database, alarm);
  return true;
}

}  // namespace

template <class Record>
Result Inventory::Impl::create(Record& record) {
  Record made = record;
  const Result result = change([&](Database& database, Calls& calls) {
    Result step = checkNew(database, made);
    if (step == Result::Done) {
      step = giveId(database, made);
    }
    giveLabel(made);
    if (step == Result::Done) {
      step = insertNew(database, made);
    }
    calls.push_back(
        [told = ObjectRecord(made)](ChangeListener& listener) { listener.created(told); });
    return step;
  });
  if (result == Result::Done) {
    record = std::move(made);
  }
  return result;
}

Result Inventory::create(DeviceRecord& device) { return impl_->create(device); }
Result Inventory::create(LinkRecord& link) { return impl_->create(link); }
Result Inventory::create(NodeRecord& node) { return impl_->create(node); }
Result Inventory::create(SubMapRecord& subMap) { return impl_->create(subMap); }
Result Inventory::create(DisplayLinkRecord& displayLink) { return impl_->create(displayLink); }
Result Inventory::create(PhysicalLinkRecord& physicalLink) { return impl_->create(physicalLink); }

Result Inventory::remove(const ObjectKey& key) {
  return impl_->change([&](Database& database, Calls& calls) {
    const std::optional<ObjectRecord> record = find(database, key);
    if (!record) {
      return Result::NoSuchObject;
    }
    if (isPermanent(key)) {
      return Result::BadValue;
    }
    clearAlarmsOf(database, *record, calls);
    calls.push_back([told = *record](ChangeListener& listener) { listener.removed(told); });
    return deleteObject(database, key);
  });
}

Result Inventory::raiseAlarm(AlarmRecord& alarm) {
  AlarmRecord raised = alarm;
  raised.raisedAt = std::chrono::time_point_cast<std::chrono::milliseconds>(alarm.raisedAt);
  const Result result = impl_->change([&](Database& database, Calls& calls) {
    const Result allowed = checkAlarm(database, raised);
    if (allowed == Result::Done && storeAlarm(database, raised)) {
      calls.push_back([told = raised](ChangeListener& listener) { listener.alarmRaised(told); });
    }
    return allowed;
  });
  if (result == Result::Done) {
    alarm = std::move(raised);
  }
  return result;
}

Result Inventory::clearAlarm(long id) {
  return impl_->change([&](Database& database, Calls& calls) {
    const std::optional<AlarmRecord> active = findAlarm(database, id);
    if (!active) {
      return Result::NoSuchObject;
    }
    clear(database, *active, calls);
    return Result::Done;
  });
}

}  // namespace zk::agent
