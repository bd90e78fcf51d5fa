// Values of types that the agent knows only from their descriptions.
#include <gtest/gtest.h>

#include "tests/agent/constraint/events.h"

namespace zk::test {

namespace {

bool matches(const CosNotification::StructuredEvent& event, const char* constraint) {
  return parsed(constraint)->matches(event);
}

// An event whose property "u" is a union: enum Colour {red, green, blue, grey}
// with a long for red, a string for green, and a boolean by default.
class UnionValue : public testing::Test {
 protected:
  UnionValue() {
    CORBA::EnumMemberSeq labels;
    labels.length(4);
    CORBA::ULong i = 0;
    for (const char* label : {"red", "green", "blue", "grey"}) {
      labels[i++] = CORBA::string_dup(label);
    }
    colour_ = orb_->create_enum_tc("IDL:test/Colour:1.0", "Colour", labels);
    CORBA::UnionMemberSeq members;
    members.length(3);
    describe(members[0], "number", labelOf("red"), CORBA::_tc_long);
    describe(members[1], "text", labelOf("green"), CORBA::_tc_string);
    CORBA::Any byDefault;
    byDefault <<= CORBA::Any::from_octet(0);
    describe(members[2], "flag", byDefault, CORBA::_tc_boolean);
    union_ = orb_->create_union_tc("IDL:test/Choice:1.0", "Choice", colour_, members);
  }

  static void describe(CORBA::UnionMember& member, const char* name, const CORBA::Any& label,
                       CORBA::TypeCode_ptr type) {
    member.name = CORBA::string_dup(name);
    member.label = label;
    member.type = CORBA::TypeCode::_duplicate(type);
  }

  CORBA::Any labelOf(const char* label) {
    DynamicAny::DynAny_var value = factory_->create_dyn_any_from_type_code(colour_);
    DynamicAny::DynEnum_var colour = DynamicAny::DynEnum::_narrow(value);
    colour->set_as_string(label);
    CORBA::Any_var any = value->to_any();
    value->destroy();
    return any.in();
  }

  template <typename Fill>
  CosNotification::StructuredEvent showing(const char* label, Fill fill) {
    DynamicAny::DynAny_var value = factory_->create_dyn_any_from_type_code(union_);
    DynamicAny::DynUnion_var choice = DynamicAny::DynUnion::_narrow(value);
    DynamicAny::DynAny_var discriminator = factory_->create_dyn_any(labelOf(label));
    choice->set_discriminator(discriminator);
    discriminator->destroy();
    DynamicAny::DynAny_var member = choice->member();
    fill(*member.in());
    auto event = eventOf("NT_TEST");
    CORBA::Any_var any = value->to_any();
    addProperty(event, "u") = any.in();
    value->destroy();
    return event;
  }

  CORBA::ORB_var orb_ = orb();
  DynamicAny::DynAnyFactory_var factory_ = dynAnyFactory();
  CORBA::TypeCode_var colour_;
  CORBA::TypeCode_var union_;
};

TEST_F(UnionValue, showsTheArmOfItsLabel) {
  const auto event = showing("green", [](DynamicAny::DynAny& m) { m.insert_string("grass"); });
  EXPECT_TRUE(matches(event, "$u._d == green"));
  EXPECT_TRUE(matches(event, "$u._d == 1"));
  EXPECT_TRUE(matches(event, "$u.text == 'grass'"));
  EXPECT_TRUE(matches(event, "$u.('green') == 'grass'"));
  EXPECT_TRUE(matches(event, "$u.(1) == 'grass'"));
  EXPECT_FALSE(matches(event, "exist $u.number"));
  EXPECT_FALSE(matches(event, "exist $u.('red')"));
  EXPECT_FALSE(matches(event, "exist $u.(-1)"));
  EXPECT_FALSE(matches(event, "exist $u.()"));
  EXPECT_FALSE(matches(event, "default $u"));
  EXPECT_TRUE(matches(event, "$u._type_id == 'Choice'"));
}

TEST_F(UnionValue, showsItsDefault) {
  const auto event = showing("grey", [](DynamicAny::DynAny& m) { m.insert_boolean(true); });
  EXPECT_TRUE(matches(event, "$u.flag"));
  EXPECT_TRUE(matches(event, "$u.()"));
  EXPECT_TRUE(matches(event, "default $u"));
  EXPECT_TRUE(matches(event, "default $u._d"));
  EXPECT_TRUE(matches(event, "default $.filterable_data(u)"));
  EXPECT_FALSE(matches(event, "exist $u.number"));
}

// The first label's number is that of the default's octet.
TEST_F(UnionValue, doesNotTakeItsFirstArmForTheDefault) {
  const auto event = showing("red", [](DynamicAny::DynAny& m) { m.insert_long(-5); });
  EXPECT_TRUE(matches(event, "$u.number == -5"));
  EXPECT_FALSE(matches(event, "default $u"));
}

TEST(ArrayValue, isAList) {
  CORBA::ORB_var own = orb();
  DynamicAny::DynAnyFactory_var factory = dynAnyFactory();
  CORBA::TypeCode_var type = own->create_array_tc(3, CORBA::_tc_ushort);
  DynamicAny::DynAny_var value = factory->create_dyn_any_from_type_code(type);
  for (CORBA::UShort i = 0; i < 3; ++i) {
    value->seek(i);
    value->insert_ushort(static_cast<CORBA::UShort>(10 * i));
  }
  auto event = eventOf("NT_TEST");
  CORBA::Any_var any = value->to_any();
  addProperty(event, "a") = any.in();
  value->destroy();
  EXPECT_TRUE(matches(event, "$a[2] == 20"));
  EXPECT_TRUE(matches(event, "$a._length == 3"));
  EXPECT_TRUE(matches(event, "10 in $a"));
  EXPECT_FALSE(matches(event, "11 in $a"));
  EXPECT_FALSE(matches(event, "exist $a[3]"));
  EXPECT_FALSE(matches(event, "exist $a.0"));
}

// A struct of a type nobody compiled, with an any inside an any.
TEST(StructValue, holdsAnysAndPairs) {
  CORBA::ORB_var own = orb();
  CORBA::Any inner;
  inner <<= nameOf({{"EMS", "Quor/1"}});
  CORBA::Any middle;
  middle <<= inner;
  CosNotification::NamedPropertyRange range;
  range.name = CORBA::string_dup("PacingInterval");
  range.range.low_val <<= CORBA::ULongLong{7};
  range.range.high_val <<= middle;
  auto event = eventOf("NT_TEST");
  addProperty(event, "range") <<= range;
  EXPECT_TRUE(matches(event, "$range.name == 'PacingInterval'"));
  EXPECT_TRUE(matches(event, "$range.range.low_val == 7"));
  EXPECT_TRUE(matches(event, "$range.1.0 == 7"));
  EXPECT_TRUE(matches(event, "$range.range.high_val(EMS) == 'Quor/1'"));
  EXPECT_TRUE(matches(event, "$range.range.high_val[0].name == 'EMS'"));
  EXPECT_FALSE(matches(event, "exist $range.range.high_val(PTP)"));
}

}  // namespace

}  // namespace zk::test
