// EmsSessionFactory_I: where an NMS logs in. Safe on any thread.
#ifndef ZK_AGENT_SESSIONS_FACTORYSERVANT_H
#define ZK_AGENT_SESSIONS_FACTORYSERVANT_H

#include <string>

#include "agent/ems/inventory.h"
#include "agent/sessions/sessions.h"
#include "agent/sessions/users.h"
#include "zk_quornex/idl/sessions.h"

namespace zk::agent {

class FactoryServant : public virtual POA_emsSessionFactory::EmsSessionFactory_I,
                       public virtual PortableServer::RefCountServantBase {
 public:
  // All but version must outlive the servant.
  FactoryServant(Users& users, Sessions& sessions, Inventory& inventory, EventService& events,
                 std::string version);

  char* getVersion() override;
  void getEmsSession(const char* user, const char* password, nmsSession::NmsSession_I_ptr client,
                     emsSession::EmsSession_I_out emsSessionInterface) override;

 private:
  Users& users_;
  Sessions& sessions_;
  Inventory& inventory_;
  EventService& events_;
  const std::string version_;
};

}  // namespace zk::agent

#endif
