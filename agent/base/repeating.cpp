#include "agent/base/repeating.h"

#include <utility>

#include "agent/base/log.h"

namespace zk::agent {

namespace {

using Due = std::optional<Repeating::Clock::time_point>;

constexpr char WHAT[] = "housekeeping";

Repeating::Step periodic(std::chrono::milliseconds period, std::function<void()> step) {
  const Repeating::Clock::time_point first = Repeating::Clock::now() + period;
  return [period, first, step = std::move(step)]() -> Due {
    if (Repeating::Clock::now() < first) {
      return first;
    }
    runLogged(WHAT, step);
    return Repeating::Clock::now() + period;
  };
}

}  // namespace

Repeating::Repeating(Step step) : step_(std::move(step)), thread_([this] { run(); }) {}

Repeating::Repeating(std::chrono::milliseconds period, std::function<void()> step)
    : Repeating(periodic(period, std::move(step))) {}

Repeating::~Repeating() {
  {
    const std::lock_guard<std::mutex> guard(mutex_);
    stopping_ = true;
  }
  changed_.notify_all();
  thread_.join();
}

void Repeating::wake() {
  {
    const std::lock_guard<std::mutex> guard(mutex_);
    woken_ = true;
  }
  changed_.notify_all();
}

void Repeating::run() {
  const auto isWanted = [this] { return woken_ || stopping_; };
  Due due;
  std::unique_lock<std::mutex> lock(mutex_);
  while (true) {
    if (due) {
      changed_.wait_until(lock, *due, isWanted);
    } else {
      changed_.wait(lock, isWanted);
    }
    if (stopping_) {
      return;
    }
    woken_ = false;
    lock.unlock();
    due.reset();
    runLogged(WHAT, [&] { due = step_(); });
    lock.lock();
  }
}

}  // namespace zk::agent
