#include "agent/orb/orb.h"

#include <string>
#include <vector>

#include "agent/base/log.h"
#include "agent/base/loglimit.h"
#include "agent/base/repeating.h"
#include "agent/orb/caller.h"
#include "agent/orb/nils.h"

#if defined(ZK_ORB_TAO)
#include <tao/IORTable/IORTable.h>
#include <tao/Messaging/Messaging.h>
#include <tao/Policy_ManagerC.h>
#include <tao/TimeBaseC.h>
#else
#include "agent/orb/transport.h"
#endif

namespace zk::agent {

namespace {

[[noreturn]] void failToListen(const Endpoint& endpoint, const std::string& otherwise) {
  const std::string why = whyNotListening(endpoint);
  throw ListenError("cannot listen on " + textOf(endpoint) + ": " +
                    (why.empty() ? otherwise : why));
}

bool isEverywhere(const Endpoint& endpoint) {
  return endpoint.host.empty() || endpoint.host == "*" || endpoint.host == "0.0.0.0" ||
         endpoint.host == "::";
}

PortableServer::POA_ptr rootAdapter(CORBA::ORB_ptr orb) {
  const CORBA::Object_var object = orb->resolve_initial_references("RootPOA");
  return PortableServer::POA::_narrow(object.in());
}

#if defined(ZK_ORB_TAO)

std::string endpointOption(const Endpoint& endpoint) {
  const std::string port = std::to_string(endpoint.port);
  return isEverywhere(endpoint) ? "iiop://:" + port : "iiop://" + textOf(endpoint);
}

// A thread for each connection: clients that wait in a blocking pull take one
// each, and those of a pool would soon all be taken. There is no limit of a
// message's size to set here: this ORB knows none.
CORBA::ORB_ptr startOrb(const Endpoint& endpoint) {
  std::vector<std::string> texts = {
      "zk-agent", "-ORBListenEndpoints", endpointOption(endpoint), "-ORBSvcConfDirective",
      "static Server_Strategy_Factory \"-ORBConcurrency thread-per-connection\""};
  std::vector<char*> arguments;
  for (std::string& text : texts) {
    arguments.push_back(text.data());
  }
  int count = static_cast<int>(arguments.size());
  return CORBA::ORB_init(count, arguments.data());
}

std::string publishUnder(CORBA::ORB_ptr orb, const std::string& key,
                         PortableServer::Servant servant) {
  const PortableServer::POA_var root = rootAdapter(orb);
  const PortableServer::ObjectId_var id = root->activate_object(servant);
  const CORBA::Object_var reference = root->id_to_reference(id.in());
  const CORBA::String_var text = orb->object_to_string(reference.in());
  const CORBA::Object_var object = orb->resolve_initial_references("IORTable");
  const IORTable::Table_var table = IORTable::Table::_narrow(object.in());
  table->bind(key.c_str(), text.in());
  return text.in();
}

CORBA::Object_ptr limited(CORBA::Object_ptr object, std::chrono::milliseconds limit) {
  int count = 0;
  const CORBA::ORB_var orb = CORBA::ORB_init(count, nullptr);
  CORBA::Any value;
  value <<= static_cast<TimeBase::TimeT>(limit.count() * 10000);  // units of 100 ns
  CORBA::PolicyList policies;
  policies.length(1);
  policies[0] = orb->create_policy(Messaging::RELATIVE_RT_TIMEOUT_POLICY_TYPE, value);
  CORBA::Object_var result = object->_set_policy_overrides(policies, CORBA::ADD_OVERRIDE);
  policies[0]->destroy();
  return result._retn();
}

#else

// Messages of the ORB join the agent's log instead of standard error. Those that
// differ by numbers only (threads, ports, places in memory) are the same one.
void writeOrbMessage(const char* message) {
  static LogLimit limit(std::chrono::seconds(10), 64);
  std::string text(message);
  while (!text.empty() && text.back() == '\n') {
    text.pop_back();
  }
  std::string subject;
  std::copy_if(text.begin(), text.end(), std::back_inserter(subject),
               [](unsigned char letter) { return std::isxdigit(letter) == 0; });
  limit.logFailure(subject, text);
}

std::string endpointOption(const Endpoint& endpoint) {
  const std::string port = std::to_string(endpoint.port);
  return GuardedTransport::guardedAddress(isEverywhere(endpoint) ? ":" + port : textOf(endpoint));
}

CORBA::ORB_ptr startOrb(const Endpoint& endpoint) {
  const std::string where = endpointOption(endpoint);
  const char* options[][2] = {{"endPoint", where.c_str()},
                              {"supportBootstrapAgent", "0"},
                              {"giopMaxMsgSize", "4194304"},
                              {"maxServerThreadPerConnection", "16"},
                              {"nativeCharCodeSet", "UTF-8"},
                              {"strictIIOP", "0"},
                              {"traceLevel", "1"},
                              {nullptr, nullptr}};
  omniORB::setLogFunction(writeOrbMessage);
  int count = 0;
  CORBA::ORB_var orb = CORBA::ORB_init(count, nullptr, "omniORB4", options);
  GuardedTransport::superviseRequests();
  return orb._retn();
}

// The adapter whose object ids are the whole key in the reference.
std::string publishUnder(CORBA::ORB_ptr orb, const std::string& key,
                         PortableServer::Servant servant) {
  const CORBA::Object_var object = orb->resolve_initial_references("omniINSPOA");
  const PortableServer::POA_var adapter = PortableServer::POA::_narrow(object.in());
  const PortableServer::ObjectId_var id = PortableServer::string_to_ObjectId(key.c_str());
  adapter->activate_object_with_id(id.in(), servant);
  const PortableServer::POAManager_var manager = adapter->the_POAManager();
  manager->activate();
  const CORBA::Object_var reference = adapter->id_to_reference(id.in());
  return CORBA::String_var(orb->object_to_string(reference.in())).in();
}

CORBA::Object_ptr limited(CORBA::Object_ptr object, std::chrono::milliseconds limit) {
  omniORB::setClientCallTimeout(object, static_cast<CORBA::ULong>(limit.count()));
  return CORBA::Object::_duplicate(object);
}

#endif

constexpr std::chrono::milliseconds PATIENCE{1000};  // with clients, when the agent stops

// Until the ORB is shut down, which may come first.
void run(CORBA::ORB_ptr orb) {
  try {
    orb->run();
  } catch (const CORBA::BAD_INV_ORDER&) {
    // Shut down already: there is nothing to serve.
  }
}

}  // namespace

Orb::Orb(const Endpoint& endpoint)
    : guard_(connectionLimits(),
             [this](std::string_view key, const std::string& peer) { return admits(key, peer); }) {
  try {
#if !defined(ZK_ORB_TAO)
    transport_ = std::make_unique<GuardedTransport>(guard_);
#endif
    orb_ = startOrb(endpoint);
    makeNilReferences();
    const PortableServer::POA_var root = rootAdapter(orb_.in());
    sessions_ = std::make_unique<SessionAdapter>(root.in());
  } catch (const CORBA::SystemException& failure) {
    if (!CORBA::is_nil(orb_.in())) {
      orb_->destroy();
    }
    failToListen(endpoint, failure._name());
  }
}

Orb::~Orb() {
  stop();
  sessions_.reset();
  orb_->destroy();
}

std::string Orb::publish(const std::string& key, PortableServer::Servant servant) {
  publicKeys_.insert(key);
  return publishUnder(orb_.in(), key, servant);
}

void Orb::stop() {
  if (!stopped_) {
    stopped_ = true;
    const Repeating cutOff(PATIENCE, [this] { guard_.connections().close(); });
    orb_->shutdown(true);
    if (serving_.joinable()) {
      serving_.join();
    }
  }
}

void Orb::serve() {
  const PortableServer::POA_var root = rootAdapter(orb_.in());
  const PortableServer::POAManager_var manager = root->the_POAManager();
  manager->activate();
  guard_.open();
  serving_ = std::thread([this] { run(orb_.in()); });
}

Guard::Admission Orb::admits(std::string_view key, const std::string& peer) const {
  if (publicKeys_.find(key) != publicKeys_.end()) {
    return Guard::Admission::PUBLIC;
  }
  const auto id = sessionObjectIn(key);
  return id && sessions_->keys().admits(*id, peer) == Admission::ADMITTED
             ? Guard::Admission::MEMBER
             : Guard::Admission::UNKNOWN;
}

CORBA::Object_ptr withCallLimit(CORBA::Object_ptr object, std::chrono::milliseconds limit) {
  return limited(object, limit);
}

}  // namespace zk::agent
