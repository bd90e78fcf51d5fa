#include "agent/channel/losses.h"

#include <exception>
#include <utility>

#include "agent/base/log.h"
#include "zk_quornex/idl/corba.h"
#include "zk_quornex/platform/timechange.h"

namespace zk::agent {

Losses::Losses(std::shared_ptr<LossListener> listener, std::shared_ptr<Workers> workers)
    : listener_(std::move(listener)), workers_(std::move(workers)) {}

void Losses::lost(long proxy, const std::string& time, const std::string& notificationId) {
  const MutexLock guard(mutex_);
  const bool first = losing_.empty();
  losing_.insert(proxy);
  if (!first) {
    return;
  }
  if (!untold_.empty() && untold_.back().cleared) {
    untold_.pop_back();  // what was about to be called over goes on
    return;
  }
  post({false, time, notificationId});
}

void Losses::recovered(long proxy) {
  const MutexLock guard(mutex_);
  if (losing_.erase(proxy) != 0 && losing_.empty()) {
    post({true, NS_QUORCORBA::TimeChange::getUTCTime(), ""});
  }
}

void Losses::close() {
  const MutexLock guard(mutex_);
  closed_ = true;
  untold_.clear();
}

void Losses::post(Message message) {
  if (closed_ || !listener_) {
    return;
  }
  untold_.push_back(std::move(message));
  if (!telling_) {
    telling_ = workers_->start([self = shared_from_this()] { self->tellAll(); });
  }
}

void Losses::tellAll() {
  Message message;
  while (takeNext(message)) {
    tell(message);
  }
}

bool Losses::takeNext(Message& message) {
  const MutexLock guard(mutex_);
  if (untold_.empty()) {
    telling_ = false;
    return false;
  }
  message = std::move(untold_.front());
  untold_.pop_front();
  return true;
}

void Losses::tell(const Message& message) {
  try {
    if (message.cleared) {
      listener_->lossCleared(message.time);
    } else {
      listener_->lossOccurred(message.time, message.notificationId);
    }
  } catch (const CORBA::Exception& failure) {
    logFailure(std::string("an NMS was not told of lost events: ") + failure._name());
  } catch (const std::exception& failure) {
    logFailure(std::string("an NMS was not told of lost events: ") + failure.what());
  }
}

}  // namespace zk::agent
