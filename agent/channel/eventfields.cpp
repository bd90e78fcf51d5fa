#include "agent/channel/eventfields.h"

#include <cstring>

#include "zk_quornex/platform/timechange.h"

namespace zk::agent {

using CosNotification::StructuredEvent;

EventKind kindOf(const StructuredEvent& event) {
  const char* const type = event.header.fixed_header.event_type.type_name;
  return std::strcmp(type, "NT_ALARM") == 0 ? EventKind::Alarm : EventKind::Object;
}

const CORBA::Any* propertyOf(const StructuredEvent& event, const char* name) {
  const CosNotification::FilterableEventBody& properties = event.filterable_data;
  for (CORBA::ULong i = 0; i < properties.length(); ++i) {
    if (std::strcmp(properties[i].name, name) == 0) {
      return &properties[i].value;
    }
  }
  return nullptr;
}

std::string textOf(const StructuredEvent& event, const char* name) {
  const CORBA::Any* const value = propertyOf(event, name);
  const char* text = nullptr;
  return value != nullptr && (*value >>= text) ? text : "";
}

std::string timeOf(const StructuredEvent& event) {
  const std::string time = textOf(event, "emsTime");
  return time.empty() ? NS_QUORCORBA::TimeChange::getUTCTime() : time;
}

}  // namespace zk::agent
