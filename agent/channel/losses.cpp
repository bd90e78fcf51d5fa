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
  Message message{false, time, notificationId};
  const MutexLock guard(mutex_);
  const bool first = losing_.empty();
  losing_.insert(proxy);
  if (!first) {
    return;
  }
  if (untoldCount_ != 0 && untold_[untoldCount_ - 1].cleared) {
    --untoldCount_;  // what was about to be called over goes on
    return;
  }
  post(std::move(message));
}

void Losses::recovered(long proxy) noexcept {
  Message message{true, "", ""};
  runLogged("the time", [&] { message.time = NS_QUORCORBA::TimeChange::getUTCTime(); });
  const MutexLock guard(mutex_);
  if (losing_.erase(proxy) != 0 && losing_.empty()) {
    post(std::move(message));
  }
}

void Losses::close() {
  const MutexLock guard(mutex_);
  closed_ = true;
  untoldCount_ = 0;
}

// What finds no thread to tell it waits for the next one to come.
void Losses::post(Message message) noexcept {
  if (closed_ || !listener_) {
    return;
  }
  if (untoldCount_ < untold_.size()) {
    untold_[untoldCount_++] = std::move(message);
  }
  if (!telling_) {
    bool isTold = false;
    runLogged("telling a loss", [this, &isTold] {
      isTold = workers_->start([self = shared_from_this()] { self->tellAll(); });
    });
    telling_ = isTold;
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
  if (untoldCount_ == 0) {
    telling_ = false;
    return false;
  }
  message = std::exchange(untold_[0], std::move(untold_[1]));
  --untoldCount_;
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
