#include "agent/orb/transport.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <omniORB4/CORBA.h>
#include <omniORB4/giopEndpoint.h>
#include <omniORB4/omniInterceptors.h>
#include <omniORB4/tcpConnection.h>
#include <omniORB4/tcpEndpoint.h>

// After one another in this order.
#include <omniORB4/internal/giopStrand.h>

#include <omniORB4/internal/giopStream.h>

#include <omniORB4/internal/GIOP_S.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <optional>

#include "agent/orb/caller.h"
#include "agent/orb/messagereader.h"
#include "zk_quornex/idl/names.h"

namespace zk::agent {

namespace {

constexpr const char* TYPE = "giop:guarded";
constexpr std::chrono::hours IDLE_TIME{1};
constexpr int PAUSE_MILLISECONDS = 50;

Guard* currentGuard = nullptr;

using Clock = std::chrono::steady_clock;

// The ORB's deadlines are times of the wall clock.
omni_time_t after(std::chrono::nanoseconds time) {
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(time);
  const auto rest = time - seconds;
  omni_time_t result;
  omni_thread::get_time(result, omni_time_t(static_cast<unsigned long>(seconds.count()),
                                            static_cast<unsigned long>(rest.count())));
  return result;
}

bool isOver(const omni_time_t& deadline) { return !(after(std::chrono::seconds(0)) < deadline); }

// As the ORB writes the address of one end of a connection.
std::string addressOf(int socket, int (*ask)(int, sockaddr*, socklen_t*)) {
  sockaddr_storage address{};
  socklen_t size = sizeof address;
  auto* const plain = reinterpret_cast<sockaddr*>(&address);
  if (ask(socket, plain, &size) != 0) {
    return "";
  }
  return CORBA::String_var(omni::tcpSocket::addrToURI(plain, "giop:tcp")).in();
}

// The ORB reads and writes with deadlines only: without one it would make the
// socket block, for whoever else uses it at the moment too.
class GuardedConnection final : public omni::tcpConnection, public Connected {
 public:
  GuardedConnection(int socket, omni::SocketCollection* collection, Guard& guard)
      : omni::tcpConnection(socket, collection),
        Connected(peerOf(addressOf(socket, getpeername), addressOf(socket, getsockname))),
        guard_(guard),
        reader_(Guard::LARGEST_OF_STRANGER) {
    guard_.connections().enter(*this);
  }
  ~GuardedConnection() override { guard_.connections().leave(*this); }

  int Send(void* bytes, std::size_t size, const omni_time_t& deadline) override {
    use(Clock::now());
    const omni_time_t latest = after(Guard::SEND_TIME);
    return tcpConnection::Send(bytes, size, !deadline || latest < deadline ? latest : deadline);
  }

  // Never more than the rest of one message, so that the ORB holds nothing back.
  // Called by one thread at a time.
  int Recv(void* bytes, std::size_t size, const omni_time_t& deadline) override {
    if (handedOver_ == message_.size()) {
      const int state = receiveMessage(deadline);
      if (state <= 0) {
        return state;
      }
    }
    const std::size_t part = std::min(size, message_.size() - handedOver_);
    std::memcpy(bytes, message_.data() + handedOver_, part);
    handedOver_ += part;
    return static_cast<int>(part);
  }

  void setSelectable(int now, CORBA::Boolean isBuffered) override {
    const bool isMore = isBuffered || holdsBytes_.load(std::memory_order_acquire);
    tcpConnection::setSelectable(isMore ? 1 : now, isMore);
  }

  CORBA::Boolean Peek() override {
    return holdsBytes_.load(std::memory_order_acquire) || tcpConnection::Peek();
  }

  // Throws what the message handed over last is refused with, if it is.
  void raiseRefusal() const;

 private:
  void hangUp() override { Shutdown(); }

  int receiveMessage(const omni_time_t& deadline);
  int receiveBytes(const omni_time_t& deadline);
  bool hasMessage();
  int giveUp(const char* reason);

