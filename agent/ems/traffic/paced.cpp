#include "agent/ems/traffic/paced.h"

#include <algorithm>
#include <exception>
#include <stdexcept>
#include <string>

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
    : step_(std::move(step)), rate_(0), thread_() {
  setRate(perSecond);
  thread_ = std::thread([this] { run(); });
}

Paced::~Paced() {
  {
    const std::lock_guard<std::mutex> guard(mutex_);
    stopping_ = true;
  }
  changed_.notify_all();
  thread_.join();
}

void Paced::setRate(double perSecond) {
  {
    const std::lock_guard<std::mutex> guard(mutex_);
    rate_ = checked(perSecond);
    if (rate_ > 0) {
      pace_.start(Pace::Clock::now(), rate_);
    }
    ++changes_;
  }
  changed_.notify_all();
}

double Paced::rate() const {
  const std::lock_guard<std::mutex> guard(mutex_);
  return rate_;
}

void Paced::run() {
  std::unique_lock<std::mutex> lock(mutex_);
  while (!stopping_) {
    const auto differs = [this, seen = changes_] { return stopping_ || changes_ != seen; };
    if (rate_ == 0) {
      changed_.wait(lock, differs);
    } else if (!changed_.wait_until(lock, pace_.due(), differs)) {
      takeStep(lock);
    }
  }
}

void Paced::takeStep(std::unique_lock<std::mutex>& lock) {
  const unsigned long before = changes_;
  lock.unlock();
  bool failed = false;
  try {
    step_();
  } catch (const std::exception& failure) {
    logFailure(std::string("made-up changes end: ") + failure.what());
    failed = true;
  }
  lock.lock();
  if (failed) {
    rate_ = 0;
  } else if (changes_ == before) {
    pace_.stepped(Pace::Clock::now());
  }
}

}  // namespace zk::agent
