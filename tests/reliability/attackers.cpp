#include "tests/reliability/attackers.h"

#include <fcntl.h>

#include <cerrno>

#include "zk_quornex/idl/channel.h"
#include "zk_quornex/idl/managers.h"

namespace zk::test {

namespace {

constexpr const char* FACTORY = "EmsSessionFactory";
constexpr const char* HOST_OF_STRANGERS = "127.0.0.2";
constexpr const char* HOST_OF_MEMBERS = "127.0.0.1";
constexpr std::size_t HEADER = 12;
constexpr int PATIENCE_MILLISECONDS = 1000;
constexpr int ANSWER_MILLISECONDS = 300;
constexpr unsigned long STEPS_OF_LOGIN = 1000;

std::string exceptionIn(agent::CdrReader& reader, std::uint32_t status) {
  if (status == 0) {
    return "done";
  }
  if (status > 2) {
    return "another place";
  }
  const std::string id(reader.text(256));
  const std::string name = id.substr(0, id.rfind(':'));
  return name.substr(name.rfind('/') + 1);
}

void skipContexts(agent::CdrReader& reader, std::size_t size) {
  for (std::uint32_t left = reader.uint32(); left != 0 && reader.good(); --left) {
    reader.uint32();
    reader.octetList(size);
  }
}

// What a whole message of the agent says. It answers in the version it is asked in.
std::string answerIn(const std::string& message) {
  if (message[7] != REPLY) {
    return message[7] == ERROR ? "message error" : "other";
  }
  agent::CdrReader reader(message, (message[6] & 1) != 0, HEADER);
  const bool isNew = message[5] >= 2;
  if (!isNew) {
    skipContexts(reader, message.size());
  }
  reader.uint32();
  const std::uint32_t status = reader.uint32();
  if (isNew) {
    skipContexts(reader, message.size());
    reader.align(8);
  }
  return exceptionIn(reader, status);
}

sockaddr_in addressOf(const char* host, unsigned short port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  inet_pton(AF_INET, host, &address.sin_addr);
  return address;
}

CORBA::ORB_var theOrb() {
  int count = 0;
  return CORBA::ORB_init(count, nullptr);
}

}  // namespace

void Stream::send(const std::string& bytes, Answers& answers) {
  if (socket_ < 0 && !connectAgain()) {
    ++answers["no connection"];
    return;
  }
  std::size_t sent = 0;
  while (sent < bytes.size()) {
    pollfd ready{socket_, POLLIN | POLLOUT, 0};
    if (poll(&ready, 1, PATIENCE_MILLISECONDS) <= 0) {
      ++answers["takes nothing"];
      return end();
    }
    if ((ready.revents & ~POLLOUT) != 0 && !read(answers)) {
      ++answers["hung up"];
      return end();
    }
    const ssize_t count = (ready.revents & POLLOUT) == 0
                              ? 0
                              : ::send(socket_, bytes.data() + sent, bytes.size() - sent,
                                       MSG_NOSIGNAL | MSG_DONTWAIT);
    sent += count > 0 ? static_cast<std::size_t>(count) : 0;
  }
}

void Stream::end() {
  if (socket_ >= 0) {
    close(socket_);
    socket_ = -1;
    received_.clear();
  }
}

bool Stream::connectAgain() {
  socket_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const sockaddr_in own = addressOf(from_.c_str(), 0);
  const sockaddr_in agent = addressOf(HOST_OF_MEMBERS, port_);
  if (bind(socket_, reinterpret_cast<const sockaddr*>(&own), sizeof own) != 0 ||
      connect(socket_, reinterpret_cast<const sockaddr*>(&agent), sizeof agent) != 0) {
    end();
    return false;
  }
  return true;
}

bool Stream::read(Answers& answers) {
  char buffer[16384];
  const ssize_t count = recv(socket_, buffer, sizeof buffer, MSG_DONTWAIT);
  if (count <= 0) {
    return count < 0 && (errno == EAGAIN || errno == EINTR);
  }
  received_.append(buffer, static_cast<std::size_t>(count));
  while (received_.size() >= HEADER) {
    agent::CdrReader header(received_, (received_[6] & 1) != 0, 8);
    const std::size_t size = HEADER + header.uint32();
    if (received_.size() < size) {
      break;
    }
    ++answers[answerIn(received_.substr(0, size))];
    received_.erase(0, size);
  }
  return true;
}

Membership::Membership(const RunningAgent& agent) : session_(nms_.logIn(agent)) {
  add("factory", agent.factory().in());
  add("session", session_.in());
  addManagers();
  addChannel();
}

Membership::~Membership() {
  try {
    session_->endSession();
  } catch (const CORBA::Exception&) {
    // One of the messages ended it.
  }
}

void Membership::add(const std::string& kind, CORBA::Object_ptr object) {
  objects_.push_back({kind, keyOf(CORBA::String_var(theOrb()->object_to_string(object)).in())});
}

void Membership::addManagers() {
  emsSession::EmsSession_I::managerNames_T_var names;
  session_->getSupportedManagers(names.out());
  for (CORBA::ULong i = 0; i < names->length(); ++i) {
    common::Common_I_var manager;
    session_->getManager(names[i], manager.out());
    add(names[i].in(), manager.in());
  }
  const auto elements =
      managerOf<managedElementManager::ManagedElementMgr_I>(session_.in(), "ManagedElement");
  globaldefs::NamingAttributesList_T_var list;
  globaldefs::NamingAttributesIterator_I_var iterator;
  elements->getAllManagedElementNames(1, list.out(), iterator.out());
  add("iterator", iterator.in());
}

void Membership::addChannel() {
  using namespace CosNotifyChannelAdmin;
  EventChannel_var channel;
  session_->getEventChannel(channel.out());
  add("channel", channel.in());
  const ConsumerAdmin_var admin = channel->default_consumer_admin();
  add("admin", admin.in());
  const CosNotifyFilter::FilterFactory_var factory = channel->default_filter_factory();
  add("filter factory", factory.in());
  const CosNotifyFilter::Filter_var filter = factory->create_filter("EXTENDED_TCL");
  add("filter", filter.in());
  for (const ClientType type : {STRUCTURED_EVENT, SEQUENCE_EVENT}) {
    const std::string name = type == STRUCTURED_EVENT ? "structured" : "sequence";
    ProxyID id = 0;
    add("push " + name, ProxySupplier_var(admin->obtain_notification_push_supplier(type, id)).in());
    add("pull " + name, ProxySupplier_var(admin->obtain_notification_pull_supplier(type, id)).in());
  }
}

Attacker::Attacker(const RunningAgent& agent, std::uint64_t seed, bool isMember)
    : agent_(agent),
      isMember_(isMember),
      chance_(seed),
      stream_(agent.port, isMember ? HOST_OF_MEMBERS : HOST_OF_STRANGERS) {}

void Attacker::step() {
  if (isMember_ && steps_ % STEPS_OF_LOGIN == 0) {
    logIn();
  }
  ++steps_;
  const Membership::Object object = target();
  const std::string operation = operationOf(object);
  if (chance_.oneIn(10)) {
    return ask(object, operation);
  }
  const std::string message = chance_.oneIn(20)
                                  ? requests_.makeDeep(object.key, 1 + chance_.below(4000))
                                  : requests_.make(object.key, operation);
  const std::string other = requests_.make(object.key, operationOf(object));
  const std::size_t kind = chance_.below(10);
  if (kind < 6) {
    stream_.send(mutator_.mutated(message, other), answers_);
  } else if (kind < 8) {
    stream_.send(mutator_.fragmented(message, other), answers_);
  } else {
    stream_.send(mutator_.cancelled(kind == 8 ? message : mutator_.mutated(message, other)),
                 answers_);
  }
  // A message whose end is missing takes the next ones for it.
  if (chance_.oneIn(40)) {
    stream_.end();
  }
}

void Attacker::logIn() {
  try {
    membership_.reset();
    membership_ = std::make_unique<Membership>(agent_);
  } catch (const CORBA::Exception& failure) {
    ++answers_[std::string("login: ") + failure._name()];
  }
}

// A request as it should be, whose answer says whether the object has the operation.
void Attacker::ask(const Membership::Object& object, const std::string& operation) {
  if (!asking_ || !asking_->isConnected()) {
    asking_ =
        std::make_unique<RawClient>(agent_.port, isMember_ ? HOST_OF_MEMBERS : HOST_OF_STRANGERS);
  }
  const std::string request = requests_.make({2, true}, object.key, operation);
  const auto message = asking_->send(request).receive(ANSWER_MILLISECONDS);
  if (!message) {
    ++answers_["no answer yet"];
    asking_.reset();
    return;
  }
  const std::string answer = answerIn(*message);
  ++answers_[answer];
  if (answer == "BAD_OPERATION") {
    unknown_.insert(object.kind + ' ' + operation);
  }
}

Membership::Object Attacker::target() {
  if (membership_ && !chance_.oneIn(20)) {
    return membership_->objects()[chance_.below(membership_->objects().size())];
  }
  if (chance_.oneIn(4)) {
    return {"none", std::string(chance_.below(40), static_cast<char>(chance_.any()))};
  }
  return {"factory", FACTORY};
}

std::string Attacker::operationOf(const Membership::Object& object) {
  for (int tries = 0; tries < 50; ++tries) {
    const std::string& operation = operations()[chance_.below(operations().size())];
    if (unknown_.count(object.kind + ' ' + operation) == 0) {
      return operation;
    }
  }
  return operations()[chance_.below(operations().size())];
}

}  // namespace zk::test
