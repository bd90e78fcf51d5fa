// The ORB of the program: calls the agent, and listens for its calls.
#ifndef ZK_NMS_WIRE_ORB_H
#define ZK_NMS_WIRE_ORB_H

#include <string>

#include "zk_quornex/idl/corba.h"

namespace zk::nms {

struct OrbSettings {
  std::string callback;  // HOST or HOST:PORT to listen on
  unsigned timeout;      // seconds for one call, connecting included
};

// Listens from the beginning. One at a time in a process. Throws
// ConnectionError when it cannot listen there.
class Orb {
 public:
  explicit Orb(const OrbSettings& settings);
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
  CORBA::ORB_var orb_;
  PortableServer::POA_var poa_;
};

}  // namespace zk::nms

#endif
