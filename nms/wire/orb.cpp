// The one file of the program that knows which ORB it is built with.
#include "nms/wire/orb.h"

#include <functional>

#include "nms/wire/failure.h"

#if defined(ZK_ORB_TAO)
#include <tao/Messaging/Messaging.h>
#include <tao/Policy_ManagerC.h>
#include <tao/TimeBaseC.h>
#endif

namespace zk::nms {
namespace {

#if defined(ZK_ORB_TAO)

// One may wait in a consumer for room in the queue; the other still answers.
constexpr int SERVERS = 2;

// A thread that waits for an answer must not serve meanwhile: the one that makes
// room in the queue would wait for room itself. This ORB knows no limit of a
// message's size.
std::vector<std::string> arguments(const OrbSettings& settings) {
  return {"zk-nms", "-ORBListenEndpoints", "iiop://" + settings.callback, "-ORBSvcConfDirective",
          "static Client_Strategy_Factory \"-ORBClientConnectionHandler RW "
          "-ORBTransportMuxStrategy EXCLUSIVE\""};
}

void limitCalls(CORBA::ORB_ptr orb, unsigned seconds) {
  CORBA::Object_var object = orb->resolve_initial_references("ORBPolicyManager");
  CORBA::PolicyManager_var manager = CORBA::PolicyManager::_narrow(object.in());
  CORBA::Any hundredNanoseconds;
  hundredNanoseconds <<= static_cast<TimeBase::TimeT>(seconds) * 10000000;
  CORBA::PolicyList policies(1);
  policies.length(1);
  policies[0] = orb->create_policy(Messaging::RELATIVE_RT_TIMEOUT_POLICY_TYPE, hundredNanoseconds);
  manager->set_policy_overrides(policies, CORBA::ADD_OVERRIDE);
  policies[0]->destroy();
}

#else

// It serves on threads of the ORB's; run() only waits for the end.
constexpr int SERVERS = 1;

bool hasPort(const std::string& callback) {
  const std::size_t bracket = callback.rfind(']');
  return callback.find(':', bracket == std::string::npos ? 0 : bracket) != std::string::npos;
}

// A long page is one message, hence the size; a list of names is short.
std::vector<std::string> arguments(const OrbSettings& settings) {
  const std::string port = hasPort(settings.callback) ? "" : ":";
  const std::string milliseconds = std::to_string(settings.timeout) + "000";
  return {"zk-nms",
          "-ORBendPoint",
          "giop:tcp:" + settings.callback + port,
          "-ORBclientCallTimeOutPeriod",
          milliseconds,
          "-ORBclientConnectTimeOutPeriod",
          milliseconds,
          "-ORBgiopMaxMsgSize",
          "67108864",
          "-ORBnativeCharCodeSet",
          "UTF-8",
          "-ORBtraceLevel",
          "0"};
}

void limitCalls(CORBA::ORB_ptr, unsigned) {}

#endif

CORBA::ORB_ptr start(const OrbSettings& settings) {
  std::vector<std::string> texts = arguments(settings);
  std::vector<char*> argv;
  argv.reserve(texts.size() + 1);
  for (std::string& text : texts) {
    argv.push_back(text.data());
  }
  int argc = static_cast<int>(argv.size());
  argv.push_back(nullptr);
  return CORBA::ORB_init(argc, argv.data());
}

PortableServer::POA_ptr listen(CORBA::ORB_ptr orb) {
  CORBA::Object_var object = orb->resolve_initial_references("RootPOA");
  PortableServer::POA_var poa = PortableServer::POA::_narrow(object.in());
  PortableServer::POAManager_var manager = poa->the_POAManager();
  manager->activate();
  return poa._retn();
}

// For what is done at the end, when there is nobody left to tell.
void inSilence(const std::function<void()>& calls) {
  try {
    calls();
  } catch (const CORBA::Exception&) {
  }
}

}  // namespace

Orb::Orb(const OrbSettings& settings) {
  try {
    orb_ = start(settings);
    limitCalls(orb_.in(), settings.timeout);
    poa_ = listen(orb_.in());
    serve();
  } catch (const CORBA::SystemException& failure) {
    end();
    throw ConnectionError("cannot listen on " + settings.callback + " for the agent's calls (" +
                          failure._name() + ")");
  } catch (...) {
    end();
    throw;
  }
}

Orb::~Orb() { end(); }

void Orb::serve() {
  for (int i = 0; i < SERVERS; ++i) {
    servers_.emplace_back([orb = orb_.in()] { inSilence([orb] { orb->run(); }); });
  }
}

void Orb::end() {
  if (CORBA::is_nil(orb_.in())) {
    return;
  }
  inSilence([this] { orb_->shutdown(true); });
  for (std::thread& server : servers_) {
    server.join();
  }
  inSilence([this] { orb_->destroy(); });
}

CORBA::Object_ptr Orb::toObject(const std::string& reference) {
  try {
    CORBA::Object_var object = orb_->string_to_object(reference.c_str());
    if (!CORBA::is_nil(object.in())) {
      return object._retn();
    }
  } catch (const CORBA::BAD_PARAM&) {
  } catch (const CORBA::MARSHAL&) {
  } catch (const CORBA::INV_OBJREF&) {
  }
  throw UsageError("not a reference to an object: '" + reference + "'");
}

CORBA::Object_ptr Orb::activate(PortableServer::Servant servant) {
  PortableServer::ObjectId_var id = poa_->activate_object(servant);
  return poa_->id_to_reference(id.in());
}

DynamicAny::DynAnyFactory_var Orb::dynAnyFactory() {
  CORBA::Object_var object = orb_->resolve_initial_references("DynAnyFactory");
  return DynamicAny::DynAnyFactory::_narrow(object.in());
}

}  // namespace zk::nms
