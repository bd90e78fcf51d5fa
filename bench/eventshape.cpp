#include "bench/eventshape.h"

#include <cstdio>
#include <cstdlib>
#include <initializer_list>
#include <string>
#include <thread>

namespace zk::bench {

namespace {

struct Pair {
  const char* name;
  const char* value;
};

globaldefs::NVSList_T portName(const char* ptp) {
  const Pair pairs[] = {{"EMS", "Quor/1"}, {"ManagedElement", "3145743"}, {"PTP", ptp}};
  globaldefs::NVSList_T name;
  name.length(3);
  for (CORBA::ULong position = 0; position < 3; ++position) {
    name[position].name = CORBA::string_dup(pairs[position].name);
    name[position].value = CORBA::string_dup(pairs[position].value);
  }
  return name;
}

notifications::NVList_T changedAttributes() {
  notifications::NVList_T attributes;
  attributes.length(1);
  attributes[0].name = CORBA::string_dup("userLabel");
  attributes[0].value <<= "Frankfurt 12 - Mannheim 3, west";
  return attributes;
}

template <class Value>
void set(CosNotification::Property& property, const char* name, const Value& value) {
  property.name = CORBA::string_dup(name);
  property.value <<= value;
}

}  // namespace

CosNotification::StructuredEvent makeEvent(int number) {
  CosNotification::StructuredEvent event;
  event.header.fixed_header.event_type.domain_name = CORBA::string_dup("tmf_mtnm");
  event.header.fixed_header.event_type.type_name = CORBA::string_dup("NT_ATTRIBUTE_VALUE_CHANGE");
  event.header.fixed_header.event_name = CORBA::string_dup("");
  event.filterable_data.length(8);
  const std::string ptp = "/rack=1/shelf=1/slot=4/domain=sdh/port=" + std::to_string(number);
  set(event.filterable_data[0], "notificationId", "0");
  set(event.filterable_data[1], "objectName", portName(ptp.c_str()));
  set(event.filterable_data[2], "objectType", notifications::OT_PHYSICAL_TERMINATION_POINT);
  set(event.filterable_data[3], "objectTypeQualifier", "PTP");
  set(event.filterable_data[4], "emsTime", "20121120094200.0Z");
  set(event.filterable_data[5], "neTime", "20121120094200.0Z");
  set(event.filterable_data[6], "edgePointRelated", CORBA::Any::from_boolean(false));
  set(event.filterable_data[7], "attributeList", changedAttributes());
  return event;
}

HeldEvent makeHeldEvent(int number, Values values) {
  // Made in place: even moving it here would be a copy.
  std::unique_ptr<CosNotification::StructuredEvent> event(
      new CosNotification::StructuredEvent(makeEvent(number)));
  if (values == Values::COPIED) {
    event = std::make_unique<CosNotification::StructuredEvent>(*event);
  }
  return HeldEvent(new Event(event.release()));
}

void configureCache(long cachesize, long eventlistsize) {
  platform::Configuration configuration;
  configuration.notifyModel = 2;
  configuration.cachesize = cachesize;
  configuration.eventlistsize = eventlistsize;
  platform::configure(configuration);
}

void printConditions() {
  double load[1] = {0};
  getloadavg(load, 1);
  std::printf("cores %u, compiler %s, load before the run %.2f\n",
              std::thread::hardware_concurrency(), __VERSION__, load[0]);
#ifndef __OPTIMIZE__
  std::printf("NOT OPTIMISED: build type without -O\n");
#endif
  std::printf(
      "event: object attribute value change, 3 header texts, 8 properties, one attribute\n");
}

}  // namespace zk::bench
