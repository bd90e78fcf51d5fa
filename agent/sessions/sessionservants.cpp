#include "agent/sessions/sessionservants.h"

#include <algorithm>
#include <array>
#include <utility>

#include "agent/base/log.h"
#include "agent/base/sequences.h"
#include "agent/channel/sessionchannel.h"
#include "agent/managers/managers.h"
#include "agent/orb/caller.h"
#include "agent/tmf/errors.h"

namespace zk::agent {

namespace {

using Make = PortableServer::ServantBase* (*)(const Session&, Inventory&);

template <class Servant>
PortableServer::ServantBase* make(const Session& session, Inventory& inventory) {
  return new Servant(session.paging, inventory);
}

struct Offered {
  const char* name;
  Make make;
};

constexpr std::array<Offered, 4> OFFERED = {{
    {"EMS", make<EmsManager>},
    {"ManagedElement", make<ElementManager>},
    {"MultiLayerSubnetwork", make<SubnetworkManager>},
    {"TopologyMap", make<MapManager>},
}};

constexpr std::array<const char*, 6> STANDARD = {"GuiCutThrough",         "EquipmentInventory",
                                                 "PerformanceManagement", "Protection",
                                                 "Maintenance",           "TrafficDescriptor"};

// Makes the manager of this name for a session; the caller owns the servant's
// reference. Throws Refusal: not implemented for a name that the standard knows
// and this agent does not offer, invalid input for any other.
PortableServer::ServantBase* makeManager(const std::string& name, const Session& session,
                                         Inventory& inventory) {
  const auto* const found =
      std::find_if(OFFERED.begin(), OFFERED.end(),
                   [&name](const Offered& manager) { return name == manager.name; });
  if (found != OFFERED.end()) {
    return found->make(session, inventory);
  }
  if (std::find(STANDARD.begin(), STANDARD.end(), name) != STANDARD.end()) {
    throw notImplemented();
  }
  throw refusal(globaldefs::EXCPT_INVALID_INPUT,
                "no manager has the name '" + printable(name.c_str()) + "'");
}

}  // namespace

FactoryServant::FactoryServant(Logins& logins, Sessions& sessions, Inventory& inventory,
                               EventService& events, std::string version)
    : logins_(logins),
      sessions_(sessions),
      inventory_(inventory),
      events_(events),
      version_(std::move(version)) {}

char* FactoryServant::getVersion() { return CORBA::string_dup(version_.c_str()); }

void FactoryServant::getEmsSession(const char* user, const char* password,
                                   nmsSession::NmsSession_I_ptr client,
                                   emsSession::EmsSession_I_out emsSessionInterface) {
  refusingFailures("getEmsSession", [&] {
    if (CORBA::is_nil(client)) {
      throw refusal(globaldefs::EXCPT_INVALID_INPUT, "the client's session reference is nil");
    }
    const Caller caller{user, callingPeer()};
    logins_.check(caller, password);
    const std::shared_ptr<Session> session = sessions_.begin(caller, client);
    try {
      emsSessionInterface = open(session);
    } catch (...) {
      sessions_.end(session->id, "the NMS could not be given it");
      throw;
    }
  });
}

emsSession::EmsSession_I_ptr FactoryServant::open(const std::shared_ptr<Session>& session) {
  const PortableServer::ServantBase_var owner =
      new SessionServant(session, sessions_, inventory_, events_);
  ServantHome::Ticket ticket = 0;
  const CORBA::Object_var reference = session->servants->open(owner.in(), ticket);
  return emsSession::EmsSession_I::_narrow(reference.in());
}

SessionServant::SessionServant(std::shared_ptr<Session> session, Sessions& sessions,
                               Inventory& inventory, EventService& events)
    : session_(std::move(session)), sessions_(sessions), inventory_(inventory), events_(events) {}

session::Session_I_ptr SessionServant::associatedSession() {
  return session::Session_I::_duplicate(session_->client.in());
}

void SessionServant::ping() {}

void SessionServant::endSession() { sessions_.end(session_->id, "the NMS ended it"); }

void SessionServant::getSupportedManagers(emsSession::EmsSession_I::managerNames_T_out names) {
  auto list = std::make_unique<emsSession::EmsSession_I::managerNames_T>();
  for (const Offered& manager : OFFERED) {
    append(*list, CORBA::string_dup(manager.name));
  }
  names = list.release();
}

void SessionServant::getManager(const char* name, common::Common_I_out manager) {
  refusingFailures("getManager", [&] {
    const MutexLock lock(mutex_);
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
  refusingFailures("getEventChannel", [&] { channel = session_->channel(events_)->reference(); });
}

}  // namespace zk::agent
