// Events of each kind that constraints are held against, and the ORB's factory
// that constraints look into unknown types with.
#ifndef ZK_TESTS_AGENT_CONSTRAINT_EVENTS_H
#define ZK_TESTS_AGENT_CONSTRAINT_EVENTS_H

#include <string>
#include <utility>

#include "agent/constraint/constraint.h"

namespace zk::test {

inline CORBA::ORB_ptr orb() {
  int none = 0;
  return CORBA::ORB_init(none, nullptr);  // the one that main made
}

inline DynamicAny::DynAnyFactory_ptr dynAnyFactory() {
  CORBA::ORB_var own = orb();
  return agent::dynAnyFactoryOf(own);
}

inline std::unique_ptr<const agent::Constraint> parsed(const std::string& text) {
  DynamicAny::DynAnyFactory_var factory = dynAnyFactory();
  return agent::Constraint::parse(text, factory);
}

inline CosNotification::StructuredEvent eventOf(const char* type) {
  CosNotification::StructuredEvent event;
  event.header.fixed_header.event_type.domain_name = CORBA::string_dup("tmf_mtnm");
  event.header.fixed_header.event_type.type_name = CORBA::string_dup(type);
  event.header.fixed_header.event_name = CORBA::string_dup("");
  return event;
}

// The next property's value, to be filled in.
inline CORBA::Any& addTo(CosNotification::PropertySeq& list, const char* name) {
  const CORBA::ULong last = list.length();
  list.length(last + 1);
  list[last].name = CORBA::string_dup(name);
  return list[last].value;
}

inline CORBA::Any& addProperty(CosNotification::StructuredEvent& event, const char* name) {
  return addTo(event.filterable_data, name);
}

inline globaldefs::NVSList_T nameOf(std::initializer_list<std::pair<const char*, const char*>> of) {
  globaldefs::NVSList_T name;
  name.length(static_cast<CORBA::ULong>(of.size()));
  CORBA::ULong i = 0;
  for (const auto& [key, value] : of) {
    name[i].name = CORBA::string_dup(key);
    name[i++].value = CORBA::string_dup(value);
  }
  return name;
}

// A critical alarm of device 7, with a priority in its variable header.
CosNotification::StructuredEvent alarm();

// Device 7 is there: its record is the body.
CosNotification::StructuredEvent creation();

// Device 7 has a new user label, and is unavailable.
CosNotification::StructuredEvent change();

// A property of each simple type, named after it, and some lists.
CosNotification::StructuredEvent simpleTypes();

}  // namespace zk::test

#endif
