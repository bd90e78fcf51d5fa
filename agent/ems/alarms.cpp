#include "agent/ems/alarms.h"

namespace zk::agent {

namespace {

bool sameContents(const AlarmRecord& left, const AlarmRecord& right) {
  return left.severity == right.severity && left.additionalText == right.additionalText &&
         left.nativeProbableCause == right.nativeProbableCause;
}

}  // namespace

std::vector<AlarmRecord> Alarms::list(std::optional<long> deviceId) const {
  if (!deviceId) {
    return tables_.all<AlarmRecord>("1 ORDER BY id");
  }
  // IS, which finds null too, with which the EMS's own alarms are marked.
  return tables_.all<AlarmRecord>("device_id IS NULLIF(?, 0) ORDER BY id", *deviceId);
}

Result Alarms::check(const AlarmRecord& alarm) const {
  if (alarm.severity == Severity::CLEARED || alarm.probableCause.empty()) {
    return Result::BAD_VALUE;
  }
  const bool known = alarm.deviceId == 0 || tables_.find<DeviceRecord>(alarm.deviceId);
  return known ? Result::DONE : Result::NO_SUCH_OBJECT;
}

// Whether there is anything to tell.
bool Alarms::store(AlarmRecord& alarm) {
  const std::vector<AlarmRecord> active =
      tables_.all<AlarmRecord>("IFNULL(device_id, 0) = ? AND probable_cause = ? AND qualifier = ?",
                               alarm.deviceId, alarm.probableCause, alarm.qualifier);
  if (active.empty()) {
    alarm.id = 0;
    tables_.insert(alarm);
    alarm.id = tables_.database().getLastInsertRowid();
    return true;
  }
  alarm.id = active.front().id;
  alarm.raisedAt = active.front().raisedAt;
  if (sameContents(active.front(), alarm)) {
    return false;
  }
  tables_.update(alarm, alarm.id);
  return true;
}

Result Alarms::raise(AlarmRecord& alarm, ListenerCalls& calls) {
  alarm.raisedAt = std::chrono::time_point_cast<std::chrono::milliseconds>(alarm.raisedAt);
  const Result allowed = check(alarm);
  if (allowed == Result::DONE && store(alarm)) {
    calls.push_back([told = alarm](ChangeListener& listener) { listener.alarmRaised(told); });
  }
  return allowed;
}

void Alarms::remove(AlarmRecord alarm, ListenerCalls& calls) {
  tables_.execute("DELETE FROM alarm WHERE id = ?", alarm.id);
  alarm.severity = Severity::CLEARED;
  calls.push_back(
      [told = std::move(alarm)](ChangeListener& listener) { listener.alarmCleared(told); });
}

Result Alarms::clear(long id, ListenerCalls& calls) {
  const std::optional<AlarmRecord> active = find(id);
  if (!active) {
    return Result::NO_SUCH_OBJECT;
  }
  remove(*active, calls);
  return Result::DONE;
}

void Alarms::clearAllOf(long deviceId, ListenerCalls& calls) {
  for (const AlarmRecord& alarm : list(deviceId)) {
    remove(alarm, calls);
  }
}

}  // namespace zk::agent
