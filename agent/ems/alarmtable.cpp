#include "agent/ems/alarmtable.h"

namespace zk::agent {

namespace {

using std::chrono::milliseconds;
using std::chrono::system_clock;

constexpr char SELECT[] =
    "SELECT id, device_id, probable_cause, qualifier, native_probable_cause, severity, raised_at,"
    " additional_text FROM alarm ";

AlarmRecord readAlarm(const Statement& row) {
  AlarmRecord alarm;
  int severity = 0;
  long raisedAt = 0;
  row.read(alarm.id, alarm.deviceId, alarm.probableCause, alarm.qualifier,
           alarm.nativeProbableCause, severity, raisedAt, alarm.additionalText);
  alarm.severity = static_cast<Severity>(severity);
  alarm.raisedAt = system_clock::time_point(milliseconds(raisedAt));
  return alarm;
}

std::optional<AlarmRecord> firstOf(Statement row) {
  return row.step() ? std::optional<AlarmRecord>(readAlarm(row)) : std::nullopt;
}

std::vector<AlarmRecord> allOf(Statement row) {
  std::vector<AlarmRecord> alarms;
  while (row.step()) {
    alarms.push_back(readAlarm(row));
  }
  return alarms;
}

long millisecondsOf(system_clock::time_point time) {
  return std::chrono::duration_cast<milliseconds>(time.time_since_epoch()).count();
}

std::optional<long> deviceOrNull(long deviceId) {
  return deviceId == 0 ? std::nullopt : std::optional<long>(deviceId);
}

}  // namespace

std::optional<AlarmRecord> findAlarm(Database& database, long id) {
  return firstOf(database.prepare(std::string(SELECT) + "WHERE id = ?", id));
}

std::optional<AlarmRecord> findSameAlarm(Database& database, const AlarmRecord& alarm) {
  return firstOf(database.prepare(
      std::string(SELECT) +
          "WHERE IFNULL(device_id, 0) = ? AND probable_cause = ? AND qualifier = ?",
      alarm.deviceId, alarm.probableCause, alarm.qualifier));
}

std::vector<AlarmRecord> listAlarms(Database& database, std::optional<long> deviceId) {
  if (!deviceId) {
    return allOf(database.prepare(std::string(SELECT) + "ORDER BY id"));
  }
  // IS, which finds null too, with which the EMS's own alarms are marked.
  return allOf(database.prepare(std::string(SELECT) + "WHERE device_id IS ? ORDER BY id",
                                deviceOrNull(*deviceId)));
}

void insertAlarm(Database& database, AlarmRecord& alarm) {
  database.execute(
      "INSERT INTO alarm (device_id, probable_cause, qualifier, native_probable_cause, severity,"
      " raised_at, additional_text) VALUES (?, ?, ?, ?, ?, ?, ?)",
      deviceOrNull(alarm.deviceId), alarm.probableCause, alarm.qualifier, alarm.nativeProbableCause,
      static_cast<long>(alarm.severity), millisecondsOf(alarm.raisedAt), alarm.additionalText);
  alarm.id = database.lastInsertId();
}

void updateAlarm(Database& database, const AlarmRecord& alarm) {
  database.execute(
      "UPDATE alarm SET native_probable_cause = ?, severity = ?, additional_text = ? WHERE id = ?",
      alarm.nativeProbableCause, static_cast<long>(alarm.severity), alarm.additionalText, alarm.id);
}

void deleteAlarm(Database& database, long id) {
  database.execute("DELETE FROM alarm WHERE id = ?", id);
}

void checkAlarmTable(Database& database) { database.prepare(SELECT); }

}  // namespace zk::agent
