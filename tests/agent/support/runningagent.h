// The real agent, started and waited for, and an NMS that talks to it.
#ifndef ZK_TESTS_AGENT_SUPPORT_RUNNINGAGENT_H
#define ZK_TESTS_AGENT_SUPPORT_RUNNINGAGENT_H

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "tests/agent/ems/support.h"
#include "tests/agent/support/localagent.h"
#include "tests/agent/support/process.h"
#include "tests/platform/waiting.h"

namespace zk::test {

// Files and port of an agent, which is started over them as often as wanted.
class RunningAgent {
 public:
  using Arguments = std::vector<std::string>;

  std::unique_ptr<Process> start(const Arguments& more = {}) const {
    Arguments arguments = {"--listen",    "127.0.0.1:" + std::to_string(port),
                           "--inventory", inventory(),
                           "--ior-file",  iorFile()};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return run(arguments);
  }

  std::unique_ptr<Process> run(const Arguments& arguments, const std::string& input = "") const {
    return std::make_unique<Process>(ZK_AGENT_PROGRAM, arguments,
                                     folder.file("output" + std::to_string(++runs_)), input);
  }

  // Whether the agent serves; false when it ended instead.
  bool awaitServing(Process& process) const {
    return becomesTrue([&] { return isServing() || !process.running(); }) && process.running();
  }

  bool isServing() const { return std::filesystem::exists(iorFile()); }

  emsSessionFactory::EmsSessionFactory_I_var factory() const {
    return resolve("corbaloc:iiop:127.0.0.1:" + std::to_string(port) + "/EmsSessionFactory");
  }

  static emsSessionFactory::EmsSessionFactory_I_var resolve(const std::string& reference) {
    int count = 0;
    const CORBA::ORB_var orb = CORBA::ORB_init(count, nullptr);
    const CORBA::Object_var object = orb->string_to_object(reference.c_str());
    return emsSessionFactory::EmsSessionFactory_I::_narrow(object.in());
  }

  std::string inventory() const { return folder.file("agent.db"); }
  std::string iorFile() const { return folder.file("agent.ior"); }

  const TemporaryFolder folder;
  const unsigned short port = freePort();

 private:
  mutable int runs_ = 0;
};

// An NMS's half of a session, reachable by the agent.
class ReachableNms {
 public:
  ReachableNms() : servant(new NmsDouble), owner_(servant) {
    int count = 0;
    const CORBA::ORB_var orb = CORBA::ORB_init(count, nullptr);
    const CORBA::Object_var object = orb->resolve_initial_references("RootPOA");
    adapter_ = PortableServer::POA::_narrow(object.in());
    id_ = adapter_->activate_object(servant);
    const CORBA::Object_var self = adapter_->id_to_reference(id_.in());
    reference = nmsSession::NmsSession_I::_narrow(self.in());
    const PortableServer::POAManager_var manager = adapter_->the_POAManager();
    manager->activate();
  }
  ~ReachableNms() { adapter_->deactivate_object(id_.in()); }
  ReachableNms(const ReachableNms&) = delete;
  ReachableNms& operator=(const ReachableNms&) = delete;

  emsSession::EmsSession_I_var logIn(const RunningAgent& agent, const char* user = "",
                                     const char* password = "") {
    emsSession::EmsSession_I_var session;
    agent.factory()->getEmsSession(user, password, reference.in(), session.out());
    return session;
  }

  NmsDouble* const servant;
  nmsSession::NmsSession_I_var reference;

 private:
  PortableServer::ServantBase_var owner_;
  PortableServer::POA_var adapter_;
  PortableServer::ObjectId_var id_;
};

// A manager of the session.
template <class Interface>
auto managerOf(emsSession::EmsSession_I_ptr session, const char* name) {
  common::Common_I_var common;
  session->getManager(name, common.out());
  return typename Interface::_var_type(Interface::_narrow(common.in()));
}

}  // namespace zk::test

#endif
