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

// Of a pair, with the ORB's own books about it; and of a value that is not looked
// into: most are numbers, some the record of an object.
constexpr std::size_t BYTES_A_PAIR = 256;
constexpr std::size_t BYTES_A_VALUE = 64;
constexpr std::size_t BYTES_A_BODY = 2048;

std::size_t bytesOf(const CORBA::Any& value);

std::size_t bytesOf(const char* text) { return std::strlen(text); }

template <class List>
std::size_t bytesOfPairs(const List& list) {
  std::size_t bytes = 0;
  for (CORBA::ULong i = 0; i < list.length(); ++i) {
    bytes += BYTES_A_PAIR + std::strlen(list[i].name) + bytesOf(list[i].value);
  }
  return bytes;
}

std::size_t bytesOf(const globaldefs::NamingAttributesList_T& names) {
  std::size_t bytes = 0;
  for (CORBA::ULong i = 0; i < names.length(); ++i) {
    bytes += BYTES_A_VALUE + bytesOfPairs(names[i]);
  }
  return bytes;
}

std::size_t bytesOf(const CORBA::Any& value) {
  const char* text = nullptr;
  const globaldefs::NVSList_T* name = nullptr;
  const notifications::NVList_T* values = nullptr;
  const globaldefs::NamingAttributesList_T* names = nullptr;
  if (value >>= text) {
    return std::strlen(text);
  }
  if (value >>= name) {
    return bytesOfPairs(*name);
  }
  if (value >>= values) {
    return bytesOfPairs(*values);
  }
  return (value >>= names) ? bytesOf(*names) : BYTES_A_VALUE;
}

}  // namespace

std::size_t estimatedBytes(const StructuredEvent& event) {
  const CORBA::TypeCode_var body = event.remainder_of_body.type();
  const bool hasBody = body->kind() != CORBA::tk_null;
  return sizeof(StructuredEvent) + (hasBody ? BYTES_A_BODY : 0) +
         bytesOfPairs(event.header.variable_header) + bytesOfPairs(event.filterable_data);
}

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
