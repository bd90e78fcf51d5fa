// The commands of `zk-agent admin`: what the command line asks a running agent
// for.
#ifndef ZK_AGENT_CLI_ADMINCOMMANDS_H
#define ZK_AGENT_CLI_ADMINCOMMANDS_H

#include <CLI/CLI.hpp>
#include <functional>
#include <string>

#include "agent/cli/adminrun.h"

namespace zk::agent {

// Adds `admin` and its commands to the program. Parsing fills in command, which
// must outlive app; its request stays empty unless `admin` was given.
void addAdminCommands(CLI::App& app, AdminCommand& command);

// One for each file of commands; admin is the app that they belong to.
void addDeviceCommands(CLI::App& admin, AdminCommand& command);
void addMapCommands(CLI::App& admin, AdminCommand& command);
void addAlarmCommands(CLI::App& admin, AdminCommand& command);
void addLoginCommands(CLI::App& admin, AdminCommand& command);

}  // namespace zk::agent

#endif
