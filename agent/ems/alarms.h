// The active alarms. The caller holds the inventory's lock; a change happens in
// its transaction, which it rolls back unless the result is Done.
#ifndef ZK_AGENT_EMS_ALARMS_H
#define ZK_AGENT_EMS_ALARMS_H

#include <optional>
#include <vector>

#include "agent/ems/changes.h"
#include "agent/ems/tables.h"

namespace zk::agent {

class Alarms {
 public:
  explicit Alarms(Tables& tables) : tables_(tables) {}

  std::optional<AlarmRecord> find(long id) const { return tables_.find<AlarmRecord>(id); }

  // Oldest first; of all, of one device, or with 0 of the EMS itself.
  std::vector<AlarmRecord> list(std::optional<long> deviceId) const;

  // See Inventory; calls gets what the listener is to be told.
  Result raise(AlarmRecord& alarm, ListenerCalls& calls);
  Result clear(long id, ListenerCalls& calls);

  // All of the device's, oldest first.
  void clearAllOf(long deviceId, ListenerCalls& calls);

 private:
  Result check(const AlarmRecord& alarm) const;
  bool store(AlarmRecord& alarm);
  void remove(AlarmRecord alarm, ListenerCalls& calls);

  Tables& tables_;
};

}  // namespace zk::agent

#endif
