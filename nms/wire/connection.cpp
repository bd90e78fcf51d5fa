#include "nms/wire/connection.h"

#include "nms/wire/agentref.h"
#include "nms/wire/names.h"

namespace zk::nms {
namespace {

emsSessionFactory::EmsSessionFactory_I_var factoryAt(Orb& orb, const std::string& reference,
                                                     const std::string& agent) {
  CORBA::Object_var object = orb.toObject(reference);
  emsSessionFactory::EmsSessionFactory_I_var factory =
      emsSessionFactory::EmsSessionFactory_I::_narrow(object.in());
  if (CORBA::is_nil(factory.in())) {
    throw ConnectionError("what answers at " + agent + " is not an agent");
  }
  return factory;
}

}  // namespace

Connection::Connection(const Access& access, Interrupts& interrupts, SessionListener* listener)
    : reference_(agentReference(access.agent)),
      orb_({access.callback, access.timeout}),
      nmsSession_(new NmsSession(listener)),
      interrupts_(interrupts) {
  try {
    logIn(access);
  } catch (const CORBA::SystemException& failure) {
    throw ConnectionError("cannot log in: " + describe(failure, access.agent));
  }
  interrupts_.beforeExit([this] { session_->endSession(); });
}

Connection::~Connection() {
  interrupts_.beforeExit(nullptr);
  logOut();
}

void Connection::logIn(const Access& access) {
  CORBA::Object_var callback = orb_.activate(nmsSession_.in());
  nmsSession::NmsSession_I_var client = nmsSession::NmsSession_I::_narrow(callback.in());
  const auto factory = factoryAt(orb_, reference_, access.agent);
  factory->getEmsSession(access.user.c_str(), access.password.c_str(), client.in(), session_.out());
  if (CORBA::is_nil(session_.in())) {
    throw ConnectionError("cannot log in: the agent at " + access.agent + " gave no session");
  }
  nmsSession_->associate(session_.in());
}

void Connection::logOut() {
  try {
    session_->endSession();
  } catch (const CORBA::Exception&) {
    // An agent that is gone has no session left to end.
  }
}

globaldefs::NVSList_T Connection::objectName(const std::string& argument, const char* kind) {
  if (isFullName(argument)) {
    return toName(parsePairs(argument));
  }
  emsMgr::EMS_T_var ems;
  emsManager()->getEMS(ems.out());
  Pairs pairs = toPairs(ems->name);
  pairs.emplace_back(kind, argument);
  return toName(pairs);
}

void checkArgument(const std::string& argument) {
  if (argument.empty()) {
    throw UsageError("an empty text names nothing");
  }
  if (isFullName(argument)) {
    parsePairs(argument);
  }
}

}  // namespace zk::nms
