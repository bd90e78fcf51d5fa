#include "agent/tmf/alarmevent.h"

#include <algorithm>
#include <array>

#include "agent/tmf/names.h"
#include "agent/tmf/objectkinds.h"
#include "zk_quornex/platform/config.h"
#include "zk_quornex/platform/default/clock.h"
#include "zk_quornex/platform/events.h"

namespace zk::agent {

namespace {

constexpr CORBA::Short LAYER_NOT_APPLICABLE = 1;

constexpr CORBA::ULong PROPERTY_COUNT = 17;

struct SeverityPair {
  Severity ems;
  notifications::PerceivedSeverity_T nms;
};

constexpr std::array<SeverityPair, 6> SEVERITIES{
    {{Severity::INDETERMINATE, notifications::PS_INDETERMINATE},
     {Severity::CRITICAL, notifications::PS_CRITICAL},
     {Severity::MAJOR, notifications::PS_MAJOR},
     {Severity::MINOR, notifications::PS_MINOR},
     {Severity::WARNING, notifications::PS_WARNING},
     {Severity::CLEARED, notifications::PS_CLEARED}}};

notifications::PerceivedSeverity_T perceivedSeverityOf(Severity severity) {
  const auto* found = std::find_if(SEVERITIES.begin(), SEVERITIES.end(),
                                   [&](const auto& pair) { return pair.ems == severity; });
  return found != SEVERITIES.end() ? found->nms : notifications::PS_INDETERMINATE;
}

// Fills the filterable properties in order.
class Properties {
 public:
  explicit Properties(CosNotification::PropertySeq& properties) : properties_(properties) {
    properties_.length(PROPERTY_COUNT);
  }

  template <class Value>
  void add(const char* name, const Value& value) {
    next(name) <<= value;
  }
  void addText(const char* name, const std::string& text) { next(name) <<= text.c_str(); }
  void addBoolean(const char* name, bool value) { next(name) <<= CORBA::Any::from_boolean(value); }

 private:
  CORBA::Any& next(const char* name) {
    CosNotification::Property& property = properties_[filled_++];
    property.name = CORBA::string_dup(name);
    return property.value;
  }

  CosNotification::PropertySeq& properties_;
  CORBA::ULong filled_ = 0;
};

bool isAboutTheEms(const AlarmRecord& alarm) { return alarm.deviceId == 0; }

ObjectKey objectOf(const AlarmRecord& alarm) {
  return isAboutTheEms(alarm) ? ObjectKey::ems()
                              : ObjectKey::device(static_cast<unsigned long>(alarm.deviceId));
}

void addObject(Properties& properties, const AlarmRecord& alarm, const std::string& nativeName) {
  properties.addText("notificationId", std::to_string(alarm.id));
  properties.add("objectName", nmsNameOf(objectOf(alarm)));
  properties.addText("nativeEMSName", nativeName);
  properties.addText("nativeProbableCause", alarm.nativeProbableCause);
  properties.add("objectType",
                 isAboutTheEms(alarm) ? notifications::OT_EMS : notifications::OT_MANAGED_ELEMENT);
}

void addCondition(Properties& properties, const AlarmRecord& alarm) {
  properties.addBoolean("isClearable", true);
  properties.add("layerRate", LAYER_NOT_APPLICABLE);
  properties.addText("probableCause", alarm.probableCause);
  properties.addText("probableCauseQualifier", alarm.qualifier);
  properties.add("perceivedSeverity", perceivedSeverityOf(alarm.severity));
  properties.add("serviceAffecting", notifications::SA_UNKNOWN);
  properties.add("affectedTPList", globaldefs::NamingAttributesList_T());
  properties.addText("additionalText", alarm.additionalText);
  properties.add("additionalInfo", globaldefs::NVSList_T());
}

}  // namespace

Severity severityOf(notifications::PerceivedSeverity_T severity) {
  const auto* found = std::find_if(SEVERITIES.begin(), SEVERITIES.end(),
                                   [&](const auto& pair) { return pair.nms == severity; });
  return found != SEVERITIES.end() ? found->ems : Severity::INDETERMINATE;
}

CosNotification::StructuredEvent alarmEvent(const AlarmRecord& alarm, const std::string& nativeName,
                                            const AlarmTimes& times) {
  CosNotification::StructuredEvent event;
  NS_CORBA::fillFixedHeader("NT_ALARM", event);
  Properties properties(event.filterable_data);
  addObject(properties, alarm, nativeName);
  properties.addText("emsTime", times.ems);
  properties.addText("neTime", times.ne);
  addCondition(properties, alarm);
  properties.addText("objectTypeQualifier", pairNameOf(objectOf(alarm).kind));
  return event;
}

std::string timeRaised(const AlarmRecord& alarm) { return zk::platform::timeText(alarm.raisedAt); }

std::string nativeNameOf(const Inventory& inventory, const AlarmRecord& alarm) {
  if (isAboutTheEms(alarm)) {
    const std::string stored = inventory.ems().nativeName;
    return stored.empty() ? NS_CORBA::CorbaBaseAgentConfig::Instance()->EmsName() : stored;
  }
  const auto device = inventory.device(alarm.deviceId);
  return device ? device->name : "";
}

}  // namespace zk::agent
