#include "agent/orb/listencheck.h"

#include <netdb.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <memory>

namespace zk::agent {

namespace {

using Addresses = std::unique_ptr<addrinfo, decltype(&freeaddrinfo)>;

// 0, or the errno of what failed. The same options as a listening ORB's.
int bindOnce(const addrinfo& address) {
  const int fd = socket(address.ai_family, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (fd < 0) {
    return errno;
  }
  const int on = 1;
  setsockopt(fd, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
  const bool bound = bind(fd, address.ai_addr, address.ai_addrlen) == 0 && listen(fd, 1) == 0;
  const int reason = bound ? 0 : errno;
  close(fd);
  return reason;
}

}  // namespace

std::string whyNotListening(const Endpoint& endpoint) {
  addrinfo hints{};
  hints.ai_socktype = SOCK_STREAM;
  hints.ai_flags = AI_PASSIVE | AI_NUMERICSERV;
  const bool everywhere = endpoint.host.empty() || endpoint.host == "*";
  addrinfo* list = nullptr;
  const int failure = getaddrinfo(everywhere ? nullptr : endpoint.host.c_str(),
                                  std::to_string(endpoint.port).c_str(), &hints, &list);
  if (failure != 0) {
    return gai_strerror(failure);
  }
  const Addresses addresses(list, &freeaddrinfo);
  const int reason = bindOnce(*addresses);
  if (reason == EADDRINUSE) {
    return "address in use (is another agent running?)";
  }
  return reason == 0 ? "" : std::strerror(reason);
}

}  // namespace zk::agent
