// What events say, for people.
#include <gtest/gtest.h>

#include "nms/events/alarm.h"
#include "nms/events/event.h"
#include "nms/wire/failure.h"
#include "tests/nms/support/fakechannel.h"
#include "zk_quornex/idl/managers.h"

namespace zk::nms {
namespace {

using test::addProperty;
using test::fakeAlarm;
using test::fakeEvent;

Event read(const CosNotification::StructuredEvent& event) {
  CORBA::Object_var object = test::testOrb()->resolve_initial_references("DynAnyFactory");
  DynamicAny::DynAnyFactory_var factory = DynamicAny::DynAnyFactory::_narrow(object.in());
  return readEvent(event, ValueReader(factory.in()));
}

template <class Inserted>
void add(CosNotification::StructuredEvent& event, const char* name, const Inserted& inserted) {
  CORBA::Any value;
  value <<= inserted;
  addProperty(event, name, value);
}

TEST(Event, hasItsHeaderAndProperties) {
  CosNotification::StructuredEvent sent = fakeEvent("NT_X", {{"notificationId", "17"}});
  sent.header.fixed_header.event_name = "n";
  sent.header.variable_header.length(1);
  sent.header.variable_header[0].name = "Priority";
  sent.header.variable_header[0].value <<= CORBA::Short(3);
  sent.remainder_of_body <<= "rest";
  const Event event = read(sent);
  EXPECT_EQ(event.domain, "tmf_mtnm");
  EXPECT_EQ(event.type, "NT_X");
  EXPECT_EQ(event.name, "n");
  EXPECT_EQ(event.object, "");
  EXPECT_EQ(event.header["Priority"], 3);
  EXPECT_EQ(event.text("notificationId"), "17");
  EXPECT_EQ(event.text("missing"), "");
  EXPECT_EQ(event.body, "rest");
}

TEST(Event, isAboutItsObjectHoweverTheNameIsDeclared) {
  const Event event = read(fakeAlarm(7, "LOS", notifications::PS_MAJOR));
  EXPECT_EQ(event.object, "EMS=Quor/1,ManagedElement=7");
  EXPECT_EQ(event.properties["objectName"], "EMS=Quor/1,ManagedElement=7");
}

TEST(Summary, ofAnAlarm) {
  CosNotification::StructuredEvent sent =
      fakeAlarm(7, "LOS", notifications::PS_MAJOR, "no light on port 3");
  EXPECT_EQ(summary(read(sent)), "major LOS: no light on port 3");
  add(sent, "serviceAffecting", notifications::SA_SERVICE_AFFECTING);
  EXPECT_EQ(summary(read(sent)), "major LOS, service affecting: no light on port 3");
  EXPECT_EQ(summary(read(fakeAlarm(7, "LOS", notifications::PS_CLEARED))), "cleared LOS");
}

TEST(Summary, ofACreationTellsKindAndLabel) {
  CosNotification::StructuredEvent sent = fakeEvent("NT_OBJECT_CREATION", {});
  add(sent, "objectType", notifications::OT_MANAGED_ELEMENT);
  EXPECT_EQ(summary(read(sent)), "created managed element");
  managedElement::ManagedElement_T element;
  element.userLabel = "Oslo";
  element.communicationState = managedElement::CS_AVAILABLE;  // unset, it may be no value at all
  element.emsInSyncState = true;
  sent.remainder_of_body <<= element;
  EXPECT_EQ(summary(read(sent)), "created managed element \"Oslo\"");
}

TEST(Summary, ofANewerKindIsItsQualifier) {
  CosNotification::StructuredEvent sent =
      fakeEvent("NT_OBJECT_DELETION", {{"objectTypeQualifier", "Node"}});
  add(sent, "objectType", notifications::OT_AID);
  EXPECT_EQ(summary(read(sent)), "deleted Node");
  EXPECT_EQ(objectTypeText("OT_AID", ""), "AID");
  EXPECT_EQ(objectTypeText("OT_EMS", ""), "EMS");
  EXPECT_EQ(objectTypeText("OT_TOPOLOGICAL_LINK", ""), "topological link");
  EXPECT_EQ(objectTypeText("", ""), "object");
}

TEST(Summary, ofAChangeIsTheAttributes) {
  for (const char* type : {"NT_ATTRIBUTE_VALUE_CHANGE", "NT_STATE_CHANGE"}) {
    CosNotification::StructuredEvent sent = fakeEvent(type, {});
    notifications::NVList_T attributes;
    attributes.length(2);
    attributes[0].name = "userLabel";
    attributes[0].value <<= "Oslo";
    attributes[1].name = "owner";
    attributes[1].value <<= "ops";
    add(sent, "attributeList", attributes);
    EXPECT_EQ(summary(read(sent)), "userLabel=Oslo, owner=ops");
  }
}

TEST(Summary, ofAHeartbeat) {
  EXPECT_EQ(summary(read(fakeEvent("NT_HEARTBEAT", {{"notificationId", "1"}}))),
            "the EMS is alive");
}

TEST(Summary, ofAnotherTypeIsWhatNoColumnShows) {
  CosNotification::StructuredEvent sent =
      fakeEvent("NT_FILE_TRANSFER_STATUS", {{"notificationId", "1"}, {"fileName", "pm.csv"}});
  add(sent, "transferStatus", notifications::FT_COMPLETED);
  EXPECT_EQ(summary(read(sent)), "fileName=pm.csv, transferStatus=FT_COMPLETED");
}

TEST(EventRow, hasTheEmsTimeOrElseTheArrival) {
  const Event timed = read(fakeEvent("NT_X", {{"emsTime", "20121120094200.0Z"}}));
  EXPECT_EQ(eventRow(timed).front(), "2012-11-20T09:42:00.0Z");
  const Event heartbeat = read(fakeEvent("NT_HEARTBEAT", {}));
  EXPECT_EQ(eventRow(heartbeat).front(), heartbeat.received);
  EXPECT_EQ(heartbeat.received.size(), std::string("2012-11-20T09:42:00.000Z").size());
}

TEST(Severity, isTypedAsItIsShown) {
  for (const std::string& name : severityNames()) {
    EXPECT_EQ(readAlarm(read(fakeAlarm(1, "X", severityFrom(name)))).severity, name);
  }
  EXPECT_THROW(severityFrom("PS_MAJOR"), UsageError);
  EXPECT_THROW(severityFrom(""), UsageError);
}

}  // namespace
}  // namespace zk::nms
