// What the embedded EMS can be asked to change, what it answers, and what it
// tells about its changes.
#ifndef ZK_AGENT_EMS_CHANGES_H
#define ZK_AGENT_EMS_CHANGES_H

#include <atomic>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "agent/ems/records.h"
#include "zk_quornex/platform/threadsafety.h"

namespace zk::agent {

enum class Attribute { USER_LABEL, OWNER, NATIVE_NAME };

// Who asked for a change. The library itself reports a change that an NMS asked
// for through InventoryBackend; a listener that sends notifications leaves those
// out, or the NMS hears of them twice.
enum class Origin { EMS, NMS };

struct ChangeOptions {
  bool uniqueLabel = false;  // refuse a user label that another object of the kind has
  Origin origin = Origin::EMS;
};

// The EMS's own range of result codes, beside those of the name conversion.
enum class Result : unsigned long {
  DONE = 0,
  NO_SUCH_OBJECT = 0x41190001,   // the object, or one it would refer to
  LABEL_IN_USE = 0x41190002,     // another object of the kind has the user label
  STORAGE_FAILURE = 0x41190003,  // nothing was changed; told by InventoryBackend only
  NO_REQUEST = 0x41190004,       // the thread serves no request that says what to change
  BAD_VALUE = 0x41190005,        // a text or number that this object cannot have
  OBJECT_IN_USE = 0x41190006,    // other objects refer to it
  OBJECT_EXISTS = 0x41190007,    // the id is taken
};

constexpr unsigned long codeOf(Result result) { return static_cast<unsigned long>(result); }

struct AttributeChange {
  ObjectRecord record;  // after the change
  Attribute attribute = Attribute::USER_LABEL;
  std::string before;
  std::string after;
  Origin origin = Origin::EMS;
};

// Hears of each change once, after it is stored, in the order of storing, on
// the thread that made it or made another at the same time: never two calls at
// once. No lock over the records is held, so a call may read the inventory and
// even change it; what it changes is told after it returns. A call that is slow
// holds up the threads that change the inventory, not those that read it. What
// a call throws is traced and goes no further.
class ChangeListener {
 public:
  virtual ~ChangeListener() = default;
  virtual void created(const ObjectRecord&) {}
  virtual void removed(const ObjectRecord&) {}  // as it was last
  virtual void attributeChanged(const AttributeChange&) {}
  virtual void alarmRaised(const AlarmRecord&) {}  // also: raised again with other contents
  // raisedAt is still when it was raised; severity is Cleared.
  virtual void alarmCleared(const AlarmRecord&) {}
};

// One call of the listener, waiting to be made.
using ListenerCall = std::function<void(ChangeListener&)>;
using ListenerCalls = std::vector<ListenerCall>;

// Hands changes to the listener in the order they were stored.
class Delivery {
 public:
  // See Inventory::setListener.
  void setListener(ChangeListener* listener);

  // The caller holds the lock under which it stored the changes: that makes the
  // order. It calls deliver() once it has let go of the lock.
  void queue(ListenerCalls calls);

  // Returns when everything queued before has been delivered; at once on a
  // thread that is delivering, which then goes on with what it has queued.
  void deliver();

 private:
  bool deliveringHere() const { return deliverer_.load() == std::this_thread::get_id(); }
  std::optional<ListenerCall> next();
  void call(const ListenerCall& listenerCall) const ZK_REQUIRES(deliveryMutex_);

  Mutex queueMutex_;  // taken last
  std::deque<ListenerCall> queue_ ZK_GUARDED_BY(queueMutex_);

  Mutex deliveryMutex_;  // held during the listener's calls
  ChangeListener* listener_ ZK_GUARDED_BY(deliveryMutex_) = nullptr;
  std::atomic<std::thread::id> deliverer_{};  // who holds deliveryMutex_
};

}  // namespace zk::agent

#endif
