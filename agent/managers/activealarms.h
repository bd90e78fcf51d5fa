// The alarms that are active, as the NMS's queries ask for them. No state; any
// thread may call.
#ifndef ZK_AGENT_MANAGERS_ACTIVEALARMS_H
#define ZK_AGENT_MANAGERS_ACTIVEALARMS_H

#include <optional>
#include <set>
#include <string>

#include "agent/ems/inventory.h"
#include "agent/managers/pagedlist.h"
#include "zk_quornex/idl/events.h"

namespace zk::agent {

// What a query leaves out. Filters on the NMS's notifications have no say here:
// the query is how it learns what it did not hear.
struct ExcludedAlarms {
  std::set<std::string> probableCauses;
  std::set<Severity> severities;

  // Throws Refusal, invalid input, for lists that are longer than they can mean.
  ExcludedAlarms(const notifications::ProbableCauseList_T& causes,
                 const notifications::PerceivedSeverityList_T& severities);
  bool contains(const AlarmRecord& alarm) const;
};

// Instead of a device: the EMS itself.
inline constexpr long THE_EMS = 0;

// Oldest first; of the device, of the EMS itself, or without one of all.
// Alarms raised after the call are not in the list, those cleared meanwhile are
// left out, and each is told as it is when its page is fetched. inventory must
// outlive the list.
PagedList<notifications::EventList_T> activeAlarms(const Inventory& inventory,
                                                   const ExcludedAlarms& excluded,
                                                   std::optional<long> deviceId = std::nullopt);

}  // namespace zk::agent

#endif
