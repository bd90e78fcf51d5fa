// Tells the NMSs what happens in the embedded EMS. No locks: the inventory calls
// it one change at a time.
#ifndef ZK_AGENT_TMF_CHANGENOTIFIER_H
#define ZK_AGENT_TMF_CHANGENOTIFIER_H

#include "agent/ems/changes.h"
#include "agent/ems/inventory.h"

namespace zk::agent {

// Each change becomes one notification, pushed when the call returns. Not told:
// changes that an NMS asked for, which the library reports itself, and display
// links, for which notifications have no object type.
class ChangeNotifier : public ChangeListener {
 public:
  // inventory, which must outlive this object, is the one behind the platform's
  // EMS services and the one that calls.
  explicit ChangeNotifier(const Inventory& inventory) : inventory_(inventory) {}

  // The body is the record that the NMS would be answered with. A device that
  // is gone again by now is announced without one.
  void created(const ObjectRecord& object) override;
  void removed(const ObjectRecord& object) override;
  void attributeChanged(const AttributeChange& change) override;
  void alarmRaised(const AlarmRecord& alarm) override;
  void alarmCleared(const AlarmRecord& alarm) override;

 private:
  const Inventory& inventory_;
};

// Sends the inventory's changes to the NMSs for as long as it is here.
class ChangeReporting {
 public:
  explicit ChangeReporting(Inventory& inventory) : inventory_(inventory), notifier_(inventory) {
    inventory_.setListener(&notifier_);
  }
  // Waits for a change that is being told.
  ~ChangeReporting() { inventory_.setListener(nullptr); }
  ChangeReporting(const ChangeReporting&) = delete;
  ChangeReporting& operator=(const ChangeReporting&) = delete;

 private:
  Inventory& inventory_;
  ChangeNotifier notifier_;
};

}  // namespace zk::agent

#endif
