// Events for tests of the channel, told apart by their notificationId.
#ifndef ZK_TESTS_AGENT_CHANNEL_SUPPORT_EVENTS_H
#define ZK_TESTS_AGENT_CHANNEL_SUPPORT_EVENTS_H

#include <string>
#include <vector>

#include "agent/channel/events.h"
#include "zk_quornex/idl/events.h"
#include "zk_quornex/platform/events.h"

namespace zk::test {

using Ids = std::vector<std::string>;

inline void setProperty(CosNotification::StructuredEvent& event, const char* name,
                        const CORBA::Any& value) {
  const CORBA::ULong last = event.filterable_data.length();
  event.filterable_data.length(last + 1);
  event.filterable_data[last].name = CORBA::string_dup(name);
  event.filterable_data[last].value = value;
}

template <class Value>
CORBA::Any toAny(Value value) {
  CORBA::Any any;
  any <<= value;
  return any;
}

inline CosNotification::StructuredEvent makeEvent(const char* type, const std::string& id,
                                                  const char* time = "20121120094200.0Z") {
  CosNotification::StructuredEvent event;
  event.header.fixed_header.event_type.domain_name = CORBA::string_dup("tmf_mtnm");
  event.header.fixed_header.event_type.type_name = CORBA::string_dup(type);
  setProperty(event, "notificationId", toAny(id.c_str()));
  setProperty(event, "emsTime", toAny(time));
  return event;
}

inline CosNotification::StructuredEvent makeAlarm(
    const std::string& id, notifications::PerceivedSeverity_T severity = notifications::PS_MAJOR,
    CORBA::Short layer = 1) {
  CosNotification::StructuredEvent event = makeEvent("NT_ALARM", id);
  setProperty(event, "perceivedSeverity", toAny(severity));
  setProperty(event, "layerRate", toAny(layer));
  setProperty(event, "objectType", toAny(notifications::OT_MANAGED_ELEMENT));
  return event;
}

inline CosNotification::StructuredEvent makeCreation(const std::string& id) {
  return makeEvent("NT_OBJECT_CREATION", id);
}

inline std::string idOf(const CosNotification::StructuredEvent& event) {
  return zk::agent::textOf(event, "notificationId");
}

template <class Sequence>
Ids idsOf(const Sequence& events) {
  Ids ids;
  for (CORBA::ULong i = 0; i < events.length(); ++i) {
    ids.push_back(idOf(events[i]));
  }
  return ids;
}

// first, first + 1, up to last.
inline Ids numbers(int first, int last) {
  Ids ids;
  for (int i = first; i <= last; ++i) {
    ids.push_back(std::to_string(i));
  }
  return ids;
}

// As the EMS would.
inline void send(CosNotification::StructuredEvent event) { NS_QUORCORBA::PushEvent(event); }

// Alarms and creations by turns.
inline void sendNumbers(int first, int last) {
  for (int i = first; i <= last; ++i) {
    const std::string id = std::to_string(i);
    send(i % 2 == 0 ? makeAlarm(id) : makeCreation(id));
  }
}

}  // namespace zk::test

#endif
