#include "agent/ems/traffic/alarmchanger.h"

#include <algorithm>
#include <array>
#include <chrono>

namespace zk::agent {

namespace {

struct Cause {
  const char* probableCause;
  const char* nativeText;
  Severity severity;
};

constexpr std::array<Cause, 6> OF_DEVICES{
    {{"LOS", "Receive power lost", Severity::CRITICAL},
     {"LOF", "Frame alignment lost", Severity::CRITICAL},
     {"AIS", "Upstream failure signalled", Severity::MINOR},
     {"BER_SD", "Bit errors above 1E-6", Severity::MINOR},
     {"EQPT", "Card does not answer", Severity::MAJOR},
     {"TEMPERATURE", "Temperature above 60 degrees", Severity::WARNING}}};

constexpr std::array<Cause, 2> OF_EMS{{{"EMS", "Disk of the server nearly full", Severity::WARNING},
                                       {"EMS", "Backup is overdue", Severity::INDETERMINATE}}};

bool sameAlarm(const AlarmRecord& left, const AlarmRecord& right) {
  return left.deviceId == right.deviceId && left.probableCause == right.probableCause &&
         left.qualifier == right.qualifier;
}

std::string port(std::size_t number) {
  return "/rack=1/shelf=1/slot=" + std::to_string(1 + number / 16) +
         "/port=" + std::to_string(1 + number % 16);
}

}  // namespace

std::vector<AlarmRecord> AlarmChanger::own() const {
  std::vector<AlarmRecord> alarms = inventory_.activeAlarms();
  const auto notOurs = [](const AlarmRecord& alarm) {
    return alarm.additionalText != TRAFFIC_ALARM_TEXT;
  };
  alarms.erase(std::remove_if(alarms.begin(), alarms.end(), notOurs), alarms.end());
  return alarms;
}

Result AlarmChanger::raise(long deviceId) {
  const Cause& cause = deviceId == 0 ? chance_.oneOf(OF_EMS) : chance_.oneOf(OF_DEVICES);
  AlarmRecord alarm;
  alarm.deviceId = deviceId;
  alarm.probableCause = cause.probableCause;
  alarm.nativeProbableCause = cause.nativeText;
  alarm.severity = cause.severity;
  alarm.additionalText = TRAFFIC_ALARM_TEXT;
  alarm.raisedAt = std::chrono::system_clock::now();
  const std::vector<AlarmRecord> active = inventory_.activeAlarms(deviceId);
  const auto isActive = [&] {
    return std::any_of(active.begin(), active.end(),
                       [&](const AlarmRecord& other) { return sameAlarm(alarm, other); });
  };
  std::size_t number = chance_.below(64);
  do {
    alarm.qualifier = port(number++);
  } while (isActive());
  return inventory_.raiseAlarm(alarm);
}

Result AlarmChanger::clear() {
  const std::vector<AlarmRecord> alarms = own();
  return alarms.empty() ? Result::NO_SUCH_OBJECT : inventory_.clearAlarm(chance_.oneOf(alarms).id);
}

}  // namespace zk::agent
