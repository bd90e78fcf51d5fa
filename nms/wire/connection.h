// A session at the agent, from login to logout, and what the agent may call.
#ifndef ZK_NMS_WIRE_CONNECTION_H
#define ZK_NMS_WIRE_CONNECTION_H

#include <string>

#include "nms/wire/failure.h"
#include "nms/wire/interrupts.h"
#include "nms/wire/orb.h"
#include "zk_quornex/idl/managers.h"
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
  explicit NmsSession(SessionListener* listener);

  // What associatedSession answers from now on.
  void associate(emsSession::EmsSession_I_ptr session);

  // Whether the agent has ended the session.
  bool ended() const;

  session::Session_I_ptr associatedSession() override;
  void ping() override {}
  void endSession() override;
  void eventLossOccurred(const char* startTime, const char* notificationId) override {
    listener_.eventLossOccurred(startTime, notificationId);
  }
  void eventLossCleared(const char* endTime) override { listener_.eventLossCleared(endTime); }
  void alarmLossOccurred(const char* startTime, const char* notificationId) override {
    listener_.alarmLossOccurred(startTime, notificationId);
  }

 private:
  SessionListener& listener_;

  mutable Mutex mutex_;
  emsSession::EmsSession_I_var session_ ZK_GUARDED_BY(mutex_);
  bool ended_ ZK_GUARDED_BY(mutex_) = false;
};

// Which agent, as whom, and how it is talked to.
struct Access {
  std::string agent = "corbaloc:iiop:127.0.0.1:5814/EmsSessionFactory";
  std::string user;  // empty: no authentication offered
  std::string password;
  unsigned timeout = 30;               // seconds for one call to the agent
  unsigned page = 100;                 // entries of a list asked for at a time
  std::string callback = "127.0.0.1";  // where the agent calls back: HOST or HOST:PORT
};

// What the user says about where the agent is, as a text for the ORB. Takes a
// reference (corbaloc:, corbaname:, IOR:), HOST:PORT, or a file that holds a
// reference. Throws UsageError when text is none of these, and ConnectionError
// when the file cannot be read: an agent that is not running has not written it.
std::string agentReference(const std::string& text);

// One at a time in a process. Any thread may use it.
class Connection {
 public:
  // Logs in. Throws UsageError, ConnectionError, or the agent's
  // ProcessingFailureException when it refuses the login. While it lives, an
  // interrupt logs out too. A null listener hears nothing; another must
  // outlive this.
  Connection(const Access& access, Interrupts& interrupts, SessionListener* listener = nullptr);
  ~Connection();
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  emsSession::EmsSession_I_ptr session() const { return session_.in(); }

  // Entries to ask for at a time.
  CORBA::ULong page() const { return page_; }

  // For the callbacks that commands offer to the agent.
  Orb& orb() { return orb_; }

  // Throws the agent's refusal, or RefusedError when what it hands out is not
  // a Manager.
  template <class Manager>
  typename Manager::_var_type manager(const char* name) {
    common::Common_I_var common;
    session_->getManager(name, common.out());
    typename Manager::_var_type manager = Manager::_narrow(common.in());
    if (CORBA::is_nil(manager.in())) {
      throw RefusedError(std::string("the EMS has no usable manager \"") + name + "\"");
    }
    return manager;
  }

  emsMgr::EMSMgr_I_var emsManager() { return manager<emsMgr::EMSMgr_I>("EMS"); }

 private:
  void logIn(const Access& access);
  void logOut();

  const std::string reference_;  // before the ORB: a bad one need not start it
  const CORBA::ULong page_;
  Orb orb_;
  PortableServer::Servant_var<NmsSession> nmsSession_;
  emsSession::EmsSession_I_var session_;
  Interrupts& interrupts_;
};

}  // namespace zk::nms

#endif
