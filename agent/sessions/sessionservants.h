// What an NMS logs in at, and the EMS's half of its session. Safe on any thread.
#ifndef ZK_AGENT_SESSIONS_SESSIONSERVANTS_H
#define ZK_AGENT_SESSIONS_SESSIONSERVANTS_H

#include <map>
#include <memory>
#include <string>

#include "agent/ems/inventory.h"
#include "agent/sessions/logins.h"
#include "agent/sessions/sessions.h"
#include "zk_quornex/idl/channel.h"
#include "zk_quornex/idl/managers.h"
#include "zk_quornex/idl/sessions.h"
#include "zk_quornex/platform/threadsafety.h"

namespace zk::agent {

// EmsSessionFactory_I.
class FactoryServant : public virtual POA_emsSessionFactory::EmsSessionFactory_I,
                       public virtual PortableServer::RefCountServantBase {
 public:
  // All but version must outlive the servant.
  FactoryServant(Logins& logins, Sessions& sessions, Inventory& inventory, EventService& events,
                 std::string version);

  char* getVersion() override;
  void getEmsSession(const char* user, const char* password, nmsSession::NmsSession_I_ptr client,
                     emsSession::EmsSession_I_out emsSessionInterface) override;

 private:
  emsSession::EmsSession_I_ptr open(const std::shared_ptr<Session>& session);

  Logins& logins_;
  Sessions& sessions_;
  Inventory& inventory_;
  EventService& events_;
  const std::string version_;
};

// EmsSession_I of one session.
class SessionServant : public virtual POA_emsSession::EmsSession_I,
                       public virtual PortableServer::RefCountServantBase {
 public:
  // All but session must outlive the servant.
  SessionServant(std::shared_ptr<Session> session, Sessions& sessions, Inventory& inventory,
                 EventService& events);

  // The NMS's half, as it was given at login.
  session::Session_I_ptr associatedSession() override;
  void ping() override;
  void endSession() override;

  void getSupportedManagers(emsSession::EmsSession_I::managerNames_T_out names) override;
  // The same name gives the same manager again.
  void getManager(const char* name, common::Common_I_out manager) override;
  void getEventChannel(CosNotifyChannelAdmin::EventChannel_out channel) override;

 private:
  const std::shared_ptr<Session> session_;
  Sessions& sessions_;
  Inventory& inventory_;
  EventService& events_;
  Mutex mutex_;
  std::map<std::string, common::Common_I_var> managers_ ZK_GUARDED_BY(mutex_);
};

}  // namespace zk::agent

#endif
