// The managers of one session by their standard names.
#ifndef ZK_AGENT_SESSIONS_MANAGERS_H
#define ZK_AGENT_SESSIONS_MANAGERS_H

#include <memory>
#include <string>
#include <vector>

#include "agent/sessions/sessions.h"
#include "zk_quornex/idl/corba.h"

namespace zk::agent {

class Inventory;

// The names of the managers that this agent offers.
std::vector<std::string> managerNames();

// Makes the manager of this name for a session; the caller owns the servant's
// reference. Throws Refusal: not implemented for a name that the standard knows
// and this agent does not offer, invalid input for any other.
PortableServer::ServantBase* makeManager(const std::string& name, const Session& session,
                                         Inventory& inventory);

}  // namespace zk::agent

#endif
