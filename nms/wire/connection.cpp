#include "nms/wire/connection.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <regex>

namespace zk::nms {

namespace {

const char* const FACTORY_KEY = "EmsSessionFactory";

bool isReference(const std::string& text) {
  for (const char* scheme : {"corbaloc:", "corbaname:", "IOR:"}) {
    if (text.rfind(scheme, 0) == 0) {
      return true;
    }
  }
  return false;
}

// A name, an IPv4 address or an IPv6 address in brackets; then the port.
bool isHostAndPort(const std::string& text) {
  static const std::regex form("([A-Za-z0-9._-]+|\\[[0-9A-Fa-f:.]+\\]):([0-9]{1,5})");
  std::smatch found;
  if (!std::regex_match(text, found, form)) {
    return false;
  }
  const int port = std::stoi(found[2]);
  return port > 0 && port < 65536;
}

std::string fromFile(const std::string& path) {
  std::ifstream file(path);
  if (!file) {
    throw ConnectionError("cannot read the agent's reference from " + path + ": " +
                          std::strerror(errno));
  }
  std::string reference;
  file >> reference;
  if (!isReference(reference)) {
    throw ConnectionError("the file " + path + " holds no agent reference");
  }
  return reference;
}

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

SessionListener& nobody() {
  static SessionListener hearsNothing;
  return hearsNothing;
}

}  // namespace

NmsSession::NmsSession(SessionListener* listener)
    : listener_(listener != nullptr ? *listener : nobody()) {}

void NmsSession::associate(emsSession::EmsSession_I_ptr session) {
  const MutexLock guard(mutex_);
  session_ = emsSession::EmsSession_I::_duplicate(session);
}

bool NmsSession::ended() const {
  const MutexLock guard(mutex_);
  return ended_;
}

session::Session_I_ptr NmsSession::associatedSession() {
  const MutexLock guard(mutex_);
  return session::Session_I::_duplicate(session_.in());
}

void NmsSession::endSession() {
  {
    const MutexLock guard(mutex_);
    ended_ = true;
  }
  listener_.sessionEnded();
}

std::string agentReference(const std::string& text) {
  std::error_code ignored;
  if (isReference(text)) {
    return text;
  }
  if (std::filesystem::exists(text, ignored) || text.find('/') != std::string::npos) {
    return fromFile(text);
  }
  if (isHostAndPort(text)) {
    return "corbaloc:iiop:" + text + "/" + FACTORY_KEY;
  }
  throw UsageError("not an agent: '" + text +
                   "' is neither HOST:PORT, nor a corbaloc: or IOR: reference, nor a file");
}

Connection::Connection(const Access& access, Interrupts& interrupts, SessionListener* listener)
    : reference_(agentReference(access.agent)),
      page_(access.page),
      orb_({access.callback, access.timeout}),
      nmsSession_(new NmsSession(listener)),
      interrupts_(interrupts) {
  try {
    logIn(access);
  } catch (const CORBA::SystemException& failure) {
    throw ConnectionError("cannot log in: " + callText(failure, access.agent));
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

}  // namespace zk::nms
