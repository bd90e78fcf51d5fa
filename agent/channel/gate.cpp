#include "agent/channel/gate.h"

#include <algorithm>
#include <utility>

namespace zk::agent {

using Guard = std::lock_guard<std::mutex>;

Gate::Gate(long proxy, Admits admits, Limit limit, std::shared_ptr<Losses> losses)
    : proxy_(proxy),
      admits_(std::move(admits)),
      limit_(std::move(limit)),
      losses_(std::move(losses)) {}

bool Gate::accept(EventKind kind, const CosNotification::StructuredEvent& event) {
  if (isClosed() || !admits_(event)) {
    return false;
  }
  const bool accepted = tryAccept(kind);
  if (!accepted) {
    miss(timeOf(event), textOf(event, "notificationId"));
  }
  return accepted;
}

bool Gate::tryAccept(EventKind kind) {
  const long limit = limit_();
  const Guard guard(mutex_);
  if (accepted_ - delivered_ >= static_cast<unsigned long>(limit)) {
    return false;
  }
  order_.push_back(kind);
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

Gate::Run Gate::next(CORBA::ULong most) const {
  const Guard guard(mutex_);
  Run run;
  if (!order_.empty()) {
    run.kind = order_.front();
    while (run.length < most && run.length < order_.size() && order_[run.length] == run.kind) {
      ++run.length;
    }
  }
  return run;
}

void Gate::fetched(CORBA::ULong count) {
  const Guard guard(mutex_);
  const auto gone = std::min<std::size_t>(count, order_.size());
  order_.erase(order_.begin(), order_.begin() + static_cast<std::ptrdiff_t>(gone));
}

void Gate::delivered(CORBA::ULong count) {
  const Guard guard(mutex_);
  delivered_ += count;
  endLossWhenHealed();
}

std::size_t Gate::waiting() const {
  const Guard guard(mutex_);
  return order_.size();
}

bool Gate::awaitEvents(Clock::time_point until, std::size_t atLeast) const {
  std::unique_lock<std::mutex> lock(mutex_);
  const auto arrived = [&] { return closed_ || order_.size() >= atLeast; };
  if (until == Clock::time_point::max()) {
    changed_.wait(lock, arrived);  // the end of time overflows in wait_until
  } else {
    changed_.wait_until(lock, until, arrived);
  }
  return !closed_ && order_.size() >= atLeast;
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

}  // namespace zk::agent
