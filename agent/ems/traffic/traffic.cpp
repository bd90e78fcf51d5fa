#include "agent/ems/traffic/traffic.h"

#include <algorithm>
#include <exception>
#include <stdexcept>
#include <string>
#include <utility>

#include "agent/base/log.h"

namespace zk::agent {

namespace {

double checked(double perSecond) {
  if (!(perSecond >= 0 && perSecond <= HIGHEST_RATE)) {
    throw std::invalid_argument("a rate is 0 to 10000 changes a second");
  }
  return perSecond;
}

// The longest wait that still adds up as a time: a rate may be tiny.
constexpr double LONGEST_PERIOD = 1e6;  // seconds

}  // namespace

void Pace::start(Clock::time_point now, double perSecond) {
  const double seconds = std::min(1 / perSecond, LONGEST_PERIOD);
  period_ = std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds));
  due_ = now + period_;
}

void Pace::stepped(Clock::time_point now) {
  due_ = std::max(due_ + period_, now - std::chrono::seconds(1));
}

Paced::Paced(double perSecond, std::function<void()> step)
    : step_(std::move(step)), thread_([this] { return turn(); }) {
  setRate(perSecond);
}

void Paced::setRate(double perSecond) {
  {
    const MutexLock lock(mutex_);
    rate_ = checked(perSecond);
    if (rate_ > 0) {
      pace_.start(Pace::Clock::now(), rate_);
    }
    ++changes_;
  }
  thread_.wake();
}

double Paced::rate() const {
  const MutexLock lock(mutex_);
  return rate_;
}

// Takes the step if it is due, and says when the next one is.
std::optional<Pace::Clock::time_point> Paced::turn() {
  MutexLock lock(mutex_);
  if (rate_ > 0 && Pace::Clock::now() >= pace_.due()) {
    const unsigned long before = changes_;
    lock.unlock();
    const bool succeeded = step();
    lock.lock();
    if (!succeeded) {
      rate_ = 0;
    } else if (changes_ == before) {
      pace_.stepped(Pace::Clock::now());
    }
  }
  return rate_ > 0 ? std::optional(pace_.due()) : std::nullopt;
}

bool Paced::step() const {
  try {
    step_();
    return true;
  } catch (const std::exception& failure) {
    logFailure(std::string("made-up changes end: ") + failure.what());
    return false;
  }
}

Traffic::Traffic(Inventory& inventory, const TrafficOptions& options)
    : inventory_(inventory), seed_(options.seed), paced_(options.rate, [this] { step(); }) {}

void Traffic::step() {
  if (!changer_) {
    changer_.emplace(inventory_, seed_);
  }
  changer_->step();
}

}  // namespace zk::agent
