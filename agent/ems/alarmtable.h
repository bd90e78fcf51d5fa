// The active alarms' table. The caller holds the inventory's lock.
#ifndef ZK_AGENT_EMS_ALARMTABLE_H
#define ZK_AGENT_EMS_ALARMTABLE_H

#include <optional>
#include <vector>

#include "agent/ems/records.h"
#include "agent/ems/sqlite.h"

namespace zk::agent {

std::optional<AlarmRecord> findAlarm(Database& database, long id);

// The active alarm that alarm would be another report of.
std::optional<AlarmRecord> findSameAlarm(Database& database, const AlarmRecord& alarm);

// Oldest first; of all, of one device, or with 0 of the EMS itself.
std::vector<AlarmRecord> listAlarms(Database& database, std::optional<long> deviceId);

// Gives alarm its id.
void insertAlarm(Database& database, AlarmRecord& alarm);
void updateAlarm(Database& database, const AlarmRecord& alarm);
void deleteAlarm(Database& database, long id);

// See checkTables.
void checkAlarmTable(Database& database);

}  // namespace zk::agent

#endif
