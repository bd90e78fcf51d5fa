#include "zk_quornex/messages/listsignal.h"

namespace NS_QUORCORBA {

NXListSignal::State NXListSignal::wait(std::chrono::steady_clock::time_point until) {
  const zk::MutexLock lock(mutex_);
  while (filling_ == Filling::EMPTY && changed_.waitUntil(mutex_, until)) {
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
