#include "nms/wire/nmssession.h"

namespace zk::nms {

void NmsSession::associate(emsSession::EmsSession_I_ptr session) {
  const MutexLock guard(mutex_);
  session_ = emsSession::EmsSession_I::_duplicate(session);
}

bool NmsSession::ended() const {
  const MutexLock guard(mutex_);
  return ended_;
}

session::Session_I_ptr NmsSession::associatedSession() {
  const MutexLock guard(mutex_);
  return session::Session_I::_duplicate(session_.in());
}

void NmsSession::endSession() {
  {
    const MutexLock guard(mutex_);
    ended_ = true;
  }
  if (listener_ != nullptr) {
    listener_->sessionEnded();
  }
}

void NmsSession::eventLossOccurred(const char* startTime, const char* notificationId) {
  if (listener_ != nullptr) {
    listener_->eventLossOccurred(startTime, notificationId);
  }
}

void NmsSession::eventLossCleared(const char* endTime) {
  if (listener_ != nullptr) {
    listener_->eventLossCleared(endTime);
  }
}

void NmsSession::alarmLossOccurred(const char* startTime, const char* notificationId) {
  if (listener_ != nullptr) {
    listener_->alarmLossOccurred(startTime, notificationId);
  }
}

}  // namespace zk::nms
