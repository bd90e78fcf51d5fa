// Why an endpoint cannot be listened on. ORBs only say that they could not.
#ifndef ZK_AGENT_ORB_LISTENCHECK_H
#define ZK_AGENT_ORB_LISTENCHECK_H

#include <string>

#include "agent/orb/orb.h"

namespace zk::agent {

// Tries to bind the endpoint itself, lets go again, and returns what is wrong;
// empty when nothing is.
std::string whyNotListening(const Endpoint& endpoint);

}  // namespace zk::agent

#endif
