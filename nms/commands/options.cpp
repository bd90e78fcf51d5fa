#include "nms/commands/options.h"

#include <CLI/CLI.hpp>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <map>

#include "nms/wire/errors.h"

namespace zk::nms {
namespace {

const std::map<std::string, Format> kFormats = {
    {"table", Format::kTable}, {"json", Format::kJson}, {"csv", Format::kCsv}};

Format format(const std::string& text) {
  const auto found = kFormats.find(text);
  if (found == kFormats.end()) {
    throw CLI::ValidationError("--output", "'" + text + "' is neither table nor json nor csv");
  }
  return found->second;
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

void declareLogin(CLI::App& app, Options& options) {
  app.add_option("--agent", options.agent,
                 "Where the agent is: HOST:PORT, a corbaloc: or IOR: reference, or a file that "
                 "holds one")
      ->envname("ZK_NMS_AGENT")
      ->capture_default_str();
  app.add_option("--user", options.user, "User to log in as")->envname("ZK_NMS_USER");
  CLI::Option* file = app.add_option("--password-file", options.passwordFile,
                                     "File whose first line is the password");
  app.add_option("--password", options.password,
                 "The password itself; other users can see it in the process list")
      ->excludes(file);
}

}  // namespace

void declareOptions(CLI::App& app, Options& options) {
  declareLogin(app, options);
  app.add_option_function<std::string>(
         "-o,--output", [&options](const std::string& text) { options.format = format(text); },
         "Form of the data: table (the default), json or csv")
      ->type_name("FORM");
  app.add_option("--page", options.page, "Entries to ask for at a time")
      ->check(CLI::Range(1U, 100000U))
      ->capture_default_str();
  app.add_option("--timeout", options.timeout, "Seconds that one call to the agent may take")
      ->check(CLI::Range(1U, 86400U))
      ->capture_default_str();
  app.add_option("--callback", options.callback,
                 "This machine's HOST or HOST:PORT, as the agent reaches it to call back")
      ->capture_default_str();
}

void readPassword(Options& options) {
  if (!options.passwordFile.empty()) {
    options.password = firstLine(options.passwordFile);
  } else if (options.password.empty()) {
    const char* fromEnvironment = std::getenv("ZK_NMS_PASSWORD");
    options.password = fromEnvironment != nullptr ? fromEnvironment : "";
  }
}

}  // namespace zk::nms
