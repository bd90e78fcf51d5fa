#include "zk_quornex/messages/listsignal.h"

namespace NS_QUORCORBA {

NXListSignal::State NXListSignal::wait(std::chrono::steady_clock::time_point until) {
  std::unique_lock<std::mutex> lock(mutex_);
  changed_.wait_until(lock, until, [this] { return filling_ != Filling::EMPTY; });
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
  const std::lock_guard<std::mutex> guard(mutex_);
  if (filling_ != Filling::ENDED) {
    filling_ = filling;
    changed_.notify_all();
  }
}

}  // namespace NS_QUORCORBA
