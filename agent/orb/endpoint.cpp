#include <algorithm>
#include <stdexcept>

#include "agent/orb/orb.h"

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

}  // namespace zk::agent
