#include "agent/channel/budget.h"

#include <algorithm>
#include <utility>

namespace zk::agent {

bool ByteBudget::hasRoomFor(std::size_t bytes) const {
  const std::size_t taken = taken_;
  return taken <= most_ && bytes <= most_ - taken;
}

Charge::Charge(std::shared_ptr<ByteBudget> budget, std::size_t bytes) {
  budget->take(bytes);
  if (!budget->hasRoomFor(0)) {
    budget->giveBack(bytes);
    throw CORBA::NO_RESOURCES();
  }
  budget_ = std::move(budget);
  bytes_ = bytes;
}

Charge::~Charge() {
  if (budget_) {
    budget_->giveBack(bytes_);
  }
}

Charge::Charge(Charge&& other) noexcept
    : budget_(std::move(other.budget_)), bytes_(std::exchange(other.bytes_, 0)) {}

Charge& Charge::operator=(Charge&& other) noexcept {
  std::swap(budget_, other.budget_);
  std::swap(bytes_, other.bytes_);
  return *this;
}

FilterWork::FilterWork(std::int64_t most, std::function<std::int64_t()> perSecond, Clock clock)
    : most_(most),
      perSecond_(std::move(perSecond)),
      clock_(std::move(clock)),
      filled_(clock_()),
      left_(most),
      event_(most / EVENTS_IN_MOST) {}

void FilterWork::beginWith(std::uint64_t number) {
  if (number == number_) {
    return;
  }
  number_ = number;
  judged_.clear();
  const std::int64_t anEvent = most_ / EVENTS_IN_MOST;
  if (!waiting_) {
    left_ -= anEvent - std::max<std::int64_t>(event_.left(), 0);
  }
  waiting_ = waiting_ || left_ < anEvent;
  refill();
  waiting_ = waiting_ && left_ < most_ / 2;
  event_ = etcl::Work(anEvent);
  if (waiting_) {
    event_.giveUp();
  }
}

void FilterWork::refill() {
  const auto now = clock_();
  const auto passed = std::chrono::duration_cast<std::chrono::microseconds>(now - filled_).count();
  const std::int64_t back = std::min<std::int64_t>(passed, 60000000) * perSecond_() / 1000000;
  if (back > 0) {
    filled_ = now;
    left_ = std::min(most_, left_ + back);
  }
}

bool FilterWork::holds(const std::shared_ptr<const Constraint>& constraint,
                       const CosNotification::StructuredEvent& event) {
  const auto known = judged_.find(constraint);
  if (known != judged_.end() || !spend(1)) {
    return known != judged_.end() && known->second;
  }
  const bool holds = constraint->matches(event, event_);
  if (!isSpent()) {
    judged_.emplace(constraint, holds);
  }
  return holds;
}

bool FilterWork::spend(std::size_t units) {
  try {
    if (!isSpent()) {
      event_.spend(units);
    }
  } catch (const etcl::WorkSpent&) {
    // As isSpent says.
  }
  return !isSpent();
}

bool SessionThreads::start(std::function<void()> work) {
  struct Running {
    explicit Running(std::shared_ptr<SessionThreads> of) : threads(std::move(of)) {}
    ~Running() { --threads->running_; }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;
    const std::shared_ptr<SessionThreads> threads;
  };
  if (running_++ >= most_) {
    --running_;
    return false;
  }
  std::shared_ptr<Running> running;
  try {
    running = std::make_shared<Running>(shared_from_this());
  } catch (...) {
    --running_;
    throw;
  }
  return workers_->start([running, kept = std::move(work)] { kept(); });
}

}  // namespace zk::agent
