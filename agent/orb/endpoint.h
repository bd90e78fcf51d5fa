// Where the agent listens: the address as text, and what keeps it from being had.
// No state; any thread may call.
#ifndef ZK_AGENT_ORB_ENDPOINT_H
#define ZK_AGENT_ORB_ENDPOINT_H

#include <string>

namespace zk::agent {

// host may be a name or an address; "*" or an empty one means every interface.
// Port 0 means any free one: clients then find the agent by its reference only.
struct Endpoint {
  std::string host = "127.0.0.1";
  unsigned short port = 5814;
};

// HOST:PORT, [ADDRESS]:PORT for IPv6. Throws std::invalid_argument.
Endpoint parseEndpoint(const std::string& text);
std::string textOf(const Endpoint& endpoint);

// Whether only this host reaches it: an address of 127.0.0.0/8, ::1, or localhost.
// Names are not looked up: any other is taken for a public one.
bool isLoopback(const Endpoint& endpoint);

// Why the endpoint cannot be listened on, which ORBs do not say: tries to bind
// it, and lets go again. Empty when nothing is wrong.
std::string whyNotListening(const Endpoint& endpoint);

}  // namespace zk::agent

#endif
