// The agent's servants in this process, called through references as an NMS
// would call them, over an inventory in memory and a clock that stands still. One
// at a time in a process: there is one event cache.
#ifndef ZK_TESTS_AGENT_SUPPORT_LOCALAGENT_H
#define ZK_TESTS_AGENT_SUPPORT_LOCALAGENT_H

#include <atomic>
#include <chrono>
#include <memory>
#include <string>

#include "agent/channel/eventservice.h"
#include "agent/ems/inventory.h"
#include "agent/ems/inventorybackend.h"
#include "agent/sessions/logins.h"
#include "agent/sessions/sessions.h"
#include "agent/sessions/sessionservants.h"
#include "agent/sessions/users.h"
#include "zk_quornex/idl/managers.h"
#include "zk_quornex/idl/sessions.h"

namespace zk::test {

// The NMS's half of a session.
class NmsDouble : public virtual POA_nmsSession::NmsSession_I,
                  public virtual PortableServer::RefCountServantBase {
 public:
  session::Session_I_ptr associatedSession() override { return session::Session_I::_nil(); }
  void ping() override { ++pings; }
  void endSession() override { ++ends; }
  void eventLossOccurred(const char*, const char*) override {}
  void eventLossCleared(const char*) override {}
  void alarmLossOccurred(const char*, const char*) override {}

  std::atomic<int> pings{0};
  std::atomic<int> ends{0};
};

// One user with one password, or everyone.
class FixedUsers : public zk::agent::Users {
 public:
  bool mayLogIn(const std::string& user, const std::string& password) override {
    return everyone || (user == "operator" && password == "secret");
  }
  bool everyone = true;
};

class LocalAgent {
 public:
  explicit LocalAgent(zk::agent::SessionLimits limits = {}, zk::agent::SeedOptions seed = {})
      : inventory(zk::agent::Inventory::open(":memory:", seed)),
        backend_(*inventory),
        root_(rootAdapter()),
        adapter_(root_.in()),
        logins(users, [this] { return now; }),
        sessions(adapter_, limits, [this] { return now; }),
        events({}, [this](long session) { return sessions.isAlive(session); }) {
    before_ = zk::platform::install(&backend_);
    const PortableServer::POAManager_var manager = root_->the_POAManager();
    manager->activate();
    servant_ = new zk::agent::FactoryServant(logins, sessions, *inventory, events, "3.0");
    factory = emsSessionFactory::EmsSessionFactory_I::_narrow(activate(servant_.in()));
    nms = new NmsDouble;
    nmsReference = nmsSession::NmsSession_I::_narrow(activate(nms));
    nmsOwner_ = nms;
  }

  ~LocalAgent() {
    sessions.endAll("the test is over");
    events.stop();
    deactivate(servant_.in());
    if (nms != nullptr) {
      deactivate(nms);
    }
    zk::platform::install(before_);
  }

  LocalAgent(const LocalAgent&) = delete;
  LocalAgent& operator=(const LocalAgent&) = delete;

  emsSession::EmsSession_I_var logIn(const char* user = "", const char* password = "") {
    emsSession::EmsSession_I_var session;
    factory->getEmsSession(user, password, nmsReference.in(), session.out());
    return session;
  }

  // With another NMS's half, which has to stay until the end.
  emsSession::EmsSession_I_var logInAs(NmsDouble* other) {
    const auto reference = nmsSession::NmsSession_I::_narrow(activate(other));
    const nmsSession::NmsSession_I_var owner = reference;
    emsSession::EmsSession_I_var session;
    factory->getEmsSession("", "", reference, session.out());
    return session;
  }

  // From now on the NMS is not there any more.
  void forgetNms() {
    deactivate(nms);
    nms = nullptr;
  }

  // A manager of a new session, or of the given one.
  template <class Interface>
  auto manager(const char* name, emsSession::EmsSession_I_ptr session) {
    common::Common_I_var common;
    session->getManager(name, common.out());
    return typename Interface::_var_type(Interface::_narrow(common.in()));
  }
  template <class Interface>
  auto manager(const char* name) {
    const emsSession::EmsSession_I_var session = logIn();
    return manager<Interface>(name, session.in());
  }

  std::chrono::steady_clock::time_point now{};
  const std::unique_ptr<zk::agent::Inventory> inventory;
  FixedUsers users;

 private:
  static PortableServer::POA_ptr rootAdapter() {
    int count = 0;
    const CORBA::ORB_var orb = CORBA::ORB_init(count, nullptr);
    const CORBA::Object_var object = orb->resolve_initial_references("RootPOA");
    return PortableServer::POA::_narrow(object.in());
  }

  CORBA::Object_ptr activate(PortableServer::Servant servant) {
    const PortableServer::ObjectId_var id = root_->activate_object(servant);
    activated_ = root_->id_to_reference(id.in());
    return activated_.in();
  }

  void deactivate(PortableServer::Servant servant) {
    const PortableServer::ObjectId_var id = root_->servant_to_id(servant);
    root_->deactivate_object(id.in());
  }

  zk::agent::InventoryBackend backend_;
  zk::platform::EmsBackend* before_ = nullptr;
  const PortableServer::POA_var root_;
  zk::agent::SessionAdapter adapter_;
  CORBA::Object_var activated_;
  PortableServer::ServantBase_var servant_;
  PortableServer::ServantBase_var nmsOwner_;

 public:
  zk::agent::Logins logins;
  zk::agent::Sessions sessions;
  zk::agent::EventService events;
  emsSessionFactory::EmsSessionFactory_I_var factory;
  NmsDouble* nms = nullptr;
  nmsSession::NmsSession_I_var nmsReference;
};

}  // namespace zk::test

#endif
