#include "agent/channel/events.h"

#include <array>
#include <cstring>

#include "zk_quornex/platform/timechange.h"

namespace zk::agent {

namespace {

using CosNotification::StructuredEvent;

constexpr std::array<const char*, 6> TYPE_NAMES = {
    "NT_OBJECT_CREATION", "NT_OBJECT_DELETION", "NT_ATTRIBUTE_VALUE_CHANGE",
    "NT_STATE_CHANGE",    "NT_ALARM",           "NT_FILE_TRANSFER_STATUS"};

}  // namespace

std::string textOf(const StructuredEvent& event, const char* name) {
  const CosNotification::FilterableEventBody& properties = event.filterable_data;
  for (CORBA::ULong i = 0; i < properties.length(); ++i) {
    if (std::strcmp(properties[i].name, name) == 0) {
      const char* text = nullptr;
      return (properties[i].value >>= text) ? text : "";
    }
  }
  return "";
}

std::string timeOf(const StructuredEvent& event) {
  const std::string time = textOf(event, "emsTime");
  return time.empty() ? NS_QUORCORBA::TimeChange::getUTCTime() : time;
}

CosNotification::EventTypeSeq* offeredTypes(CosNotifyChannelAdmin::ObtainInfoMode mode) {
  CosNotification::EventTypeSeq_var types = new CosNotification::EventTypeSeq;
  if (mode == CosNotifyChannelAdmin::ALL_NOW_UPDATES_OFF ||
      mode == CosNotifyChannelAdmin::ALL_NOW_UPDATES_ON) {
    types->length(static_cast<CORBA::ULong>(TYPE_NAMES.size()));
    for (CORBA::ULong i = 0; i < types->length(); ++i) {
      types[i].domain_name = CORBA::string_dup("tmf_mtnm");
      types[i].type_name = CORBA::string_dup(TYPE_NAMES[i]);
    }
  }
  return types._retn();
}

}  // namespace zk::agent