  Guard& guard_;
  MessageReader reader_;
  std::optional<Clock::time_point> due_;  // the end of an unfinished message
  std::array<char, 8192> buffer_{};
  std::string_view received_;  // in the buffer, not read yet
  std::atomic<bool> holdsBytes_{false};
  std::string message_;
  std::size_t handedOver_ = 0;
  Ruling ruling_ = Ruling::SERVE;
  bool isBroken_ = false;
};

void GuardedConnection::raiseRefusal() const {
  switch (ruling_) {
    case Ruling::NO_SUCH_OBJECT:
      throw CORBA::OBJECT_NOT_EXIST(0, CORBA::COMPLETED_NO);
    case Ruling::BAD_VALUE:
      throw CORBA::BAD_PARAM(0, CORBA::COMPLETED_NO);
    case Ruling::NOT_OFFERED:
      throw globaldefs::ProcessingFailureException(globaldefs::EXCPT_NOT_IMPLEMENTED, "");
    case Ruling::DAMAGED:
      throw CORBA::MARSHAL(0, CORBA::COMPLETED_NO);
    default:
      break;
  }
}

// As the ORB wants it: positive with a message, 0 when the time is over, negative
// at the connection's end.
int GuardedConnection::receiveMessage(const omni_time_t& deadline) {
  while (!hasMessage()) {
    if (isBroken_) {
      return -1;
    }
    const int state = receiveBytes(deadline);
    if (state <= 0) {
      return state;
    }
  }
  use(Clock::now());
  return 1;
}

int GuardedConnection::receiveBytes(const omni_time_t& deadline) {
  if (!reader_.isUnfinished()) {
    due_.reset();
  } else if (!due_) {
    due_ = Clock::now() + Guard::MESSAGE_TIME;
  }
  const auto left = due_ ? *due_ - Clock::now() : Clock::duration(IDLE_TIME);
  omni_time_t latest = after(std::max(left, Clock::duration::zero()));
  if (deadline && deadline < latest) {
    latest = deadline;
  }
  const int count = tcpConnection::Recv(buffer_.data(), buffer_.size(), latest);
  if (count > 0) {
    received_ = std::string_view(buffer_.data(), static_cast<std::size_t>(count));
    return count;
  }
  if (count == 0 && due_ && Clock::now() >= *due_) {
    return giveUp("a message does not end");
  }
  const bool isIdle = count == 0 && !(deadline && isOver(deadline));
  return isIdle ? 1 : count;
}

// Reads on in what was received, up to a message that the ORB may have.
bool GuardedConnection::hasMessage() {
  const MessageReader::Step step = reader_.take(received_);
  holdsBytes_.store(!received_.empty(), std::memory_order_release);
  switch (step) {
    case MessageReader::Step::MORE:
      return false;
    case MessageReader::Step::CLOSED:
      isBroken_ = true;
      return false;
    case MessageReader::Step::BROKEN:
      giveUp("this is no request, or too large");
      return false;
    default:
      break;
  }
  message_ = reader_.message();
  handedOver_ = 0;
  ruling_ = guard_.judge(message_, *this);
  if (ruling_ == Ruling::HANG_UP) {
    message_.clear();
    giveUp("a damaged request");
    return false;
  }
  if (isMember()) {
    reader_.allow(Guard::LARGEST_OF_MEMBER);
  }
  return true;
}

int GuardedConnection::giveUp(const char* reason) {
  static constexpr std::array<char, 12> MESSAGE_ERROR = {
      'G', 'I', 'O', 'P', 1, 0, 0, static_cast<char>(GiopType::MESSAGE_ERROR), 0, 0, 0, 0};
  isBroken_ = true;
  guard_.complain(peer(), reason);
  ::send(pd_socket, MESSAGE_ERROR.data(), MESSAGE_ERROR.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
  return -1;
}

// Accepts as the ORB's own endpoint does, but for what happens when descriptors
// or threads are out: it goes on as soon as there are some.
class GuardedEndpoint final : public omni::tcpEndpoint {
 public:
  GuardedEndpoint(const char* address, Guard& guard)
      : omni::tcpEndpoint(address), guard_(guard), reserve_(openReserve()) {}
  ~GuardedEndpoint() override {
    if (reserve_ >= 0) {
      close(reserve_);
    }
  }

  void Poke() override {
    isPoked_ = true;
    guard_.open();
    tcpEndpoint::Poke();
  }

  omni::giopConnection* AcceptAndMonitor(omni::giopConnection::notifyReadable_t notify,
                                         void* cookie) override;

 protected:
  CORBA::Boolean notifyReadable(omni::SocketHolder* holder) override;

 private:
  static int openReserve() { return open("/dev/null", O_RDONLY | O_CLOEXEC); }
  void acceptOne();
  void turnAwayOne();
  void serveReadable(omni::tcpConnection& connection);

  Guard& guard_;
  int reserve_;  // given up for a moment to accept what there is no descriptor for
  int accepted_ = -1;
  omni::giopConnection::notifyReadable_t notify_ = nullptr;
  void* cookie_ = nullptr;
  std::atomic<bool> isPoked_{false};
};

omni::giopConnection* GuardedEndpoint::AcceptAndMonitor(
    omni::giopConnection::notifyReadable_t notify, void* cookie) {
  guard_.awaitOpening();
  notify_ = notify;
  cookie_ = cookie;
  setSelectable(1, 0);
  while (Select()) {
    if (accepted_ >= 0) {
      const int socket = accepted_;
      accepted_ = -1;
      return new GuardedConnection(socket, this, guard_);
    }
    if (isPoked_) {
      break;
    }
  }
  return nullptr;
}

CORBA::Boolean GuardedEndpoint::notifyReadable(omni::SocketHolder* holder) {
  if (holder == static_cast<omni::SocketHolder*>(this)) {
    acceptOne();
    setSelectable(1, 0);
  } else {
    serveReadable(*static_cast<omni::tcpConnection*>(holder));
  }
  return true;
}

void GuardedEndpoint::acceptOne() {
  accepted_ = accept4(pd_socket, nullptr, nullptr, SOCK_CLOEXEC);
  if (accepted_ >= 0) {
    return;
  }
  const int reason = errno;
  if (reason == EMFILE || reason == ENFILE) {
    turnAwayOne();
  }
  if (reason == EMFILE || reason == ENFILE || reason == ENOMEM || reason == ENOBUFS) {
    guard_.complain("newcomer", std::string("turned away: ") + std::strerror(reason));
    poll(nullptr, 0, PAUSE_MILLISECONDS);
  }
}

void GuardedEndpoint::turnAwayOne() {
  guard_.connections().dismissIdlest();
  if (reserve_ >= 0) {
    close(reserve_);
  }
  const int socket = accept4(pd_socket, nullptr, nullptr, SOCK_CLOEXEC);
  if (socket >= 0) {
    close(socket);
  }
  reserve_ = openReserve();
}

// The ORB throws when it has no thread to serve it; nobody would look at the
// connection again.
void GuardedEndpoint::serveReadable(omni::tcpConnection& connection) {
  try {
    notify_(cookie_, &connection);
  } catch (...) {
    guard_.complain("a connection", "closed: no thread to serve it");
    connection.Shutdown();
  }
}

// All but the endpoints is as with the ORB's own transport.
class GuardedTransportType final : public omni::giopTransportImpl {
 public:
  GuardedTransportType() : omni::giopTransportImpl(TYPE) {}

  omni::giopEndpoint* toEndpoint(const char* address) override {
    return currentGuard == nullptr ? nullptr : new GuardedEndpoint(address, *currentGuard);
  }
  omni::giopAddress* toAddress(const char* address) override { return plain().toAddress(address); }
  CORBA::Boolean isValid(const char* address) override { return plain().isValid(address); }
  CORBA::Boolean addToIOR(const char* address, omni::IORPublish* published) override {
    return plain().addToIOR(address, published);
  }
  const omnivector<const char*>* getInterfaceAddress() override {
    return plain().getInterfaceAddress();
  }

 private:
  static omni::giopTransportImpl& plain() { return *str2Transport("giop:tcp:"); }
};

CORBA::Boolean beginRequest(omni::omniInterceptors::serverReceiveRequest_T::info_T& request) {
  const auto* connection =
      dynamic_cast<const GuardedConnection*>(request.giop_s.strand().connection);
  if (connection != nullptr) {
    beginCall(connection->peer());
    connection->raiseRefusal();
  }
  return true;
}

template <class Reply>
CORBA::Boolean endRequest(Reply&) {
  endCall();
  return true;
}

}  // namespace

GuardedTransport::GuardedTransport(Guard& guard) {
  static GuardedTransportType type;  // the ORB keeps what is registered
  currentGuard = &guard;
}

GuardedTransport::~GuardedTransport() { currentGuard = nullptr; }

std::string GuardedTransport::guardedAddress(const std::string& hostAndPort) {
  return std::string(TYPE) + ":" + hostAndPort;
}

void GuardedTransport::superviseRequests() {
  auto* const interceptors = omniORB::getInterceptors();
  interceptors->serverReceiveRequest.add(beginRequest);
  interceptors->serverSendReply.add(endRequest);
  interceptors->serverSendException.add(endRequest);
}

}  // namespace zk::agent
