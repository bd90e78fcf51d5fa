#include "agent/cli/options.h"

#include <cctype>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

#include "options/options.h"

namespace zk::agent {

namespace {

using options::Command;
using options::Option;
using std::chrono::seconds;

constexpr char FOOTER[] = R"(
Each option NAME-OF-OPTION is also read, as a line NAME-OF-OPTION=VALUE, from the
--config file, and from the environment variable ZK_AGENT_NAME_OF_OPTION. The
command line comes first, then the file, then the environment.

Exit status:
  0   stopped by SIGTERM or SIGINT
  1   cannot listen on the address
  2   the inventory cannot be used
  3   wrong options, or ones that let strangers in: see --allow-anyone
  4   the users file cannot be used
  5   the log file or the IOR file cannot be written
  6   admin: the agent refused the change
  7   admin: no agent answered, or one without --admin
  8   out of memory at the start
  9   out of threads at the start
  10  out of file descriptors at the start
  70  any other failure

Examples:
  zk-agent --listen 127.0.0.1:5814 --inventory /var/lib/zk-agent/zk-agent.db
  zk-agent --ior-file /run/zk-agent/factory.ior --users /etc/zk-agent/users
  printf '%s\n' "$PASSWORD" | zk-agent passwd --users /etc/zk-agent/users operator
  zk-agent admin raise-alarm --device 7 --cause LOS --severity critical

SIGHUP changes nothing. Clients find the agent at corbaloc:iiop:HOST:PORT/EmsSessionFactory.)";

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
Option add(Command& program, const std::string& option, Value& value, const char* help) {
  return program.add(option, value, help).environment(variableOf(option)).showDefault();
}

std::string endpointComplaint(const std::string& text) {
  try {
    parseEndpoint(text);
    return {};
  } catch (const std::invalid_argument& wrong) {
    return wrong.what();
  }
}

std::string emptyComplaint(const std::string& text) {
  return text.empty() ? "must not be empty" : "";
}

std::string rateComplaint(const std::string& text) {
  char* end = nullptr;
  const double rate = std::strtod(text.c_str(), &end);
  const bool number = !text.empty() && end == text.c_str() + text.size();
  return number && rate >= 0 && rate <= HIGHEST_RATE ? "" : "must be 0 to 10000";
}

// Options as they are given; the rest of the agent has its own types.
struct Raw {
  std::string listen = "127.0.0.1:5814";
  seconds pingPeriod{60};
  seconds pingTimeout{5};
  seconds consumerTimeout{5};
  seconds consumerRetry{60};
};

void addServing(Command& program, Options& options, Raw& raw) {
  add(program, "--listen", raw.listen,
      "Address to serve on; host * for every interface, port 0 for any free one")
      .check(endpointComplaint, "HOST:PORT");
  add(program, "--inventory", options.inventory,
      "SQLite file of the embedded EMS; made with a sample network when missing")
      .check(emptyComplaint);
  add(program, "--ior-file", options.iorFile,
      "Write the factory's reference here once requests are served; removed at the end");
  add(program, "--ems-name", options.emsName, "Value of the EMS pair of every name")
      .check(emptyComplaint);
  add(program, "--ems-version", options.emsVersion, "Version of the EMS as clients see it");
  add(program, "--interface-version", options.interfaceVersion, "What getVersion answers");
  add(program, "--users", options.usersFile,
      "File of users who may log in; without one everybody may, and --listen takes\n"
      "addresses of this host's loopback interface only");
  program
      .flag("--allow-anyone", options.allowAnyone,
            "Without --users: let whoever reaches any other address log in, too")
      .environment(variableOf("--allow-anyone"));
}

void addLimits(Command& program, SessionLimits& limits) {
  add(program, "--max-sessions", limits.sessions, "Sessions at a time").range(1, 10000);
  add(program, "--peer-sessions", limits.peerSessions, "Sessions of one client's host at a time")
      .range(1, 10000);
  add(program, "--user-sessions", limits.userSessions,
      "With --users: sessions of one user at a time")
      .range(1, 10000);
  add(program, "--max-iterators", limits.iterators, "Open iterators of a session").range(1, 100000);
  add(program, "--iterator-idle", limits.iteratorIdle,
      "Seconds after which an unused iterator is gone")
      .range(1, 86400);
  add(program, "--max-how-many", limits.page, "Entries in one answer, whatever the client asks for")
      .range(1, 10000);
}

void addPings(Command& program, PingRules& pings, Raw& raw) {
  add(program, "--ping-period", raw.pingPeriod, "Seconds between pings of an NMS; 0 for none")
      .range(0, 86400);
  add(program, "--ping-timeout", raw.pingTimeout, "Seconds that an NMS has to answer a ping")
      .range(1, 600);
  add(program, "--ping-failures", pings.failures,
      "Pings in a row that an NMS may fail to answer; one more ends its session")
      .range(0, 1000);
}

void addChannel(Command& program, ChannelSettings& channel, Raw& raw) {
  add(program, "--max-events", channel.eventsPerConsumer,
      "Events waiting for one consumer; 0 for as many as the event cache holds")
      .range(0, 10000);
  add(program, "--consumer-timeout", raw.consumerTimeout,
      "Seconds that a consumer has to take events")
      .range(1, 600);
  add(program, "--consumer-retry", raw.consumerRetry,
      "Seconds for which a failing consumer is tried again before it is given up")
      .range(0, 86400);
}

void addTrials(Command& program, Options& options) {
  add(program, "--traffic", options.traffic.rate,
      "Changes a second that the EMS makes up; 0 for none")
      .check(rateComplaint, "RATE");
  add(program, "--traffic-seed", options.traffic.seed, "The same seed makes the same changes");
  program
      .flag("--admin", options.admin,
            "Let whoever reaches the address change the EMS with 'zk-agent admin'; on a\n"
            "loopback address only")
      .environment(variableOf("--admin"));
  add(program, "--admin-ior-file", options.adminIorFile,
      "With --admin: write the administration's reference here; removed at the end");
}

void addLogs(Command& program, Options& options) {
  add(program, "--log-file", options.logFile,
      "Log to this file, which rotates; else standard error");
  program
      .choice("--log-level", options.logLevel,
              options::Choices<LogLevel>{{"off", LogLevel::OFF},
                                         {"error", LogLevel::ERROR},
                                         {"warning", LogLevel::WARNING},
                                         {"info", LogLevel::INFO},
                                         {"debug", LogLevel::DEBUG},
                                         {"trace", LogLevel::TRACE}},
              "How much is logged")
      .environment(variableOf("--log-level"));
}

void addOptions(options::Program& program, Options& options, Raw& raw) {
  program.version("zk-agent " ZK_AGENT_VERSION);
  program.configurationFile("--config", "Configuration file: lines NAME=VALUE");
  addServing(program, options, raw);
  addLimits(program, options.limits);
  addPings(program, options.pings, raw);
  addChannel(program, options.channel, raw);
  addTrials(program, options);
  addLogs(program, options);
}

// Into the types of those who read them.
void putRaw(const Raw& raw, Options& options) {
  options.listen = parseEndpoint(raw.listen);
  options.pings.period = raw.pingPeriod;
  options.pings.timeout = raw.pingTimeout;
  options.channel.callLimit = raw.consumerTimeout;
  options.channel.retryFor = raw.consumerRetry;
}

Command addPasswd(Command& program, PasswordChange& change) {
  Command passwd = program.subcommand(
      "passwd", "Add a user or change a password, read as one line from standard input");
  passwd.add("--users", change.usersFile, "The users file")
      .environment("ZK_AGENT_USERS")
      .required();
  passwd.add("NAME", change.user, "The user").required();
  return passwd;
}

}  // namespace

CommandLine parseCommandLine(int argc, const char* const* argv) {
  CommandLine result;
  Raw raw;
  PasswordChange change;
  AdminCommand admin;
  options::Program program("zk-agent", "zk-agent: TMF 814 northbound agent with an embedded EMS",
                           {EXIT_USAGE, "", "Run with --help for more information."});
  program.footer(FOOTER);
  addOptions(program, result.options, raw);
  const Command passwd = addPasswd(program, change);
  addAdminCommands(program, admin);
  if (const auto ending = program.parse(argc, argv)) {
    std::fputs(ending->output.c_str(), stdout);
    std::fputs(ending->error.c_str(), stderr);
    result.exitStatus = ending->status;
    return result;
  }
  putRaw(raw, result.options);
  if (passwd.given()) {
    result.passwordChange = change;
  }
  if (admin.request) {
    result.admin = admin;
  }
  return result;
}

}  // namespace zk::agent
