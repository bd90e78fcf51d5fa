// The program's half of a session: what the agent may call.
#ifndef ZK_NMS_WIRE_NMSSESSION_H
#define ZK_NMS_WIRE_NMSSESSION_H

#include <string>

#include "zk_quornex/idl/sessions.h"
#include "zk_quornex/platform/threadsafety.h"

namespace zk::nms {

// What a command may want to know of. Called on the ORB's threads, several at
// a time.
class SessionListener {
 public:
  virtual ~SessionListener() = default;

  virtual void sessionEnded() {}
  virtual void eventLossOccurred(const std::string& /*startTime*/,
                                 const std::string& /*notificationId*/) {}
  virtual void alarmLossOccurred(const std::string& /*startTime*/,
                                 const std::string& /*notificationId*/) {}
  virtual void eventLossCleared(const std::string& /*endTime*/) {}
};

class NmsSession : public POA_nmsSession::NmsSession_I {
 public:
  // A null listener hears nothing; another must outlive the ORB.
  explicit NmsSession(SessionListener* listener) : listener_(listener) {}

  // What associatedSession answers from now on.
  void associate(emsSession::EmsSession_I_ptr session);

  // Whether the agent has ended the session.
  bool ended() const;

  session::Session_I_ptr associatedSession() override;
  void ping() override {}
  void endSession() override;
  void eventLossOccurred(const char* startTime, const char* notificationId) override;
  void eventLossCleared(const char* endTime) override;
  void alarmLossOccurred(const char* startTime, const char* notificationId) override;

 private:
  SessionListener* const listener_;

  mutable Mutex mutex_;
  emsSession::EmsSession_I_var session_ ZK_GUARDED_BY(mutex_);
  bool ended_ ZK_GUARDED_BY(mutex_) = false;
};

}  // namespace zk::nms

#endif
