// An alarm of the embedded EMS as the standard's NT_ALARM event. No state; any
// thread may call.
#ifndef ZK_AGENT_TMF_ALARMEVENT_H
#define ZK_AGENT_TMF_ALARMEVENT_H

#include <string>

#include "agent/ems/inventory.h"
#include "zk_quornex/idl/events.h"

namespace zk::agent {

// What the EMS calls the severity.
Severity severityOf(notifications::PerceivedSeverity_T severity);

// As texts of the standard's form.
struct AlarmTimes {
  std::string ems;  // when the EMS tells it
  std::string ne;   // when it happened
};

// The event, its properties in the standard's order; a receiver may read them by
// position. The notification id is the alarm's own number: the same in every
// event about it and in every list of active alarms, over restarts.
//
// objectTypeQualifier follows at the end, where it moves no older property.
// Acknowledgement is not told: the EMS keeps none.
CosNotification::StructuredEvent alarmEvent(const AlarmRecord& alarm, const std::string& nativeName,
                                            const AlarmTimes& times);

std::string timeRaised(const AlarmRecord& alarm);

// What the EMS calls the object that the alarm is about; empty for a device
// that is not there any more.
std::string nativeNameOf(const Inventory& inventory, const AlarmRecord& alarm);

}  // namespace zk::agent

#endif
