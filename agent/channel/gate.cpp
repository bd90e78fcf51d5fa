#include "agent/channel/gate.h"

#include <algorithm>
#include <utility>

#include "agent/channel/events.h"

namespace zk::agent {

Gate::Gate(long proxy, Rules rules, std::shared_ptr<Losses> losses)
    : proxy_(proxy), rules_(std::move(rules)), losses_(std::move(losses)) {}

bool Gate::wants(const CosNotification::EventType& type) const {
  return !isClosed() && rules_.isSubscribed(type);
}

bool Gate::accept(const CosNotification::StructuredEvent& event) {
  if (isClosed() || !rules_.admits(event)) {
    return false;
  }
  if (!hasRoom()) {
    miss(timeOf(event), textOf(event, "notificationId"));
    return false;
  }
  return true;
}

bool Gate::hasRoom() const {
  const auto limit = static_cast<unsigned long>(rules_.limit());
  const MutexLock guard(mutex_);
  return entered_ - delivered_ < limit;
}

void Gate::enter() {
  const MutexLock guard(mutex_);
  ++entered_;
  changed_.notifyAll();
}

void Gate::miss(const std::string& time, const std::string& notificationId) {
  const MutexLock guard(mutex_);
  if (closed_) {
    return;
  }
  healedAt_ = entered_;
  if (!std::exchange(losing_, true) && losses_) {
    losses_->lost(proxy_, time, notificationId);
  }
  endLossWhenHealed();
}

void Gate::endLossWhenHealed() {
  if (losing_ && delivered_ >= healedAt_) {
    losing_ = false;
    if (losses_) {
      losses_->recovered(proxy_);
    }
  }
}

void Gate::fetched(CORBA::ULong count) {
  const MutexLock guard(mutex_);
  fetched_ += count;
}

void Gate::delivered(CORBA::ULong count) {
  const MutexLock guard(mutex_);
  delivered_ += count;
  endLossWhenHealed();
}

std::size_t Gate::waiting() const {
  const MutexLock guard(mutex_);
  return entered_ - fetched_;
}

bool Gate::awaitWaiting(std::size_t atLeast, Clock::time_point until) const {
  const MutexLock guard(mutex_);
  while (!closed_ && entered_ - fetched_ < atLeast && changed_.waitUntil(mutex_, until)) {
  }
  return !closed_ && entered_ - fetched_ >= atLeast;
}

bool Gate::awaitResumed() const {
  const MutexLock guard(mutex_);
  while (!closed_ && suspended_) {
    changed_.wait(mutex_);
  }
  return !closed_;
}

void Gate::pause(Clock::duration time) const {
  const auto until = Clock::now() + time;
  const MutexLock guard(mutex_);
  while (!closed_ && changed_.waitUntil(mutex_, until)) {
  }
}

void Gate::suspend(bool suspended) {
  const MutexLock guard(mutex_);
  suspended_ = suspended;
  changed_.notifyAll();
}

bool Gate::isSuspended() const {
  const MutexLock guard(mutex_);
  return suspended_;
}

void Gate::close() {
  const MutexLock guard(mutex_);
  closed_ = true;
  changed_.notifyAll();
  if (std::exchange(losing_, false) && losses_) {
    losses_->recovered(proxy_);
  }
}

bool Gate::isClosed() const {
  const MutexLock guard(mutex_);
  return closed_;
}

GateFilter::GateFilter(long client, std::shared_ptr<Gate> gate)
    : client_(client), gate_(std::move(gate)) {}

GateFilter::~GateFilter() { gate_->close(); }

bool GateFilter::isFiltered(const void* context) {
  const auto* const admitted = static_cast<const AdmittedClients*>(context);
  if (admitted == nullptr || !std::binary_search(admitted->begin(), admitted->end(), client_)) {
    return true;
  }
  gate_->enter();
  return false;
}

int GateFilter::GetFilter(Numbers&, Texts&, Numbers&, Numbers&, Time& start, Time&, Texts&) {
  start = {1970, 1, 1, 0, 0, 0};
  return 0;
}

int GateFilter::suspendFilter(Numbers&, Numbers&, Numbers&, Numbers&, Time&, Time&, Texts&) {
  return -1;
}

int GateFilter::resumeFilter(Numbers&, Numbers&, Numbers&, Numbers&, Time&, Time&, Texts&) {
  return -1;
}

int GateFilter::cancelFilter(Numbers&, Numbers&, Numbers&, Numbers&, Time&, Time&, Texts&) {
  return -1;
}

}  // namespace zk::agent
