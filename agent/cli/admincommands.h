// `zk-agent admin`: what the command line asks a running agent for, and asking
// it.
#ifndef ZK_AGENT_CLI_ADMINCOMMANDS_H
#define ZK_AGENT_CLI_ADMINCOMMANDS_H

#include <functional>
#include <string>

#include "options/options.h"
#include "zk_quornex/idl/admin.h"

namespace zk::agent {

// The object key under which an agent serves its administration.
inline constexpr char ADMIN_KEY[] = "EmsAdmin";

struct AdminCommand {
  // HOST:PORT, a reference to an administration, or a file with one.
  std::string agent = "127.0.0.1:5814";
  // Asks the agent and gives what to print: an id, or nothing.
  std::function<std::string(emsAdmin::EmsAdmin_I_ptr)> request;
};

// Adds `admin` and its commands to the program. Parsing fills in command, which
// must outlive program; its request stays empty unless `admin` was given.
void addAdminCommands(options::Program& program, AdminCommand& command);

enum AdminStatus : int {
  ADMIN_DONE = 0,
  ADMIN_REFUSED = 6,      // the agent says no
  ADMIN_NOT_REACHED = 7,  // no agent there, or one without administration
};

// Asks, prints the answer to standard output and what went wrong to standard
// error, and returns an AdminStatus.
int runAdmin(const AdminCommand& command);

}  // namespace zk::agent

#endif
