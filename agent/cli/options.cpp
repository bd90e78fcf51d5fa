#include "agent/cli/options.h"

#include <CLI/CLI.hpp>
#include <cctype>
#include <map>

#include "agent/cli/admincommands.h"

namespace zk::agent {

namespace {

constexpr const char* footer = R"(
Each option NAME-OF-OPTION is also read, as a line NAME-OF-OPTION=VALUE, from the
--config file, and from the environment variable ZK_AGENT_NAME_OF_OPTION. The
command line comes first, then the file, then the environment.

Exit status:
  0   stopped by SIGTERM or SIGINT
  1   cannot listen on the address
  2   the inventory cannot be used
  3   wrong options
  4   the users file cannot be used
  5   the log file or the IOR file cannot be written
  6   admin: the agent refused the change
  7   admin: no agent answered, or one without --admin
  70  any other failure

Examples:
  zk-agent --listen 127.0.0.1:5814 --inventory /var/lib/zk-agent/zk-agent.db
  zk-agent --ior-file /run/zk-agent/factory.ior --users /etc/zk-agent/users
  printf '%s\n' "$PASSWORD" | zk-agent passwd --users /etc/zk-agent/users operator
  zk-agent admin raise-alarm --device 7 --cause LOS --severity critical

Clients find the agent at corbaloc:iiop:HOST:PORT/EmsSessionFactory.)";

// The environment variable of an option: --ior-file is ZK_AGENT_IOR_FILE.
std::string variableOf(const std::string& option) {
  std::string name = "ZK_AGENT_";
  for (const char letter : option.substr(2)) {
    name +=
        letter == '-' ? '_' : static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
  }
  return name;
}

template <class Value>
CLI::Option* add(CLI::App& app, const std::string& option, Value& value, const char* help) {
  return app.add_option(option, value, help)->envname(variableOf(option))->capture_default_str();
}

CLI::Validator endpointText() {
  return CLI::Validator(
      [](std::string& text) {
        try {
          parseEndpoint(text);
          return std::string();
        } catch (const std::invalid_argument& failure) {
          return std::string(failure.what());
        }
      },
      "HOST:PORT");
}

CLI::Validator notEmpty() {
  return CLI::Validator(
      [](std::string& text) { return text.empty() ? "must not be empty" : std::string(); }, "");
}

// Options as CLI11 fills them; the rest of the agent has its own types.
struct Raw {
  std::string listen = "127.0.0.1:5814";
  long iteratorIdle = 900;
  long pingPeriod = 60;
  long pingTimeout = 5;
  long consumerTimeout = 5;
  long consumerRetry = 60;
  std::string logLevel = "info";
};

void addServing(CLI::App& app, Options& options, Raw& raw) {
  add(app, "--listen", raw.listen,
      "Address to serve on; host * for every interface, port 0 for any free one")
      ->check(endpointText());
  add(app, "--inventory", options.inventory,
      "SQLite file of the embedded EMS; made with a sample network when missing")
      ->check(notEmpty());
  add(app, "--ior-file", options.iorFile,
      "Write the factory's reference here once requests are served; removed at the end");
  add(app, "--ems-name", options.emsName, "Value of the EMS pair of every name")->check(notEmpty());
  add(app, "--ems-version", options.emsVersion, "Version of the EMS as clients see it");
  add(app, "--interface-version", options.interfaceVersion, "What getVersion answers");
  add(app, "--users", options.usersFile,
      "File of users who may log in; without one there is no authentication");
}

void addLimits(CLI::App& app, SessionLimits& limits, Raw& raw) {
  add(app, "--max-sessions", limits.sessions, "Sessions at a time")->check(CLI::Range(1, 10000));
  add(app, "--max-iterators", limits.iterators, "Open iterators of a session")
      ->check(CLI::Range(1, 100000));
  add(app, "--iterator-idle", raw.iteratorIdle, "Seconds after which an unused iterator is gone")
      ->check(CLI::Range(1, 86400));
  add(app, "--max-how-many", limits.page, "Entries in one answer, whatever the client asks for")
      ->check(CLI::Range(1, 10000));
}

void addPings(CLI::App& app, PingRules& pings, Raw& raw) {
  add(app, "--ping-period", raw.pingPeriod, "Seconds between pings of an NMS; 0 for none")
      ->check(CLI::Range(0, 86400));
  add(app, "--ping-timeout", raw.pingTimeout, "Seconds that an NMS has to answer a ping")
      ->check(CLI::Range(1, 600));
  add(app, "--ping-failures", pings.failures,
      "Pings in a row that an NMS may fail to answer; one more ends its session")
      ->check(CLI::Range(0, 1000));
}

void addChannel(CLI::App& app, ChannelSettings& channel, Raw& raw) {
  add(app, "--max-events", channel.eventsPerConsumer,
      "Events waiting for one consumer; 0 for as many as the event cache holds")
      ->check(CLI::Range(0, 10000));
  add(app, "--consumer-timeout", raw.consumerTimeout, "Seconds that a consumer has to take events")
      ->check(CLI::Range(1, 600));
  add(app, "--consumer-retry", raw.consumerRetry,
      "Seconds for which a failing consumer is tried again before it is given up")
      ->check(CLI::Range(0, 86400));
}

CLI::Validator rateText() {
  return CLI::Validator(
      [](std::string& text) {
        double rate = 0;
        const bool number = CLI::detail::lexical_cast(text, rate);
        const bool inRange = number && rate >= 0 && rate <= HIGHEST_RATE;
        return std::string(inRange ? "" : "must be 0 to 10000");
      },
      "RATE");
}

void addTrials(CLI::App& app, Options& options) {
  add(app, "--traffic", options.traffic.rate, "Changes a second that the EMS makes up; 0 for none")
      ->check(rateText());
  add(app, "--traffic-seed", options.traffic.seed, "The same seed makes the same changes");
  app.add_flag("--admin", options.admin,
               "Let whoever reaches the address change the EMS with 'zk-agent admin'")
      ->envname(variableOf("--admin"));
  add(app, "--admin-ior-file", options.adminIorFile,
      "With --admin: write the administration's reference here; removed at the end");
}

void addLogs(CLI::App& app, Options& options, Raw& raw) {
  add(app, "--log-file", options.logFile, "Log to this file, which rotates; else standard error");
  add(app, "--log-level", raw.logLevel, "How much is logged")
      ->check(CLI::IsMember({"off", "error", "warning", "info", "debug", "trace"}));
}

void putTimes(const Raw& raw, Options& options) {
  using std::chrono::seconds;
  options.limits.iteratorIdle = seconds(raw.iteratorIdle);
  options.pings.period = seconds(raw.pingPeriod);
  options.pings.timeout = seconds(raw.pingTimeout);
  options.channel.callLimit = seconds(raw.consumerTimeout);
  options.channel.retryFor = seconds(raw.consumerRetry);
}

LogLevel logLevelOf(const std::string& name) {
  static const std::map<std::string, LogLevel> levels = {
      {"off", LogLevel::OFF},   {"error", LogLevel::ERROR}, {"warning", LogLevel::WARNING},
      {"info", LogLevel::INFO}, {"debug", LogLevel::DEBUG}, {"trace", LogLevel::TRACE}};
  return levels.at(name);
}

CLI::App* addPasswd(CLI::App& app, PasswordChange& change) {
  CLI::App* const passwd = app.add_subcommand(
      "passwd", "Add a user or change a password, read as one line from standard input");
  passwd->add_option("--users", change.usersFile, "The users file")
      ->envname("ZK_AGENT_USERS")
      ->required();
  passwd->add_option("NAME", change.user, "The user")->required();
  return passwd;
}

}  // namespace

