#include "zk_quornex/messages/listsignal.h"

#include <utility>

namespace NS_QUORCORBA {

NXListSignal::State NXListSignal::wait(std::chrono::steady_clock::time_point until) {
  const zk::MutexLock lock(mutex_);
  while (filling_ == Filling::EMPTY && missed_ == 0 && changed_.waitUntil(mutex_, until)) {
  }
  if (filling_ != Filling::ENDED && missed_ != 0) {
    return State::MISSED;
  }
  switch (filling_) {
    case Filling::FILLED:
      return State::EVENTS;
    case Filling::ENDED:
      return State::OVER;
    default:
      return State::TIME_OUT;
  }
}

void NXListSignal::end() { become(Filling::ENDED); }

unsigned long NXListSignal::takeMissed() {
  const zk::MutexLock guard(mutex_);
  return std::exchange(missed_, 0);
}

void NXListSignal::miss() {
  const zk::MutexLock guard(mutex_);
  ++missed_;
  changed_.notifyAll();
}

void NXListSignal::become(Filling filling) {
  if (filling_.load(std::memory_order_relaxed) == filling) {
    return;
  }
  const zk::MutexLock guard(mutex_);
  if (filling_ != Filling::ENDED) {
    filling_ = filling;
    changed_.notifyAll();
  }
}

}  // namespace NS_QUORCORBA
