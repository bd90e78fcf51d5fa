// Telling NMSs that their session is over, without letting a dead or hanging one
// hold up the agent.
#ifndef ZK_AGENT_SESSIONS_FAREWELL_H
#define ZK_AGENT_SESSIONS_FAREWELL_H

#include <chrono>
#include <vector>

#include "zk_quornex/idl/sessions.h"

namespace zk::agent {

// Calls endSession on every client, all at once, each for no longer than this.
// Whoever cannot be reached is passed over.
void endSessionsOf(const std::vector<nmsSession::NmsSession_I_var>& clients,
                   std::chrono::milliseconds limit);

}  // namespace zk::agent

#endif
