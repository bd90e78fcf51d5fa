#include "agent/sessions/sessionservant.h"

#include "agent/channel/sessionchannel.h"
#include "agent/sessions/managers.h"
#include "agent/tmf/errors.h"

namespace zk::agent {

SessionServant::SessionServant(std::shared_ptr<Session> session, Sessions& sessions,
                               Inventory& inventory, EventService& events)
    : session_(std::move(session)), sessions_(sessions), inventory_(inventory), events_(events) {}

session::Session_I_ptr SessionServant::associatedSession() {
  return session::Session_I::_duplicate(session_->client.in());
}

void SessionServant::ping() {}

void SessionServant::endSession() { sessions_.end(session_->id, "the NMS ended it"); }

void SessionServant::getSupportedManagers(emsSession::EmsSession_I::managerNames_T_out names) {
  emsSession::EmsSession_I::managerNames_T_var list = new emsSession::EmsSession_I::managerNames_T;
  for (const std::string& name : managerNames()) {
    const CORBA::ULong last = list->length();
    list->length(last + 1);
    list[last] = CORBA::string_dup(name.c_str());
  }
  names = list._retn();
}

void SessionServant::getManager(const char* name, common::Common_I_out manager) {
  guarded("getManager", [&] {
    const std::lock_guard<std::mutex> guard(mutex_);
    auto found = managers_.find(name);
    if (found == managers_.end()) {
      const PortableServer::ServantBase_var servant = makeManager(name, *session_, inventory_);
      ServantHome::Ticket ticket = 0;
      const CORBA::Object_var reference = session_->servants->open(servant.in(), ticket);
      found = managers_.emplace(name, common::Common_I::_narrow(reference.in())).first;
    }
    manager = common::Common_I::_duplicate(found->second.in());
  });
}

void SessionServant::getEventChannel(CosNotifyChannelAdmin::EventChannel_out channel) {
  guarded("getEventChannel", [&] { channel = session_->channel(events_)->reference(); });
}

}  // namespace zk::agent
