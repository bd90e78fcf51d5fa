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
    const MutexLock lock(mutex_);
    stopping_ = true;
  }
  changed_.notifyAll();
  thread_.join();
}

void Repeating::wake() {
  {
    const MutexLock lock(mutex_);
    woken_ = true;
  }
  changed_.notifyAll();
}

void Repeating::awaitTurn(const Due& due) {
  while (!woken_ && !stopping_) {
    if (!due) {
      changed_.wait(mutex_);
    } else if (Clock::now() < *due) {
      changed_.waitUntil(mutex_, *due);
    } else {
      return;
    }
  }
}

void Repeating::run() {
  Due due;
  MutexLock lock(mutex_);
  for (awaitTurn(due); !stopping_; awaitTurn(due)) {
    woken_ = false;
    lock.unlock();
    due.reset();
    runLogged(WHAT, [&] { due = step_(); });
    lock.lock();
  }
}

}  // namespace zk::agent
