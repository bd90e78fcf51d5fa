#include "agent/orb/caller.h"

#include <atomic>

#include "agent/orb/servanthome.h"
#include "zk_quornex/idl/corba.h"

#if !defined(ZK_ORB_TAO)
#include <omniORB4/internal/giopStrand.h>
#include <omniORB4/internal/giopStream.h>
#include <omniORB4/omniInterceptors.h>

#include <omniORB4/internal/GIOP_S.h>
#endif

namespace zk::agent {

namespace {

constexpr std::string_view MAPPED = "::ffff:";  // an IPv4 address in IPv6's form

std::string_view without(std::string_view text, std::string_view front) {
  return text.substr(0, front.size()) == front ? text.substr(front.size()) : text;
}

// "10.1.2.3" of "giop:tcp:10.1.2.3:4711".
std::string_view hostOf(std::string_view address) {
  std::string_view host = address.substr(0, address.rfind(':'));
  const std::size_t bracket = host.find('[');
  if (bracket != std::string_view::npos) {
    host = host.substr(bracket + 1, host.rfind(']') - bracket - 1);
    return without(host, MAPPED);
  }
  return host.substr(host.rfind(':') + 1);
}

std::string& current() {
  thread_local std::string peer;
  return peer;
}

#if !defined(ZK_ORB_TAO)

std::atomic<const ObjectKeys*> admitting{nullptr};

std::string_view textOf(const char* text) { return text != nullptr ? text : ""; }

using Received = omni::omniInterceptors::serverReceiveRequest_T::info_T;

std::string_view keyOf(const Received& request) {
  const int size = request.giop_s.keysize();
  return size <= 0 ? std::string_view()
                   : std::string_view(reinterpret_cast<const char*>(request.giop_s.key()),
                                      static_cast<std::size_t>(size));
}

CORBA::Boolean begin(Received& request) {
  current() = peerOf(textOf(request.peeraddress()), textOf(request.myaddress()));
  const auto id = sessionObjectIn(keyOf(request));
  const ObjectKeys* const keys = admitting.load();
  if (id && keys != nullptr && keys->admits(*id, current()) != Admission::ADMITTED) {
    throw CORBA::OBJECT_NOT_EXIST();
  }
  return true;
}

// A request without a reply is over when the thread begins the next one.
template <class Reply>
CORBA::Boolean end(Reply&) {
  current().clear();
  return true;
}

#endif

}  // namespace

std::string callingPeer() { return current(); }

std::string peerOf(std::string_view peerAddress, std::string_view ownAddress) {
  const std::string_view peer = hostOf(peerAddress);
  return std::string(peer == hostOf(ownAddress) ? THIS_HOST : peer);
}

#if defined(ZK_ORB_TAO)

std::optional<std::string_view> sessionObjectIn(std::string_view) { return std::nullopt; }

// This ORB's requests are not looked at: whoever knows an object's key reaches
// the object.
void screenCallers(const ObjectKeys&) {}

#else

std::optional<std::string_view> sessionObjectIn(std::string_view objectKey) {
  // As the ORB makes a key: the path of the adapter, and the id.
  static const std::string path = std::string("\xff") + SessionAdapter::NAME + '\0';
  if (objectKey.substr(0, path.size()) != path) {
    return std::nullopt;
  }
  return objectKey.substr(path.size());
}

void screenCallers(const ObjectKeys& keys) {
  admitting = &keys;
  auto* const interceptors = omniORB::getInterceptors();
  interceptors->serverReceiveRequest.add(begin);
  interceptors->serverSendReply.add(end);
  interceptors->serverSendException.add(end);
}

#endif

}  // namespace zk::agent
