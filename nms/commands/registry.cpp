#include "nms/commands/command.h"

namespace zk::nms {

// Each is defined in the file of its name.
std::unique_ptr<Command> makeEmsCommand();
std::unique_ptr<Command> makeMeCommand();
std::unique_ptr<Command> makeSubnetworkCommand();
std::unique_ptr<Command> makeLinkCommand();

std::vector<std::unique_ptr<Command>> makeCommands() {
  std::vector<std::unique_ptr<Command>> commands;
  commands.push_back(makeEmsCommand());
  commands.push_back(makeMeCommand());
  commands.push_back(makeSubnetworkCommand());
  commands.push_back(makeLinkCommand());
  return commands;
}

}  // namespace zk::nms
