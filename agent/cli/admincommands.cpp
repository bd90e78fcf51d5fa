#include "agent/cli/admincommands.h"

namespace zk::agent {

void addAdminCommands(CLI::App& app, AdminCommand& command) {
  CLI::App* const admin =
      app.add_subcommand("admin", "Change the network of a running agent's embedded EMS");
  admin->require_subcommand(1);
  admin->footer(
      "Exit status: 0 done, 3 wrong usage, 6 the agent refused, 7 no agent answered, or one\n"
      "without --admin.");
  admin
      ->add_option("--agent", command.agent,
                   "HOST:PORT of the agent, started with --admin; or the reference in its\n"
                   "--admin-ior-file, or that file")
      ->envname("ZK_AGENT_LISTEN")
      ->capture_default_str();
  addDeviceCommands(*admin, command);
  addMapCommands(*admin, command);
  addAlarmCommands(*admin, command);
  addLoginCommands(*admin, command);
}

}  // namespace zk::agent
