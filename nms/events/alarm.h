// Alarms as NT_ALARM events and the active-alarm lists describe them: one, those
// that the EMS says are active, and those that are active as far as it has told.
#ifndef ZK_NMS_EVENTS_ALARM_H
#define ZK_NMS_EVENTS_ALARM_H

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "nms/events/event.h"
#include "nms/output/output.h"
#include "nms/wire/connection.h"
#include "zk_quornex/idl/events.h"

namespace zk::nms {

struct Alarm {
  std::string severity;  // "critical", …, "cleared"; whatever was sent when it is none of them
  std::string cause;
  std::string qualifier;
  std::string object;
  std::string text;
  std::string effect;  // "service affecting", "not service affecting", or nothing known
  std::string time;
  std::string layerRate;
  std::string nativeCause;
  std::string notificationId;

  bool cleared() const { return severity == "cleared"; }

  // Events with the same identity are about the same alarm.
  std::string identity() const;

  // Whether another event about it says nothing new.
  bool same(const Alarm& other) const;
};

Alarm readAlarm(const Event& event);

// "major LOS (qualifier), service affecting: text".
std::string alarmText(const Alarm& alarm);

Columns alarmColumns();
Row alarmRow(const Alarm& alarm);

// The names that people type for severities, worst first, "cleared" last.
const std::vector<std::string>& severityNames();

// Throws UsageError when the text is none of them.
notifications::PerceivedSeverity_T severityFrom(const std::string& text);

// Which of all alarms are wanted.
struct AlarmScope {
  std::string element;                     // an id or a full name; empty: all
  std::vector<std::string> notSeverities;  // by the names of severityNames
  std::vector<std::string> notCauses;
};

// Throws UsageError.
void checkScope(const AlarmScope& scope);

// In the agent's order; those that are excluded are not even sent. Passes on
// what the calls throw.
std::vector<Alarm> activeAlarms(Connection& connection, const AlarmScope& scope);

// The element's typed name; empty for all.
std::string scopeName(Connection& connection, const AlarmScope& scope);

// Whether a live alarm is in scope. The clearing of one is whatever its severity
// was: who does not know the alarm has nothing to clear.
bool inScope(const Alarm& alarm, const AlarmScope& scope, const std::string& elementName);

// For one thread.
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
