// Raises and clears alarms that the embedded EMS makes up. For one thread.
#ifndef ZK_AGENT_EMS_TRAFFIC_ALARMCHANGER_H
#define ZK_AGENT_EMS_TRAFFIC_ALARMCHANGER_H

#include <vector>

#include "agent/ems/inventory.h"
#include "agent/ems/traffic/population.h"

namespace zk::agent {

// By this additional text the traffic tells its own alarms: it clears no other.
inline constexpr char TRAFFIC_ALARM_TEXT[] = "made up by the traffic generator";

// The most alarms of its own that are active at a time.
inline constexpr std::size_t MOST_TRAFFIC_ALARMS = 50;

class AlarmChanger {
 public:
  AlarmChanger(Inventory& inventory, Chance& chance) : inventory_(inventory), chance_(chance) {}

  // Oldest first.
  std::vector<AlarmRecord> own() const;

  // Raises one that was not active before. deviceId 0: on the EMS itself.
  Result raise(long deviceId);
  // Clears one of its own. NoSuchObject when there is none.
  Result clear();

 private:
  Inventory& inventory_;
  Chance& chance_;
};

}  // namespace zk::agent

#endif
