#include "nms/events/alarm.h"

#include <array>
#include <utility>

#include "nms/events/times.h"
#include "nms/wire/errors.h"

namespace zk::nms {
namespace {

struct Severity {
  const char* name;
  const char* sent;
  notifications::PerceivedSeverity_T value;
};

const std::array<Severity, 6> kSeverities = {
    {{"critical", "PS_CRITICAL", notifications::PS_CRITICAL},
     {"major", "PS_MAJOR", notifications::PS_MAJOR},
     {"minor", "PS_MINOR", notifications::PS_MINOR},
     {"warning", "PS_WARNING", notifications::PS_WARNING},
     {"indeterminate", "PS_INDETERMINATE", notifications::PS_INDETERMINATE},
     {"cleared", "PS_CLEARED", notifications::PS_CLEARED}}};

std::string severityText(const std::string& sent) {
  for (const Severity& severity : kSeverities) {
    if (sent == severity.sent) {
      return severity.name;
    }
  }
  return sent;
}

std::string effectText(const std::string& sent) {
  if (sent == "SA_SERVICE_AFFECTING") {
    return "service affecting";
  }
  return sent == "SA_NON_SERVICE_AFFECTING" ? "not service affecting" : "";
}

}  // namespace

std::string Alarm::identity() const {
  std::string result;
  for (const std::string* part : {&object, &layerRate, &cause, &qualifier}) {
    result += *part + '\n';
  }
  return result;
}

bool Alarm::same(const Alarm& other) const {
  return identity() == other.identity() && severity == other.severity && text == other.text &&
         effect == other.effect;
}

Alarm readAlarm(const Event& event) {
  Alarm alarm;
  alarm.severity = severityText(event.text("perceivedSeverity"));
  alarm.cause = event.text("probableCause");
  alarm.qualifier = event.text("probableCauseQualifier");
  alarm.object = event.object;
  alarm.text = event.text("additionalText");
  alarm.effect = effectText(event.text("serviceAffecting"));
  alarm.time = isoTime(event.text("emsTime"));
  alarm.layerRate = event.text("layerRate");
  alarm.nativeCause = event.text("nativeProbableCause");
  alarm.notificationId = event.text("notificationId");
  return alarm;
}

std::string alarmText(const Alarm& alarm) {
  std::string result = alarm.severity + " " + alarm.cause;
  result += alarm.qualifier.empty() ? "" : " (" + alarm.qualifier + ")";
  result += alarm.effect.empty() ? "" : ", " + alarm.effect;
  return result + (alarm.text.empty() ? "" : ": " + alarm.text);
}

Columns alarmColumns() {
  return {{"time", "TIME"},
          {"severity", "SEVERITY"},
          {"probableCause", "CAUSE"},
          {"objectName", "OBJECT"},
          {"additionalText", "TEXT"},
          {"probableCauseQualifier", "QUALIFIER", true},
          {"nativeProbableCause", "NATIVE CAUSE", true},
          {"serviceAffecting", "EFFECT", true},
          {"layerRate", "RATE", true},
          {"notificationId", "ID", true}};
}

Row alarmRow(const Alarm& alarm) {
  return {alarm.time,      alarm.severity,    alarm.cause,  alarm.object,    alarm.text,
          alarm.qualifier, alarm.nativeCause, alarm.effect, alarm.layerRate, alarm.notificationId};
}

const std::vector<std::string>& severityNames() {
  static const std::vector<std::string> names = [] {
    std::vector<std::string> result;
    result.reserve(std::size(kSeverities));
    for (const Severity& severity : kSeverities) {
      result.emplace_back(severity.name);
    }
    return result;
  }();
  return names;
}

notifications::PerceivedSeverity_T severityFrom(const std::string& text) {
  for (const Severity& severity : kSeverities) {
    if (text == severity.name) {
      return severity.value;
    }
  }
  throw UsageError("not a severity: '" + text +
                   "'; there are critical, major, minor, warning, indeterminate and cleared");
}

}  // namespace zk::nms
