#include "agent/channel/gate.h"

#include <algorithm>
#include <utility>

#include "agent/channel/events.h"

namespace zk::agent {

using Guard = std::lock_guard<std::mutex>;

Gate::Gate(long proxy, Rules rules, std::shared_ptr<Losses> losses)
    : proxy_(proxy), rules_(std::move(rules)), losses_(std::move(losses)) {}

bool Gate::wants(const CosNotification::EventType& type) const {
  return !isClosed() && rules_.isSubscribed(type);
}

bool Gate::accept(const CosNotification::StructuredEvent& event) {
  if (isClosed() || !rules_.admits(event)) {
    return false;
  }
  const bool accepted = tryAccept();
  if (!accepted) {
    miss(timeOf(event), textOf(event, "notificationId"));
  }
  return accepted;
}

bool Gate::tryAccept() {
  const long limit = rules_.limit();
  const Guard guard(mutex_);
  if (accepted_ - delivered_ >= static_cast<unsigned long>(limit)) {
    return false;
  }
  ++accepted_;
  changed_.notify_all();
  return true;
}

void Gate::miss(const std::string& time, const std::string& notificationId) {
  const Guard guard(mutex_);
  if (closed_) {
    return;
  }
  healedAt_ = accepted_;
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
  const Guard guard(mutex_);
  fetched_ += count;
}

void Gate::delivered(CORBA::ULong count) {
  const Guard guard(mutex_);
  delivered_ += count;
  endLossWhenHealed();
}

std::size_t Gate::waiting() const {
  const Guard guard(mutex_);
  return accepted_ - fetched_;
}

bool Gate::awaitWaiting(std::size_t atLeast, Clock::time_point until) const {
  std::unique_lock<std::mutex> lock(mutex_);
  changed_.wait_until(lock, until, [&] { return closed_ || accepted_ - fetched_ >= atLeast; });
  return !closed_ && accepted_ - fetched_ >= atLeast;
}

bool Gate::awaitResumed() const {
  std::unique_lock<std::mutex> lock(mutex_);
  changed_.wait(lock, [this] { return closed_ || !suspended_; });
  return !closed_;
}

void Gate::pause(Clock::duration time) const {
  std::unique_lock<std::mutex> lock(mutex_);
  changed_.wait_until(lock, Clock::now() + time, [this] { return closed_; });
}

void Gate::suspend(bool suspended) {
  const Guard guard(mutex_);
  suspended_ = suspended;
  changed_.notify_all();
}

bool Gate::isSuspended() const {
  const Guard guard(mutex_);
  return suspended_;
}

void Gate::close() {
  const Guard guard(mutex_);
  closed_ = true;
  changed_.notify_all();
  if (std::exchange(losing_, false) && losses_) {
    losses_->recovered(proxy_);
  }
}

bool Gate::isClosed() const {
  const Guard guard(mutex_);
  return closed_;
}

GateFilter::GateFilter(long client, std::shared_ptr<Gate> gate)
    : client_(client), gate_(std::move(gate)) {}

GateFilter::~GateFilter() { gate_->close(); }

bool GateFilter::isFiltered(const void* context) {
  const auto* const admitted = static_cast<const AdmittedClients*>(context);
  return admitted == nullptr || !std::binary_search(admitted->begin(), admitted->end(), client_);
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
