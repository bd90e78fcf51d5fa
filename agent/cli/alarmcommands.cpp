// Alarms and made-up traffic.
#include <map>
#include <memory>

#include "agent/cli/admincommands.h"
#include "zk_quornex/idl/events.h"

namespace zk::agent {

namespace {

using Admin = emsAdmin::EmsAdmin_I_ptr;
using Severity_T = notifications::PerceivedSeverity_T;

void addRaiseAlarm(CLI::App& admin, AdminCommand& command) {
  static const std::map<std::string, Severity_T> severities = {
      {"indeterminate", notifications::PS_INDETERMINATE},
      {"critical", notifications::PS_CRITICAL},
      {"major", notifications::PS_MAJOR},
      {"minor", notifications::PS_MINOR},
      {"warning", notifications::PS_WARNING}};
  struct Given {
    CORBA::Long device = 0;
    std::string cause, qualifier, severity = "major", text;
  };
  const auto given = std::make_shared<Given>();
  CLI::App* const raise =
      admin.add_subcommand("raise-alarm", "Raise an alarm, or change it; prints its number");
  raise->add_option("--device", given->device, "The device; without one, the EMS itself");
  raise->add_option("--cause", given->cause, "Probable cause, such as LOS")->required();
  raise->add_option("--qualifier", given->qualifier, "Where on the device");
  raise->add_option("--severity", given->severity, "How bad it is")
      ->check(CLI::IsMember(severities))
      ->capture_default_str();
  raise->add_option("--text", given->text, "Additional text");
  raise->callback([given, &command] {
    command.request = [given](Admin agent) {
      return std::to_string(agent->raiseAlarm(given->device, given->cause.c_str(),
                                              given->qualifier.c_str(),
                                              severities.at(given->severity), given->text.c_str()));
    };
  });
}

void addClearAlarm(CLI::App& admin, AdminCommand& command) {
  const auto id = std::make_shared<CORBA::Long>(0);
  CLI::App* const clear = admin.add_subcommand("clear-alarm", "Clear an alarm");
  clear->add_option("ALARM", *id, "Its number")->required();
  clear->callback([id, &command] {
    command.request = [id](Admin agent) {
      agent->clearAlarm(*id);
      return std::string();
    };
  });
}

void addTraffic(CLI::App& admin, AdminCommand& command) {
  const auto rate = std::make_shared<double>(0);
  CLI::App* const traffic =
      admin.add_subcommand("traffic", "Let the EMS make up changes by itself");
  traffic->add_option("RATE", *rate, "Changes a second; 0 ends them")->required();
  traffic->callback([rate, &command] {
    command.request = [rate](Admin agent) {
      agent->setTraffic(*rate);
      return std::string();
    };
  });
}

}  // namespace

void addAlarmCommands(CLI::App& admin, AdminCommand& command) {
  addRaiseAlarm(admin, command);
  addClearAlarm(admin, command);
  addTraffic(admin, command);
}

}  // namespace zk::agent
