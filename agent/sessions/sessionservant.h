// EmsSession_I: the EMS's half of one NMS session. Safe on any thread.
#ifndef ZK_AGENT_SESSIONS_SESSIONSERVANT_H
#define ZK_AGENT_SESSIONS_SESSIONSERVANT_H

#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "agent/ems/inventory.h"
#include "agent/sessions/sessions.h"
#include "zk_quornex/idl/channel.h"
#include "zk_quornex/idl/managers.h"
#include "zk_quornex/idl/sessions.h"

namespace zk::agent {

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
  std::mutex mutex_;
  std::map<std::string, common::Common_I_var> managers_;
};

}  // namespace zk::agent

#endif
