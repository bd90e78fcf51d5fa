// The ORB of the program: calls the agent, and listens for its calls.
#ifndef ZK_NMS_WIRE_ORB_H
#define ZK_NMS_WIRE_ORB_H

#include <string>
#include <thread>
#include <vector>

#include "zk_quornex/idl/corba.h"

namespace zk::nms {

struct OrbSettings {
  std::string callback;  // HOST or HOST:PORT to listen on
  unsigned timeout;      // seconds for one call, connecting included
};

// Listens and serves from the beginning to the end, on threads of its own. One
// at a time in a process. Throws ConnectionError when it cannot listen there.
class Orb {
 public:
  explicit Orb(const OrbSettings& settings);
  // Waits for the calls of the agent that are under way.
  ~Orb();
  Orb(const Orb&) = delete;
  Orb& operator=(const Orb&) = delete;

  // Throws UsageError when the text is not a reference.
  CORBA::Object_ptr toObject(const std::string& reference);

  // Keeps servant alive until the ORB ends.
  CORBA::Object_ptr activate(PortableServer::Servant servant);

  // For values whose types are known only from their descriptions.
  DynamicAny::DynAnyFactory_var dynAnyFactory();

 private:
  void serve();
  void end();

  CORBA::ORB_var orb_;
  PortableServer::POA_var poa_;
  std::vector<std::thread> servers_;  // in orb_->run()
};

}  // namespace zk::nms

#endif
