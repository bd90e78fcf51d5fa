// zk-agent: the reference northbound agent.
#include "agent/cli/admincommands.h"
#include "agent/cli/options.h"
#include "agent/run.h"

int main(int argc, char** argv) {
  const zk::agent::CommandLine commandLine = zk::agent::parseCommandLine(argc, argv);
  if (commandLine.exitStatus) {
    return *commandLine.exitStatus;
  }
  if (commandLine.passwordChange) {
    return zk::agent::runPasswd(*commandLine.passwordChange);
  }
  if (commandLine.admin) {
    return zk::agent::runAdmin(*commandLine.admin);
  }
  return zk::agent::runAgent(commandLine.options);
}
