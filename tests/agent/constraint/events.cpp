#include "tests/agent/constraint/events.h"
#include "zk_quornex/idl/managers.h"

namespace zk::test {

using namespace notifications;

CosNotification::StructuredEvent alarm() {
  auto event = eventOf("NT_ALARM");
  addTo(event.header.variable_header, "Priority") <<= CORBA::Short{4};
  addProperty(event, "notificationId") <<= "1207";
  addProperty(event, "objectName") <<= nameOf({{"EMS", "Quor/1"}, {"ManagedElement", "7"}});
  addProperty(event, "nativeEMSName") <<= "north-7";
  addProperty(event, "objectType") <<= OT_MANAGED_ELEMENT;
  addProperty(event, "isClearable") <<= CORBA::Any::from_boolean(true);
  addProperty(event, "layerRate") <<= CORBA::Short{-1};
  addProperty(event, "probableCause") <<= "LOS";
  addProperty(event, "perceivedSeverity") <<= PS_CRITICAL;
  addProperty(event, "serviceAffecting") <<= SA_SERVICE_AFFECTING;
  addProperty(event, "additionalInfo") <<= nameOf({{"Slot-No", "3"}, {"it's", "odd"}});
  globaldefs::NamingAttributesList_T affected;
  affected.length(2);
  affected[0] = nameOf({{"EMS", "Quor/1"}, {"PTP", "/slot=1"}});
  affected[1] = nameOf({{"EMS", "Quor/1"}, {"PTP", "/slot=2"}});
  addProperty(event, "affectedTPList") <<= affected;
  return event;
}

CosNotification::StructuredEvent creation() {
  auto event = eventOf("NT_OBJECT_CREATION");
  addProperty(event, "notificationId") <<= "1208";
  addProperty(event, "objectType") <<= OT_MANAGED_ELEMENT;
  addProperty(event, "edgePointRelated") <<= CORBA::Any::from_boolean(false);
  managedElement::ManagedElement_T body;
  body.name = nameOf({{"EMS", "Quor/1"}, {"ManagedElement", "7"}});
  body.userLabel = CORBA::string_dup("north");
  body.communicationState = managedElement::CS_UNAVAILABLE;
  body.emsInSyncState = true;
  body.supportedRates.length(2);
  body.supportedRates[0] = 15;
  body.supportedRates[1] = 27;
  body.additionalInfo = nameOf({{"Rack", "12"}});
  event.remainder_of_body <<= body;
  return event;
}

CosNotification::StructuredEvent change() {
  auto event = eventOf("NT_ATTRIBUTE_VALUE_CHANGE");
  addProperty(event, "objectName") <<= nameOf({{"EMS", "Quor/1"}, {"ManagedElement", "7"}});
  NVList_T attributes;
  attributes.length(2);
  attributes[0].name = CORBA::string_dup("userLabel");
  attributes[0].value <<= "south";
  attributes[1].name = CORBA::string_dup("communicationState");
  attributes[1].value <<= managedElement::CS_UNAVAILABLE;
  addProperty(event, "attributeList") <<= attributes;
  return event;
}

CosNotification::StructuredEvent simpleTypes() {
  auto event = eventOf("NT_TEST");
  addProperty(event, "string") <<= "Zürich";
  addProperty(event, "boolean") <<= CORBA::Any::from_boolean(true);
  addProperty(event, "octet") <<= CORBA::Any::from_octet(200);
  addProperty(event, "char") <<= CORBA::Any::from_char('x');
  addProperty(event, "short") <<= CORBA::Short{-32768};
  addProperty(event, "ushort") <<= CORBA::UShort{65535};
  addProperty(event, "long") <<= CORBA::Long{-2147483647};
  addProperty(event, "ulong") <<= CORBA::ULong{4294967295U};
  addProperty(event, "longlong") <<= CORBA::LongLong{-9223372036854775807LL - 1};
  addProperty(event, "ulonglong") <<= CORBA::ULongLong{18446744073709551615ULL};
  addProperty(event, "float") <<= CORBA::Float{0.5F};
  addProperty(event, "double") <<= CORBA::Double{2.25};
  CORBA::Any nested;
  nested <<= CORBA::Long{5};
  addProperty(event, "nested") <<= nested;
  ProbableCauseList_T causes;
  causes.length(2);
  causes[0] = CORBA::string_dup("LOS");
  causes[1] = CORBA::string_dup("LOF");
  addProperty(event, "causes") <<= causes;
  PerceivedSeverityList_T severities;
  severities.length(2);
  severities[0] = PS_MAJOR;
  severities[1] = PS_MINOR;
  addProperty(event, "severities") <<= severities;
  addProperty(event, "empty");
  return event;
}

}  // namespace zk::test
