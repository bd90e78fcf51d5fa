#include "nms/events/alarm.h"

#include <algorithm>
#include <array>
#include <set>
#include <utility>

#include "nms/wire/failure.h"
#include "nms/wire/lists.h"
#include "nms/wire/objects.h"
#include "nms/wire/text.h"

namespace zk::nms {
namespace {

struct Severity {
  const char* name;
  const char* sent;
  notifications::PerceivedSeverity_T value;
};

const std::array<Severity, 6> SEVERITIES = {
    {{"critical", "PS_CRITICAL", notifications::PS_CRITICAL},
     {"major", "PS_MAJOR", notifications::PS_MAJOR},
     {"minor", "PS_MINOR", notifications::PS_MINOR},
     {"warning", "PS_WARNING", notifications::PS_WARNING},
     {"indeterminate", "PS_INDETERMINATE", notifications::PS_INDETERMINATE},
     {"cleared", "PS_CLEARED", notifications::PS_CLEARED}}};

std::string severityText(const std::string& sent) {
  for (const Severity& severity : SEVERITIES) {
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

notifications::PerceivedSeverityList_T severities(const AlarmScope& scope) {
  return listOf<notifications::PerceivedSeverityList_T>(
      scope.notSeverities,
      [](auto& entry, const std::string& name) { entry = severityFrom(name); });
}

notifications::ProbableCauseList_T causes(const AlarmScope& scope) {
  return listOf<notifications::ProbableCauseList_T>(
      scope.notCauses, [](auto&& entry, const std::string& cause) { entry = cause.c_str(); });
}

void query(Connection& connection, const AlarmScope& scope,
           const notifications::EventList_T_out& events,
           const notifications::EventIterator_I_out& iterator) {
  if (scope.element.empty()) {
    connection.emsManager()->getAllEMSAndMEActiveAlarms(causes(scope), severities(scope),
                                                        connection.page(), events, iterator);
    return;
  }
  const auto name = objectName(connection, "ManagedElement", scope.element);
  elementManager(connection)
      ->getAllActiveAlarms(name, causes(scope), severities(scope), connection.page(), events,
                           iterator);
}

bool has(const std::vector<std::string>& texts, const std::string& text) {
  return std::find(texts.begin(), texts.end(), text) != texts.end();
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
    result.reserve(std::size(SEVERITIES));
    for (const Severity& severity : SEVERITIES) {
      result.emplace_back(severity.name);
    }
    return result;
  }();
  return names;
}

notifications::PerceivedSeverity_T severityFrom(const std::string& text) {
  for (const Severity& severity : SEVERITIES) {
    if (text == severity.name) {
      return severity.value;
    }
  }
  throw UsageError("not a severity: '" + text +
                   "'; there are critical, major, minor, warning, indeterminate and cleared");
}

void checkScope(const AlarmScope& scope) {
  if (!scope.element.empty()) {
    checkArgument(scope.element);
  }
  severities(scope);
}

std::vector<Alarm> activeAlarms(Connection& connection, const AlarmScope& scope) {
  const ValueReader reader(connection.orb().dynAnyFactory().in());
  std::vector<Alarm> alarms;
  drainAnswer<notifications::EventList_T_var, notifications::EventIterator_I_var>(
      connection.page(),
      [&](const notifications::EventList_T_out& events,
          const notifications::EventIterator_I_out& iterator) {
        query(connection, scope, events, iterator);
      },
      [&](const CosNotification::StructuredEvent& event) {
        alarms.push_back(readAlarm(readEvent(event, reader)));
      });
  return alarms;
}

std::string scopeName(Connection& connection, const AlarmScope& scope) {
  return scope.element.empty()
             ? ""
             : nameCell(objectName(connection, "ManagedElement", scope.element)).asString();
}

bool inScope(const Alarm& alarm, const AlarmScope& scope, const std::string& elementName) {
  const bool within = elementName.empty() || alarm.object == elementName ||
                      alarm.object.rfind(elementName + ",", 0) == 0;
  return within && !has(scope.notCauses, alarm.cause) &&
         (alarm.cleared() || !has(scope.notSeverities, alarm.severity));
}

std::optional<AlarmTable::Change> AlarmTable::apply(const Alarm& alarm) {
  const auto known = alarms_.find(alarm.identity());
  if (alarm.cleared()) {
    if (known == alarms_.end()) {
      return std::nullopt;
    }
    alarms_.erase(known);
    return Change{"cleared", alarm};
  }
  if (known == alarms_.end()) {
    alarms_.emplace(alarm.identity(), alarm);
    return Change{"new", alarm};
  }
  if (known->second.same(alarm)) {
    return std::nullopt;
  }
  known->second = alarm;
  return Change{"changed", alarm};
}

std::vector<AlarmTable::Change> AlarmTable::replace(const std::vector<Alarm>& active) {
  std::vector<Change> changes;
  std::set<std::string> present;
  for (const Alarm& alarm : active) {
    present.insert(alarm.identity());
    if (const auto change = apply(alarm)) {
      changes.push_back(*change);
    }
  }
  for (auto known = alarms_.begin(); known != alarms_.end();) {
    if (present.count(known->first) > 0) {
      ++known;
      continue;
    }
    known->second.severity = "cleared";
    changes.push_back({"cleared", known->second});
    known = alarms_.erase(known);
  }
  return changes;
}

}  // namespace zk::nms
