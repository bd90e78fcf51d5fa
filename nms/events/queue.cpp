#include "nms/events/queue.h"

#include <utility>

namespace zk::nms {

bool EventQueue::put(Event event) {
  std::unique_lock<std::mutex> lock(mutex_);
  changed_.wait(lock, [this] { return closed_ || told_.size() < limit_; });
  if (closed_) {
    return false;
  }
  told_.push_back({Told::EVENT, std::move(event), "", ""});
  changed_.notify_all();
  return true;
}

void EventQueue::tell(Told told) {
  const std::lock_guard<std::mutex> guard(mutex_);
  told_.push_back(std::move(told));
  changed_.notify_all();
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
  std::unique_lock<std::mutex> lock(mutex_);
  if (!changed_.wait_until(lock, until, [this] { return !told_.empty(); })) {
    return std::nullopt;
  }
  std::optional<Told> result(std::move(told_.front()));
  told_.pop_front();
  changed_.notify_all();
  return result;
}

void EventQueue::close() {
  const std::lock_guard<std::mutex> guard(mutex_);
  closed_ = true;
  changed_.notify_all();
}

void EventQueue::reopen() {
  const std::lock_guard<std::mutex> guard(mutex_);
  closed_ = false;
}

}  // namespace zk::nms
