// The guard's place in the ORB: endpoints whose connections hand on only what the
// guard lets pass. With transport.cpp, orb.h and orb.cpp the only code of the agent
// that knows which ORB it is.
#ifndef ZK_AGENT_ORB_TRANSPORT_H
#define ZK_AGENT_ORB_TRANSPORT_H

#include <string>

#include "agent/orb/endpoint.h"
#include "agent/orb/guard.h"

namespace zk::agent {

// While it lives, an ORB that is initialised listens where guardedAddress() says
// with connections under this guard, and one that is told so by superviseRequests()
// refuses what the guard refuses. One at a time; it must outlive the ORB.
class GuardedTransport {
 public:
  explicit GuardedTransport(Guard& guard);
  ~GuardedTransport();
  GuardedTransport(const GuardedTransport&) = delete;
  GuardedTransport& operator=(const GuardedTransport&) = delete;

  // As the ORB's option says it.
  static std::string guardedAddress(const std::string& hostAndPort);

  // Once the ORB is there.
  static void superviseRequests();
};

}  // namespace zk::agent

#endif
