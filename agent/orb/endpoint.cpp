#include "agent/orb/endpoint.h"

#include <arpa/inet.h>
#include <netdb.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <stdexcept>

namespace zk::agent {

namespace {

[[noreturn]] void refuse(const std::string& text) {
  throw std::invalid_argument("'" + text + "' is not HOST:PORT");
}

unsigned short portOf(const std::string& digits, const std::string& text) {
  const bool plain = !digits.empty() && digits.size() <= 5 &&
                     std::all_of(digits.begin(), digits.end(),
                                 [](char digit) { return digit >= '0' && digit <= '9'; });
  const unsigned long port = plain ? std::stoul(digits) : 65536;
  if (port > 65535) {
    refuse(text);
  }
  return static_cast<unsigned short>(port);
}

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

Endpoint parseEndpoint(const std::string& text) {
  const std::size_t colon = text.rfind(':');
  if (colon == std::string::npos) {
    refuse(text);
  }
  std::string host = text.substr(0, colon);
  const bool bracketed = host.size() > 2 && host.front() == '[' && host.back() == ']';
  if (bracketed) {
    host = host.substr(1, host.size() - 2);
  } else if (host.find_first_of("[]:") != std::string::npos) {
    refuse(text);
  }
  return {host, portOf(text.substr(colon + 1), text)};
}

std::string textOf(const Endpoint& endpoint) {
  const bool bracketed = endpoint.host.find(':') != std::string::npos;
  const std::string host = endpoint.host.empty() ? "*" : endpoint.host;
  return (bracketed ? "[" + host + "]" : host) + ":" + std::to_string(endpoint.port);
}

bool isLoopback(const Endpoint& endpoint) {
  in_addr four{};
  if (inet_pton(AF_INET, endpoint.host.c_str(), &four) == 1) {
    return ntohl(four.s_addr) >> 24U == 127;
  }
  in6_addr six{};
  if (inet_pton(AF_INET6, endpoint.host.c_str(), &six) == 1) {
    return IN6_IS_ADDR_LOOPBACK(&six);
  }
  return endpoint.host == "localhost";
}

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
