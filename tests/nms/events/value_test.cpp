// What values of every type become, as JSON and as a text.
#include <gtest/gtest.h>

#include "nms/events/value.h"
#include "nms/output/output.h"
#include "tests/nms/support/fakechannel.h"

namespace zk::nms {
namespace {

using globaldefs::NVSList_T;

class Value : public testing::Test {
 protected:
  Value() : reader_(factory().in()) {}

  static DynamicAny::DynAnyFactory_var factory() {
    CORBA::Object_var object = test::testOrb()->resolve_initial_references("DynAnyFactory");
    return DynamicAny::DynAnyFactory::_narrow(object.in());
  }

  Json::Value read(const CORBA::Any& value) const { return reader_.read(value); }

  template <class Inserted>
  Json::Value of(const Inserted& inserted) const {
    CORBA::Any value;
    value <<= inserted;
    return read(value);
  }

  // As one line each.
  template <class Inserted>
  std::string json(const Inserted& inserted) const {
    return jsonText(of(inserted));
  }

  ValueReader reader_;
};

NVSList_T name() {
  NVSList_T result;
  result.length(2);
  result[0].name = "EMS";
  result[0].value = "Quor/1";
  result[1].name = "ManagedElement";
  result[1].value = "7";
  return result;
}

TEST_F(Value, ofATextIsUtf8) {
  EXPECT_EQ(of("plain"), "plain");
  EXPECT_EQ(of(""), "");
  EXPECT_EQ(of("M\xFCnchen"), "M\xC3\xBCnchen");
}

TEST_F(Value, ofANumberIsItself) {
  EXPECT_EQ(json(CORBA::Short(-7)), "-7");
  EXPECT_EQ(json(CORBA::UShort(65535)), "65535");
  EXPECT_EQ(json(CORBA::Long(-2147483647)), "-2147483647");
  EXPECT_EQ(json(CORBA::ULong(4294967295U)), "4294967295");
  EXPECT_EQ(json(CORBA::LongLong(-9007199254740993)), "-9007199254740993");
  EXPECT_EQ(json(CORBA::ULongLong(18446744073709551615U)), "18446744073709551615");
  EXPECT_EQ(json(CORBA::Float(0.5F)), "0.5");
  EXPECT_EQ(json(CORBA::Double(-0.25)), "-0.25");
}

TEST_F(Value, ofSmallScalars) {
  CORBA::Any value;
  value <<= CORBA::Any::from_boolean(true);
  EXPECT_EQ(read(value), Json::Value(true));
  value <<= CORBA::Any::from_boolean(false);
  EXPECT_EQ(read(value), Json::Value(false));
  value <<= CORBA::Any::from_octet(255);
  EXPECT_EQ(read(value), 255);
  value <<= CORBA::Any::from_char('x');
  EXPECT_EQ(read(value), "x");
}

TEST_F(Value, ofAnEmptyAnyIsNull) { EXPECT_EQ(read(CORBA::Any()), Json::Value()); }

TEST_F(Value, ofAnEnumIsItsName) {
  EXPECT_EQ(of(notifications::PS_MAJOR), "PS_MAJOR");
  EXPECT_EQ(of(notifications::OT_MANAGED_ELEMENT), "OT_MANAGED_ELEMENT");
  EXPECT_EQ(of(notifications::SA_UNKNOWN), "SA_UNKNOWN");
}

TEST_F(Value, ofPairsIsAListOfThem) {
  EXPECT_EQ(json(name()),
            R"([{"name":"EMS","value":"Quor/1"},{"name":"ManagedElement","value":"7"}])");
  EXPECT_EQ(valueText(of(name())), "EMS=Quor/1, ManagedElement=7");
  EXPECT_EQ(nameText(of(name())), "EMS=Quor/1,ManagedElement=7");
  EXPECT_EQ(json(NVSList_T()), "[]");
  EXPECT_EQ(nameText(of(NVSList_T())), "");
}

TEST_F(Value, declaredToBeANameIsATypedName) {
  CORBA::Any value;
  value <<= name();
  value.type(globaldefs::_tc_NamingAttributes_T);
  EXPECT_EQ(read(value), "EMS=Quor/1,ManagedElement=7");
}

TEST_F(Value, ofAListOfNames) {
  globaldefs::NamingAttributesList_T names;
  names.length(2);
  names[0] = name();
  names[1] = name();
  EXPECT_EQ(json(names), R"(["EMS=Quor/1,ManagedElement=7","EMS=Quor/1,ManagedElement=7"])");
  EXPECT_EQ(valueText(of(names)), "[EMS=Quor/1,ManagedElement=7, EMS=Quor/1,ManagedElement=7]");
}

TEST_F(Value, ofAttributesIsWhatIsWithinThem) {
  notifications::NVList_T attributes;
  attributes.length(3);
  attributes[0].name = "userLabel";
  attributes[0].value <<= "Oslo";
  attributes[1].name = "emsInSyncState";
  attributes[1].value <<= CORBA::Any::from_boolean(true);
  attributes[2].name = "info";
  attributes[2].value <<= name();
  const Json::Value value = of(attributes);
  EXPECT_EQ(value[0]["value"], "Oslo");
  EXPECT_EQ(value[1]["value"], Json::Value(true));
  EXPECT_EQ(value[2]["value"][1]["value"], "7");
  EXPECT_EQ(valueText(value),
            "userLabel=Oslo, emsInSyncState=true, info=EMS=Quor/1, ManagedElement=7");
}

TEST_F(Value, ofARecordHasItsMembers) {
  managedElement::ManagedElement_T element;
  element.name = name();
  element.userLabel = "Oslo";
  element.communicationState = managedElement::CS_UNAVAILABLE;
  element.emsInSyncState = true;
  element.supportedRates.length(2);
  element.supportedRates[0] = 1;
  element.supportedRates[1] = 87;
  const Json::Value value = of(element);
  EXPECT_EQ(value["name"], "EMS=Quor/1,ManagedElement=7");
  EXPECT_EQ(value["userLabel"], "Oslo");
  EXPECT_EQ(value["communicationState"], "CS_UNAVAILABLE");
  EXPECT_EQ(value["emsInSyncState"], Json::Value(true));
  EXPECT_EQ(value["supportedRates"][1], 87);
  EXPECT_TRUE(value["additionalInfo"].empty());
}

TEST_F(Value, nestedTooDeeplyIsCut) {
  CORBA::Any value;
  value <<= "inside";
  for (int i = 0; i < 12; ++i) {
    const CORBA::Any inner(value);
    value <<= inner;
  }
  EXPECT_EQ(read(value), "<nested too deeply>");
}

TEST_F(Value, thatIsNoDataIsMarked) {
  CORBA::Any value;
  value <<= CORBA::Object::_nil();
  EXPECT_EQ(read(value), "<unreadable>");
}

}  // namespace
}  // namespace zk::nms
