// What main does once the command line is read. Returns the exit status and
// prints to standard error what kept it from running.
#ifndef ZK_AGENT_RUN_H
#define ZK_AGENT_RUN_H

#include "agent/cli/options.h"

namespace zk::agent {

// Serves until SIGTERM or SIGINT. To be called on the main thread, before any
// other thread is started: they inherit its signal mask.
int runAgent(const Options& options);

// Reads the password, one line, from standard input.
int runPasswd(const PasswordChange& change);

}  // namespace zk::agent

#endif
