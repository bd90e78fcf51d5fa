// Hands changes to the listener in the order they were stored.
#ifndef ZK_AGENT_EMS_DELIVERY_H
#define ZK_AGENT_EMS_DELIVERY_H

#include <atomic>
#include <deque>
#include <functional>
#include <optional>
#include <thread>
#include <vector>

#include "agent/ems/changes.h"
#include "zk_quornex/platform/threadsafety.h"

namespace zk::agent {

// One call of the listener, waiting to be made.
using ListenerCall = std::function<void(ChangeListener&)>;
using ListenerCalls = std::vector<ListenerCall>;

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
