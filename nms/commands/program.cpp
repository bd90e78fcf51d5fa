#include "nms/commands/program.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <ostream>

#include "nms/wire/failure.h"

namespace zk::nms {

// In the files of their names.
void addObjectCommands(Commands& commands);
void addSetCommands(Commands& commands);
void addEventCommands(Commands& commands);
void addResyncCommand(Commands& commands);

namespace {

const char* const FOOTER = R"(Names:
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

// In the order of the program's help.
Commands allCommands() {
  Commands commands;
  addObjectCommands(commands);
  addSetCommands(commands);
  addEventCommands(commands);
  addResyncCommand(commands);
  return commands;
}

std::string readFormat(const std::string& text, Format& format) {
  const options::Choices<Format> formats = {
      {"table", Format::TABLE}, {"json", Format::JSON}, {"csv", Format::CSV}};
  for (const auto& [word, meaning] : formats) {
    if (word == text) {
      format = meaning;
      return "";
    }
  }
  return "'" + text + "' is neither table nor json nor csv";
}

void declareLogin(options::Command& program, Options& options) {
  program
      .add("--agent", options.access.agent,
           "Where the agent is: HOST:PORT, a corbaloc: or IOR: reference, or a file that "
           "holds one")
      .environment("ZK_NMS_AGENT")
      .showDefault();
  program.add("--user", options.access.user, "User to log in as").environment("ZK_NMS_USER");
  const auto file =
      program.add("--password-file", options.passwordFile, "File whose first line is the password");
  program
      .add("--password", options.access.password,
           "The password itself; other users can see it in the process list")
      .excludes(file);
}

void declareOptions(options::Command& program, Options& options) {
  declareLogin(program, options);
  program
      .read(
          "-o,--output",
          [&options](const std::string& text) { return readFormat(text, options.format); },
          "Form of the data: table (the default), json or csv")
      .form("FORM");
  program.add("--page", options.access.page, "Entries to ask for at a time")
      .range(1U, 100000U)
      .showDefault();
  program.add("--timeout", options.access.timeout, "Seconds that one call to the agent may take")
      .range(1U, 86400U)
      .showDefault();
  program
      .add("--callback", options.access.callback,
           "This machine's HOST or HOST:PORT, as the agent reaches it to call back")
      .showDefault();
}

std::string firstLine(const std::string& path) {
  std::ifstream file(path);
  std::string line;
  if (!file || (!std::getline(file, line) && !file.eof())) {
    throw UsageError("cannot read the password file " + path + ": " + std::strerror(errno));
  }
  if (!line.empty() && line.back() == '\r') {
    line.pop_back();
  }
  return line;
}

// The command line, and the command it asks for.
class Program {
 public:
  explicit Program(Options& options) : options_(options) {
    line_.fallThrough();
    line_.requireSubcommands(0, 1);
    line_.version("zk-nms " ZK_NMS_VERSION);
    line_.footer(FOOTER);
    declareOptions(line_, options_);
    for (const auto& command : commands_) {
      options::Command own = line_.subcommand(command->name(), command->summary());
      command->declare(own);
      own.whenGiven([this, chosen = command.get()] { chosen_ = chosen; });
    }
  }

  int run(int argc, const char* const* argv, Surroundings surroundings) {
    if (const auto ending = line_.parse(argc, argv)) {
      surroundings.err << ending->error;
      surroundings.out << ending->output;
      flush(surroundings.out);
      return ending->status;
    }
    if (chosen_ == nullptr) {
      throw UsageError("which command? Try: zk-nms --help");
    }
    readPassword(options_);
    chosen_->run({surroundings, options_});
    return FINE;
  }

 private:
  Options& options_;
  const Commands commands_ = allCommands();
  Command* chosen_ = nullptr;
  options::Program line_{"zk-nms",
                         "Command-line NMS for a TMF 814 (MTNM) agent",
                         {WRONG_USAGE, "zk-nms: ", "Try: zk-nms --help"}};
};

}  // namespace

int run(int argc, const char* const* argv, Surroundings surroundings) {
  Options options;
  try {
    return Program(options).run(argc, argv, surroundings);
  } catch (...) {
    return reportCurrentException(options.access.agent, surroundings.err);
  }
}

void readPassword(Options& options) {
  if (!options.passwordFile.empty()) {
    options.access.password = firstLine(options.passwordFile);
  } else if (options.access.password.empty()) {
    const char* fromEnvironment = std::getenv("ZK_NMS_PASSWORD");
    options.access.password = fromEnvironment != nullptr ? fromEnvironment : "";
  }
}

}  // namespace zk::nms
