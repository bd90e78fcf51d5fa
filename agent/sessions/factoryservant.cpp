#include "agent/sessions/factoryservant.h"

#include "agent/base/log.h"
#include "agent/sessions/sessionservant.h"
#include "agent/tmf/errors.h"

namespace zk::agent {

FactoryServant::FactoryServant(Users& users, Sessions& sessions, Inventory& inventory,
                               EventService& events, std::string version)
    : users_(users),
      sessions_(sessions),
      inventory_(inventory),
      events_(events),
      version_(std::move(version)) {}

char* FactoryServant::getVersion() { return CORBA::string_dup(version_.c_str()); }

void FactoryServant::getEmsSession(const char* user, const char* password,
                                   nmsSession::NmsSession_I_ptr client,
                                   emsSession::EmsSession_I_out emsSessionInterface) {
  guarded("getEmsSession", [&] {
    if (CORBA::is_nil(client)) {
      throw refusal(globaldefs::EXCPT_INVALID_INPUT, "the client's session reference is nil");
    }
    // Which of the two is wrong is not told.
    if (!users_.mayLogIn(user, password)) {
      logFailure("login of '" + printable(user) + "' refused");
      throw refusal(globaldefs::EXCPT_ACCESS_DENIED, "wrong user or password");
    }
    const std::shared_ptr<Session> session = sessions_.begin(user, client);
    const PortableServer::ServantBase_var owner =
        new SessionServant(session, sessions_, inventory_, events_);
    ServantHome::Ticket ticket = 0;
    const CORBA::Object_var reference = session->servants->open(owner.in(), ticket);
    emsSessionInterface = emsSession::EmsSession_I::_narrow(reference.in());
  });
}

}  // namespace zk::agent
