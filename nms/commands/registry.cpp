#include "nms/commands/command.h"

namespace zk::nms {

// Each is defined in the file of its name, unless said otherwise.
std::unique_ptr<Command> makeEmsCommand();
std::unique_ptr<Command> makeMeCommand();
std::unique_ptr<Command> makeSubnetworkCommand();
std::unique_ptr<Command> makeLinkCommand();
std::unique_ptr<Command> makeNodeCommand();           // mapobject.cpp
std::unique_ptr<Command> makeSubMapCommand();         // mapobject.cpp
std::unique_ptr<Command> makeDisplayLinkCommand();    // mapobject.cpp
std::unique_ptr<Command> makeSetLabelCommand();       // setter.cpp
std::unique_ptr<Command> makeSetOwnerCommand();       // setter.cpp
std::unique_ptr<Command> makeSetNativeNameCommand();  // setter.cpp
std::unique_ptr<Command> makeEventsCommand();
std::unique_ptr<Command> makeWaitCommand();
std::unique_ptr<Command> makeAlarmsCommand();
std::unique_ptr<Command> makeResyncCommand();

std::vector<std::unique_ptr<Command>> makeCommands() {
  std::vector<std::unique_ptr<Command>> commands;
  commands.push_back(makeEmsCommand());
  commands.push_back(makeMeCommand());
  commands.push_back(makeSubnetworkCommand());
  commands.push_back(makeLinkCommand());
  commands.push_back(makeNodeCommand());
  commands.push_back(makeSubMapCommand());
  commands.push_back(makeDisplayLinkCommand());
  commands.push_back(makeSetLabelCommand());
  commands.push_back(makeSetOwnerCommand());
  commands.push_back(makeSetNativeNameCommand());
  commands.push_back(makeEventsCommand());
  commands.push_back(makeWaitCommand());
  commands.push_back(makeAlarmsCommand());
  commands.push_back(makeResyncCommand());
  return commands;
}

}  // namespace zk::nms
