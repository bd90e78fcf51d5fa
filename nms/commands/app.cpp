#include "nms/commands/app.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "nms/commands/command.h"
#include "nms/commands/options.h"
#include "nms/output/output.h"
#include "nms/wire/errors.h"

namespace zk::nms {
namespace {

const char* const kFooter = R"(Names:
  An object is given by its bare id, as in "zk-nms me 7", or by its full name,
  as printed in the NAME column: pairs separated by commas, outermost first.
      EMS=Quor/1,ManagedElement=7
  A pair's value is all that follows its first "=". In a full name write \, \=
  and \\ for a comma, an equals sign (needed in a pair's name only) and a
  backslash that belong to the text. What contains "=" and does not begin with
  "/" is a full name; all else is an id of the kind that the command is about,
  taken letter for letter.

Password:
  From --password-file, or from the environment's ZK_NMS_PASSWORD. --password
  works too, but every user of this machine can read it in the process list.

Exit status:
  0 fine, 1 refused by the EMS, 2 the agent cannot be reached or is gone,
  3 wrong usage, 4 what was waited for did not come in time, 5 events were lost
  or may be missing, 6 the output cannot be written, 128 + N ended by signal N
  (after logging out)

Examples:
  zk-nms ems
  zk-nms --agent 127.0.0.1:5814 --user admin --password-file ~/.zk-nms me
  zk-nms --agent /run/zk-agent/agent.ior me 7
  zk-nms -o json link | jq -r '.[].userLabel'
  zk-nms set-label 7 "Oslo core"
  zk-nms events --type NT_ALARM
)";

class Program {
 public:
  Program() : app_("Command-line NMS for a TMF 814 (MTNM) agent", "zk-nms") {
    app_.fallthrough();
    app_.require_subcommand(0, 1);
    app_.set_version_flag("--version", "zk-nms " ZK_NMS_VERSION);
    app_.footer(kFooter);
    declareOptions(app_, options_);
    for (const auto& command : commands_) {
      CLI::App* sub = app_.add_subcommand(command->name(), command->summary());
      command->declare(*sub);
      sub->final_callback([this, chosen = command.get()] { chosen_ = chosen; });
    }
  }

  void parse(int argc, const char* const* argv) { app_.parse(argc, argv); }

  // Help and version are data; a wrong use is not.
  int reportParse(const CLI::ParseError& error, std::ostream& out, std::ostream& err) const {
    if (error.get_exit_code() != 0) {
      err << "zk-nms: " << error.what() << "\nTry: zk-nms --help\n";
      return kUsage;
    }
    app_.exit(error, out, err);
    flush(out);
    return kFine;
  }

  void runChosen(const Surroundings& surroundings) {
    if (chosen_ == nullptr) {
      throw UsageError("which command? Try: zk-nms --help");
    }
    readPassword(options_);
    chosen_->run({options_, surroundings.out, surroundings.err, surroundings.interrupts});
  }

  const std::string& agent() const { return options_.agent; }

 private:
  Options options_;
  std::vector<std::unique_ptr<Command>> commands_ = makeCommands();
  Command* chosen_ = nullptr;
  CLI::App app_;
};

int runProgram(Program& program, int argc, const char* const* argv, Surroundings surroundings) {
  try {
    program.parse(argc, argv);
    program.runChosen(surroundings);
    return kFine;
  } catch (const CLI::ParseError& error) {
    return program.reportParse(error, surroundings.out, surroundings.err);
  }
}

}  // namespace

int run(int argc, const char* const* argv, Surroundings surroundings) {
  std::string agent = "?";
  try {
    Program program;
    try {
      return runProgram(program, argc, argv, surroundings);
    } catch (...) {
      agent = program.agent();
      throw;
    }
  } catch (...) {
    return reportCurrentException(agent, surroundings.err);
  }
}

}  // namespace zk::nms