CommandLine parseCommandLine(int argc, const char* const* argv) {
  CommandLine result;
  Raw raw;
  PasswordChange change;
  AdminCommand admin;
  CLI::App app("zk-agent: TMF 814 northbound agent with an embedded EMS", "zk-agent");
  app.footer(footer);
  app.set_version_flag("--version", "zk-agent " ZK_AGENT_VERSION);
  app.set_config("--config", "", "Configuration file: lines NAME=VALUE");
  app.allow_config_extras(CLI::config_extras_mode::error);
  addServing(app, result.options, raw);
  addLimits(app, result.options.limits, raw);
  addPings(app, result.options.pings, raw);
  addChannel(app, result.options.channel, raw);
  addTrials(app, result.options);
  addLogs(app, result.options, raw);
  const CLI::App* const passwd = addPasswd(app, change);
  addAdminCommands(app, admin);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& failure) {
    result.exitStatus = app.exit(failure) == 0 ? EXIT_STOPPED : EXIT_USAGE;
    return result;
  }
  result.options.listen = parseEndpoint(raw.listen);
  putTimes(raw, result.options);
  result.options.logLevel = logLevelOf(raw.logLevel);
  if (passwd->parsed()) {
    result.passwordChange = change;
  }
  if (admin.request) {
    result.admin = admin;
  }
  return result;
}

}  // namespace zk::agent
