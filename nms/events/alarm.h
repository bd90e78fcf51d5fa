// An alarm as NT_ALARM events and the active-alarm lists describe it. No state.
#ifndef ZK_NMS_EVENTS_ALARM_H
#define ZK_NMS_EVENTS_ALARM_H

#include <string>
#include <vector>

#include "nms/events/event.h"
#include "nms/output/output.h"
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

}  // namespace zk::nms

#endif
