#include "nms/events/queue.h"

#include <utility>

namespace zk::nms {

bool EventQueue::put(Event event) {
  const MutexLock lock(mutex_);
  while (!closed_ && told_.size() >= limit_) {
    changed_.wait(mutex_);
  }
  if (closed_) {
    return false;
  }
  told_.push_back({Told::EVENT, std::move(event), "", ""});
  changed_.notifyAll();
  return true;
}

void EventQueue::tell(Told told) {
  const MutexLock guard(mutex_);
  told_.push_back(std::move(told));
  changed_.notifyAll();
}

void EventQueue::add(Event event) { tell({Told::EVENT, std::move(event), "", ""}); }

void EventQueue::disconnected() { tell({Told::DISCONNECTED, {}, "", ""}); }

void EventQueue::sessionEnded() { tell({Told::SESSION_ENDED, {}, "", ""}); }

void EventQueue::eventLossOccurred(const std::string& startTime,
                                   const std::string& notificationId) {
  tell({Told::LOSS_BEGAN, {}, startTime, notificationId});
}

void EventQueue::alarmLossOccurred(const std::string& startTime,
                                   const std::string& notificationId) {
  tell({Told::LOSS_BEGAN, {}, startTime, notificationId});
}

void EventQueue::eventLossCleared(const std::string& endTime) {
  tell({Told::LOSS_ENDED, {}, endTime, ""});
}

std::optional<Told> EventQueue::take(std::chrono::steady_clock::time_point until) {
  const MutexLock lock(mutex_);
  while (told_.empty()) {
    if (!changed_.waitUntil(mutex_, until) && told_.empty()) {
      return std::nullopt;
    }
  }
  std::optional<Told> result(std::move(told_.front()));
  told_.pop_front();
  changed_.notifyAll();
  return result;
}

void EventQueue::close() {
  const MutexLock guard(mutex_);
  closed_ = true;
  changed_.notifyAll();
}

void EventQueue::reopen() {
  const MutexLock guard(mutex_);
  closed_ = false;
}

}  // namespace zk::nms
