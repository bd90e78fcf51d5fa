// The program but for the process around it: what every command understands,
// what a command is, and running the one that is asked for.
#ifndef ZK_NMS_COMMANDS_PROGRAM_H
#define ZK_NMS_COMMANDS_PROGRAM_H

#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "nms/output/output.h"
#include "nms/wire/connection.h"
#include "nms/wire/interrupts.h"
#include "options/options.h"

namespace zk::nms {

struct Surroundings {
  std::ostream& out;  // data only
  std::ostream& err;  // everything else
  Interrupts& interrupts;
};

// Returns the exit code; never throws.
int run(int argc, const char* const* argv, Surroundings surroundings);

struct Options {
  Access access;
  std::string passwordFile;
  Format format = Format::TABLE;
};

// Fills the password from the file, or when neither it nor the file was given
// from ZK_NMS_PASSWORD. Throws UsageError when the file cannot be read.
void readPassword(Options& options);

struct Context : Surroundings {
  const Options& options;
};

class Command {
 public:
  virtual ~Command() = default;

  virtual std::string name() const = 0;
  virtual std::string summary() const = 0;  // one line of the program's help

  // Adds the command's own options, and examples as its footer.
  virtual void declare(options::Command& command) = 0;

  // Returns when done; anything else is thrown, see failure.h.
  virtual void run(const Context& context) = 0;
};

using Commands = std::vector<std::unique_ptr<Command>>;

}  // namespace zk::nms

#endif
