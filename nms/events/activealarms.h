// The alarms that the EMS says are active, and which of all alarms are wanted.
#ifndef ZK_NMS_EVENTS_ACTIVEALARMS_H
#define ZK_NMS_EVENTS_ACTIVEALARMS_H

#include <string>
#include <vector>

#include "nms/events/alarm.h"
#include "nms/wire/connection.h"

namespace zk::nms {

struct AlarmScope {
  std::string element;                     // an id or a full name; empty: all
  std::vector<std::string> notSeverities;  // by the names of severityNames
  std::vector<std::string> notCauses;
};

// Throws UsageError.
void checkScope(const AlarmScope& scope);

// In the agent's order; those that are excluded are not even sent. Passes on
// what the calls throw.
std::vector<Alarm> activeAlarms(Connection& connection, const AlarmScope& scope, CORBA::ULong page);

// The element's typed name; empty for all.
std::string scopeName(Connection& connection, const AlarmScope& scope);

// Whether a live alarm is in scope. The clearing of one is whatever its severity
// was: who does not know the alarm has nothing to clear.
bool inScope(const Alarm& alarm, const AlarmScope& scope, const std::string& elementName);

}  // namespace zk::nms

#endif
