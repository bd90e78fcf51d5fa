// Makes up changes in the embedded EMS, one a step. For one thread.
#ifndef ZK_AGENT_EMS_TRAFFIC_CHANGER_H
#define ZK_AGENT_EMS_TRAFFIC_CHANGER_H

#include <string>
#include <vector>

#include "agent/ems/inventory.h"
#include "agent/ems/traffic/population.h"

namespace zk::agent {

// By this additional text the traffic tells its own alarms: it clears no other.
inline constexpr char TRAFFIC_ALARM_TEXT[] = "made up by the traffic generator";

// The most alarms of its own that are active at a time.
inline constexpr std::size_t MOST_TRAFFIC_ALARMS = 50;

// Raises and clears alarms that the embedded EMS makes up.
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

// The most objects of its own at a time.
inline constexpr std::size_t MOST_TRAFFIC_OBJECTS = 60;

// A text that changes and stays recognisable: "north", "north (2)", "north (3)".
// Never the text itself; after 999 comes 2 again, so it does not grow on.
std::string nextNumbered(const std::string& text);

class Changer {
 public:
  // inventory must outlive this object.
  Changer(Inventory& inventory, unsigned seed)
      : inventory_(inventory), chance_(seed), population_(inventory), alarms_(inventory, chance_) {}

  // Renames or labels an object, changes an owner, raises or clears an alarm,
  // creates an object or removes one that it created itself: nothing that was
  // there before is ever removed. Every step is one change that the listener is
  // told of, but for removing a device with alarms, which clears those too.
  //
  // The same steps for the same inventory and seed, as long as nobody else
  // changes it. Other results than Done mean that somebody did: the step was
  // about an object that is gone, or removed one that others refer to by now;
  // the next steps leave it alone. Throws InventoryError.
  Result step();

 private:
  Result rename();
  Result label();
  Result changeOwner();
  Result raiseAlarm();
  Result clearAlarm();
  Result create();
  Result remove();

  ObjectKey anyDevice();
  std::string anySubMap();
  Result setNext(const ObjectKey& key, Attribute attribute);
  // Forgets the object unless the result is Done.
  Result noted(const ObjectKey& key, Result result);

  template <class Record>
  Result add(Record record, const char* name);
  template <class Record>
  Result store(Record record);
  Result createDevice();
  Result createSubMap();
  Result createNode();
  Result createLink();
  Result createPhysicalLink();

  Inventory& inventory_;
  Chance chance_;
  Population population_;
  AlarmChanger alarms_;
};

}  // namespace zk::agent

#endif
