#include "nms/events/activealarms.h"

#include <algorithm>

#include "nms/output/cells.h"
#include "nms/wire/iterate.h"

namespace zk::nms {
namespace {

notifications::PerceivedSeverityList_T severities(const AlarmScope& scope) {
  notifications::PerceivedSeverityList_T result;
  result.length(static_cast<CORBA::ULong>(scope.notSeverities.size()));
  for (CORBA::ULong i = 0; i < result.length(); ++i) {
    result[i] = severityFrom(scope.notSeverities[i]);
  }
  return result;
}

notifications::ProbableCauseList_T causes(const AlarmScope& scope) {
  notifications::ProbableCauseList_T result;
  result.length(static_cast<CORBA::ULong>(scope.notCauses.size()));
  for (CORBA::ULong i = 0; i < result.length(); ++i) {
    result[i] = scope.notCauses[i].c_str();
  }
  return result;
}

void query(Connection& connection, const AlarmScope& scope, CORBA::ULong page,
           notifications::EventList_T_var& events, notifications::EventIterator_I_var& iterator) {
  if (scope.element.empty()) {
    connection.emsManager()->getAllEMSAndMEActiveAlarms(causes(scope), severities(scope), page,
                                                        events.out(), iterator.out());
    return;
  }
  const auto name = connection.objectName(scope.element, "ManagedElement");
  connection.manager<managedElementManager::ManagedElementMgr_I>("ManagedElement")
      ->getAllActiveAlarms(name, causes(scope), severities(scope), page, events.out(),
                           iterator.out());
}

bool has(const std::vector<std::string>& texts, const std::string& text) {
  return std::find(texts.begin(), texts.end(), text) != texts.end();
}

}  // namespace

void checkScope(const AlarmScope& scope) {
  if (!scope.element.empty()) {
    checkArgument(scope.element);
  }
  severities(scope);
}

std::vector<Alarm> activeAlarms(Connection& connection, const AlarmScope& scope,
                                CORBA::ULong page) {
  const ValueReader reader(connection.orb().dynAnyFactory().in());
  notifications::EventList_T_var events;
  notifications::EventIterator_I_var iterator;
  query(connection, scope, page, events, iterator);
  std::vector<Alarm> alarms;
  drain(page, events, iterator, [&](const CosNotification::StructuredEvent& event) {
    alarms.push_back(readAlarm(readEvent(event, reader)));
  });
  return alarms;
}

std::string scopeName(Connection& connection, const AlarmScope& scope) {
  return scope.element.empty()
             ? ""
             : nameCell(connection.objectName(scope.element, "ManagedElement")).asString();
}

bool inScope(const Alarm& alarm, const AlarmScope& scope, const std::string& elementName) {
  const bool within = elementName.empty() || alarm.object == elementName ||
                      alarm.object.rfind(elementName + ",", 0) == 0;
  return within && !has(scope.notCauses, alarm.cause) &&
         (alarm.cleared() || !has(scope.notSeverities, alarm.severity));
}

}  // namespace zk::nms
