// Stands in for the event cache: a list that the test fills, and an open gate.
#ifndef ZK_TESTS_AGENT_CHANNEL_SUPPORT_LISTS_H
#define ZK_TESTS_AGENT_CHANNEL_SUPPORT_LISTS_H

#include <condition_variable>
#include <memory>
#include <mutex>
#include <utility>

#include "agent/channel/eventcache.h"
#include "tests/agent/channel/support/events.h"

namespace zk::test {

class FakeSource : public zk::agent::EventSource {
 public:
  State wait(zk::agent::Gate::Clock::time_point until) override {
    std::unique_lock<std::mutex> lock(mutex_);
    ++waits_;
    changed_.wait_until(lock, until, [this] { return over_ || list_; });
    --waits_;
    if (over_) {
      return State::OVER;
    }
    return list_ ? State::EVENTS : State::TIME_OUT;
  }

  std::unique_ptr<notifications::EventList_T> takeList() override {
    const std::lock_guard<std::mutex> guard(mutex_);
    ++takes;
    return std::move(list_);
  }

  void add(const CosNotification::StructuredEvent& event) {
    const std::lock_guard<std::mutex> guard(mutex_);
    if (!list_) {
      list_ = std::make_unique<notifications::EventList_T>();
    }
    const CORBA::ULong last = list_->length();
    list_->length(last + 1);
    (*list_)[last] = event;
    changed_.notify_all();
  }

  // The client's end.
  void end() {
    const std::lock_guard<std::mutex> guard(mutex_);
    over_ = true;
    changed_.notify_all();
  }

  // The list must not be empty.
  const CosNotification::StructuredEvent* first() {
    const std::lock_guard<std::mutex> guard(mutex_);
    return &(*list_)[0];
  }
  int waiting() {
    const std::lock_guard<std::mutex> guard(mutex_);
    return waits_;
  }

  int takes = 0;

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  std::unique_ptr<notifications::EventList_T> list_;
  int waits_ = 0;
  bool over_ = false;
};

// A gate that lets in whatever is offered, up to a limit that the test sets.
struct OpenGate {
  using Verdict = zk::agent::Verdict;

  explicit OpenGate(long most = 1000, std::shared_ptr<zk::agent::Losses> losses = nullptr)
      : limit(most),
        gate(std::make_shared<zk::agent::Gate>(
            1,
            zk::agent::Gate::Rules{[this](const CosNotification::EventType&) { return wants; },
                                   [this](const CosNotification::StructuredEvent&) {
                                     ++judged;
                                     return canJudge ? (admits ? Verdict::PASS : Verdict::DROP)
                                                     : Verdict::UNJUDGED;
                                   },
                                   [this] { return limit; }},
            budget, std::move(losses))) {}

  bool offer(const CosNotification::StructuredEvent& event, std::size_t bytes = 1) {
    const bool accepted = gate->accept(event, bytes);
    if (accepted) {
      gate->enter();
    }
    return accepted;
  }

  long limit;
  const std::shared_ptr<zk::agent::ByteBudget> budget =
      std::make_shared<zk::agent::ByteBudget>(1000000);
  bool canJudge = true;
  bool wants = true;
  bool admits = true;
  int judged = 0;
  std::shared_ptr<zk::agent::Gate> gate;
};

}  // namespace zk::test

#endif
