#include "agent/ems/changes.h"

#include <exception>
#include <iterator>

#include "zk_quornex/platform/trace.h"

namespace zk::agent {

// A thread that is delivering holds the mutex, in a call of deliver() further up.
void Delivery::setListener(ChangeListener* listener) ZK_NO_THREAD_SAFETY_ANALYSIS {
  if (deliveringHere()) {
    listener_ = listener;
    return;
  }
  const MutexLock guard(deliveryMutex_);
  listener_ = listener;
}

void Delivery::queue(ListenerCalls calls) {
  const MutexLock guard(queueMutex_);
  std::move(calls.begin(), calls.end(), std::back_inserter(queue_));
}

std::optional<ListenerCall> Delivery::next() {
  const MutexLock guard(queueMutex_);
  if (queue_.empty()) {
    return std::nullopt;
  }
  std::optional<ListenerCall> first(std::move(queue_.front()));
  queue_.pop_front();
  return first;
}

void Delivery::call(const ListenerCall& listenerCall) const {
  if (listener_ == nullptr) {
    return;
  }
  try {
    listenerCall(*listener_);
  } catch (const std::exception& error) {
    NS_CORBA::SetTraceOrigin("delivery", __LINE__);
    NS_CORBA::TaDebugWithPara(1, "ChangeListener failed.%s", error.what());
  } catch (...) {
    NS_CORBA::SetTraceOrigin("delivery", __LINE__);
    NS_CORBA::TaDebug(1, "ChangeListener failed.");
  }
}

void Delivery::deliver() {
  if (deliveringHere()) {
    return;
  }
  const MutexLock guard(deliveryMutex_);
  deliverer_ = std::this_thread::get_id();
  while (const std::optional<ListenerCall> waiting = next()) {
    call(*waiting);
  }
  deliverer_ = std::thread::id();
}

}  // namespace zk::agent
