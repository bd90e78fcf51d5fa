#include "agent/orb/caller.h"

#include "agent/orb/servanthome.h"

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

}  // namespace

std::string callingPeer() { return current(); }

std::string peerOf(std::string_view peerAddress, std::string_view ownAddress) {
  const std::string_view peer = hostOf(peerAddress);
  return std::string(peer == hostOf(ownAddress) ? THIS_HOST : peer);
}

std::optional<std::string_view> sessionObjectIn(std::string_view objectKey) {
  // As the ORB makes a key: the path of the adapter, and the id.
  static const std::string path = std::string("\xff") + SessionAdapter::NAME + '\0';
  if (objectKey.substr(0, path.size()) != path) {
    return std::nullopt;
  }
  return objectKey.substr(path.size());
}

void beginCall(const std::string& peer) { current() = peer; }

void endCall() { current().clear(); }

}  // namespace zk::agent
