// The filterable properties of an event, each as "name=type:value", in order.
#ifndef ZK_TESTS_NOTIFY_PROPERTIES_H
#define ZK_TESTS_NOTIFY_PROPERTIES_H

#include <initializer_list>
#include <string>
#include <vector>

#include "tests/support/dump.h"

namespace zk::test {

inline std::vector<std::string> properties(const CosNotification::StructuredEvent& event) {
  std::vector<std::string> lines;
  for (CORBA::ULong i = 0; i < event.filterable_data.length(); ++i) {
    const CosNotification::Property& property = event.filterable_data[i];
    lines.push_back(std::string(property.name.in()) + "=" + dumpAny(property.value));
  }
  return lines;
}

// A list of text attributes.
inline notifications::NVList_T textAttributes(std::initializer_list<NamePair> attributes) {
  notifications::NVList_T list;
  list.length(static_cast<CORBA::ULong>(attributes.size()));
  CORBA::ULong position = 0;
  for (const NamePair& attribute : attributes) {
    list[position].name = CORBA::string_dup(attribute.first);
    list[position++].value <<= attribute.second;
  }
  return list;
}

inline std::string body(const CosNotification::StructuredEvent& event) {
  return dumpAny(event.remainder_of_body);
}

// What an event is before anything is written to it.
inline const char* const EMPTY_EVENT = "header=||\nbody=empty\n";

}  // namespace zk::test

#endif
