#include "agent/channel/gate.h"

#include <algorithm>
#include <utility>

#include "agent/channel/events.h"
#include "zk_quornex/platform/timechange.h"

namespace zk::agent {

Gate::Gate(long proxy, Rules rules, std::shared_ptr<ByteBudget> budget,
           std::shared_ptr<Losses> losses)
    : proxy_(proxy),
      rules_(std::move(rules)),
      budget_(std::move(budget)),
      losses_(std::move(losses)) {}

// Not when it closes: whoever delivers still has what waited then.
Gate::~Gate() { budget_->giveBack(bytes_); }

bool Gate::wants(const CosNotification::EventType& type) const {
  return !isClosed() && rules_.isSubscribed(type);
}

bool Gate::accept(const CosNotification::StructuredEvent& event, std::size_t bytes) {
  if (isClosed()) {
    return false;
  }
  const Verdict verdict = rules_.judge(event);
  noteJudged(verdict != Verdict::UNJUDGED);
  if (verdict == Verdict::DROP) {
    return false;
  }
  const bool accepted = verdict != Verdict::UNJUDGED && hasRoomFor(bytes);
  if (!accepted) {
    lose(event);
  }
  return accepted;
}

void Gate::noteJudged(bool judged) {
  const MutexLock guard(mutex_);
  unjudged_ = !judged;
  endLossWhenHealed();
}

bool Gate::hasRoomFor(std::size_t bytes) {
  const auto limit = static_cast<unsigned long>(rules_.limit());
  const MutexLock guard(mutex_);
  offeredBytes_ = bytes;
  return entered_ - delivered_ < limit && budget_->hasRoomFor(bytes);
}

void Gate::enter() {
  const MutexLock guard(mutex_);
  ++entered_;
  bytes_ += offeredBytes_;
  budget_->take(offeredBytes_);
  changed_.notifyAll();
}

// Of a loss that goes on, nobody asks for the event.
void Gate::lose(const CosNotification::StructuredEvent& event) {
  {
    const MutexLock guard(mutex_);
    if (losing_) {
      healedAt_ = entered_;
      return;
    }
  }
  miss(timeOf(event), textOf(event, "notificationId"));
}

void Gate::miss(const std::string& time, const std::string& notificationId) {
  const MutexLock guard(mutex_);
  if (closed_) {
    return;
  }
  healedAt_ = entered_;
  if (!losing_ && losses_) {
    losses_->lost(proxy_, time, notificationId);
  }
  losing_ = true;
  endLossWhenHealed();
}

void Gate::endLossWhenHealed() {
  if (losing_ && !unjudged_ && delivered_ >= healedAt_) {
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
  leave(count);
  endLossWhenHealed();
}

void Gate::leave(CORBA::ULong count) {
  const unsigned long waiting = entered_ - delivered_;
  const std::size_t bytes = count < waiting ? bytes_ / waiting * count : bytes_;
  bytes_ -= bytes;
  budget_->giveBack(bytes);
  delivered_ += count;
}

void Gate::lost(CORBA::ULong count) {
  {
    const MutexLock guard(mutex_);
    fetched_ += count;
    leave(count);
  }
  miss(NS_QUORCORBA::TimeChange::getUTCTime(), "");
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
