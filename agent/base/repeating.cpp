#include "agent/base/repeating.h"

#include <exception>
#include <string>

#include "agent/base/log.h"

namespace zk::agent {

Repeating::Repeating(std::chrono::milliseconds period, std::function<void()> step)
    : period_(period), step_(std::move(step)), thread_([this] { run(); }) {}

Repeating::~Repeating() {
  {
    const std::lock_guard<std::mutex> guard(mutex_);
    stopping_ = true;
  }
  stopped_.notify_all();
  thread_.join();
}

void Repeating::run() {
  std::unique_lock<std::mutex> lock(mutex_);
  while (!stopped_.wait_for(lock, period_, [this] { return stopping_; })) {
    lock.unlock();
    try {
      step_();
    } catch (const std::exception& failure) {
      logFailure(std::string("housekeeping failed: ") + failure.what());
    }
    lock.lock();
  }
}

}  // namespace zk::agent
