// What the agent is told at its start: command line, configuration file,
// environment, the first of them that says it.
#ifndef ZK_AGENT_CLI_OPTIONS_H
#define ZK_AGENT_CLI_OPTIONS_H

#include <optional>
#include <string>

#include "agent/base/log.h"
#include "agent/channel/settings.h"
#include "agent/cli/admincommands.h"
#include "agent/ems/traffic/traffic.h"
#include "agent/orb/endpoint.h"
#include "agent/sessions/heartbeat.h"

namespace zk::agent {

// The agent's exit statuses.
enum ExitStatus : int {
  EXIT_STOPPED = 0,        // ran, and was told to stop
  EXIT_CANNOT_LISTEN = 1,  // the address is in use or not ours
  EXIT_NO_INVENTORY = 2,   // in use by another agent, damaged, not writable
  EXIT_USAGE = 3,          // options or configuration file
  EXIT_USERS_FILE = 4,     // cannot be read or written, or a bad entry
  EXIT_CANNOT_WRITE = 5,   // log file or IOR file
  EXIT_NO_MEMORY = 8,
  EXIT_NO_THREADS = 9,
  EXIT_NO_DESCRIPTORS = 10,
  EXIT_INTERNAL = 70  // anything else
};

struct Options {
  Endpoint listen;
  std::string inventory = "./zk-agent.db";
  std::string iorFile;  // empty: none is written
  std::string emsName = "Quor/1";
  std::string emsVersion = "1.0";
  std::string interfaceVersion = "3.0";  // what getVersion answers
  std::string usersFile;                 // empty: no authentication
  bool allowAnyone = false;              // without users, serve others than this host too
  SessionLimits limits;
  PingRules pings;
  ChannelSettings channel;
  TrafficOptions traffic;
  bool admin = false;        // whether whoever reaches the agent may change the EMS
  std::string adminIorFile;  // empty: none is written
  std::string logFile;       // empty: standard error
  LogLevel logLevel = LogLevel::INFO;
};

// `zk-agent passwd`.
struct PasswordChange {
  std::string usersFile;
  std::string user;
};

struct CommandLine {
  Options options;
  std::optional<PasswordChange> passwordChange;
  std::optional<AdminCommand> admin;
  // Set when there is nothing to run: help was shown, or the usage was wrong.
  std::optional<int> exitStatus;
};

// Prints help to standard output, and what is wrong to standard error.
CommandLine parseCommandLine(int argc, const char* const* argv);

}  // namespace zk::agent

#endif
