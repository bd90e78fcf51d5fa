#include "nms/events/alarmtable.h"

#include <set>

namespace zk::nms {

std::optional<AlarmTable::Change> AlarmTable::apply(const Alarm& alarm) {
  const auto known = alarms_.find(alarm.identity());
  if (alarm.cleared()) {
    if (known == alarms_.end()) {
      return std::nullopt;
    }
    alarms_.erase(known);
    return Change{"cleared", alarm};
  }
  if (known == alarms_.end()) {
    alarms_.emplace(alarm.identity(), alarm);
    return Change{"new", alarm};
  }
  if (known->second.same(alarm)) {
    return std::nullopt;
  }
  known->second = alarm;
  return Change{"changed", alarm};
}

std::vector<AlarmTable::Change> AlarmTable::replace(const std::vector<Alarm>& active) {
  std::vector<Change> changes;
  std::set<std::string> present;
  for (const Alarm& alarm : active) {
    present.insert(alarm.identity());
    if (const auto change = apply(alarm)) {
      changes.push_back(*change);
    }
  }
  for (auto known = alarms_.begin(); known != alarms_.end();) {
    if (present.count(known->first) > 0) {
      ++known;
      continue;
    }
    known->second.severity = "cleared";
    changes.push_back({"cleared", known->second});
    known = alarms_.erase(known);
  }
  return changes;
}

}  // namespace zk::nms
