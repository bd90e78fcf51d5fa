// The ORB: its endpoint, the well-known key of the factory, time limits of
// calls.
#ifndef ZK_AGENT_ORB_ORB_H
#define ZK_AGENT_ORB_ORB_H

#include <chrono>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <thread>

#include "agent/orb/endpoint.h"
#include "agent/orb/guard.h"
#include "agent/orb/servanthome.h"
#include "zk_quornex/idl/corba.h"

namespace zk::agent {

class GuardedTransport;

class ListenError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class Orb {
 public:
  // Binds the endpoint; nothing is served yet. Throws ListenError, saying why,
  // when it cannot. One at a time in a process.
  explicit Orb(const Endpoint& endpoint);
  ~Orb();
  Orb(const Orb&) = delete;
  Orb& operator=(const Orb&) = delete;

  // Where sessions put their servants.
  SessionAdapter& sessionAdapter() { return *sessions_; }

  // Makes the servant reachable as corbaloc:iiop:HOST:PORT/key and returns its
  // stringified reference. The caller keeps its own reference to the servant.
  std::string publish(const std::string& key, PortableServer::Servant servant);

  // Begins to serve. Throws std::system_error without a thread to do it.
  void serve();
  // Waits for requests in progress; none begins afterwards, and the adapter and
  // its servants are gone. Calls to others are still possible before it only.
  // Who is still connected after a second is cut off.
  void stop();

 private:
  Guard::Admission admits(std::string_view key, const std::string& peer) const;

  Guard guard_;
  std::set<std::string, std::less<>> publicKeys_;  // all of them before anything is served
  std::unique_ptr<GuardedTransport> transport_;    // null with an ORB that has no place for it
  CORBA::ORB_var orb_;
  std::unique_ptr<SessionAdapter> sessions_;
  std::thread serving_;
  bool stopped_ = false;
};

// The same object, through a reference whose calls fail with TIMEOUT after this
// long. The caller owns the result.
CORBA::Object_ptr withCallLimit(CORBA::Object_ptr object, std::chrono::milliseconds limit);

}  // namespace zk::agent

#endif
