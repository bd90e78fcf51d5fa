// What a command is. A new one is a file of its own in this folder, with one
// line in registry.cpp.
#ifndef ZK_NMS_COMMANDS_COMMAND_H
#define ZK_NMS_COMMANDS_COMMAND_H

#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "nms/commands/options.h"
#include "nms/wire/interrupts.h"

namespace CLI {
class App;
}

namespace zk::nms {

struct Context {
  const Options& options;
  std::ostream& out;  // data only
  std::ostream& err;  // everything else
  Interrupts& interrupts;
};

class Command {
 public:
  virtual ~Command() = default;

  virtual std::string name() const = 0;
  virtual std::string summary() const = 0;  // one line of the program's help

  // Adds the command's own options, and examples as its footer.
  virtual void declare(CLI::App& app) = 0;

  // Returns when done; anything else is thrown, see errors.h.
  virtual void run(const Context& context) = 0;
};

// All commands, in the order of the program's help.
std::vector<std::unique_ptr<Command>> makeCommands();

}  // namespace zk::nms

#endif
