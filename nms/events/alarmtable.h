// The alarms that are active now, as far as the agent has told.
#ifndef ZK_NMS_EVENTS_ALARMTABLE_H
#define ZK_NMS_EVENTS_ALARMTABLE_H

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "nms/events/alarm.h"

namespace zk::nms {

class AlarmTable {
 public:
  struct Change {
    std::string what;  // "new", "changed" or "cleared"
    Alarm alarm;
  };

  // Nothing when it says nothing new: an alarm known as it is, or the clearing
  // of an unknown one.
  std::optional<Change> apply(const Alarm& alarm);

  // Takes over what is active; the changes are those that lead there. An alarm
  // that is gone is "cleared" as it was known last.
  std::vector<Change> replace(const std::vector<Alarm>& active);

  std::size_t size() const { return alarms_.size(); }

 private:
  std::map<std::string, Alarm> alarms_;  // by identity
};

}  // namespace zk::nms

#endif
