#include "agent/constraint/constraint.h"

#include <gtest/gtest.h>

#include "tests/agent/constraint/events.h"

namespace zk::test {

namespace {

struct Case {
  const char* constraint;
  bool expected;
};

void check(const CosNotification::StructuredEvent& event, std::initializer_list<Case> cases) {
  for (const auto& [constraint, expected] : cases) {
    SCOPED_TRACE(constraint);
    try {
      EXPECT_EQ(parsed(constraint)->matches(event), expected);
    } catch (const agent::InvalidConstraintText& refused) {
      ADD_FAILURE() << refused.what();
    }
  }
}

TEST(Constraint, emptyTextAndTruthValues) {
  check(alarm(), {{"", true},
                  {" \t\r\n ", true},
                  {"TRUE", true},
                  {"FALSE", false},
                  {"not FALSE", true},
                  {"not TRUE", false},
                  {"(TRUE)", true}});
}

TEST(Constraint, headerByShortAndFullNames) {
  check(alarm(), {
                     {"$type_name == 'NT_ALARM'", true},
                     {"$type_name == 'NT_TCA'", false},
                     {"$type_name != 'NT_TCA'", true},
                     {"$domain_name == 'tmf_mtnm' and $event_name == ''", true},
                     {"type_name == 'NT_ALARM'", true},
                     {"$.header.fixed_header.event_type.type_name == 'NT_ALARM'", true},
                     {"$.header.fixed_header.event_type.domain_name == 'tmf_mtnm'", true},
                     {"$.header.fixed_header.event_name == ''", true},
                     {"$.0.0.0.1 == 'NT_ALARM'", true},
                     {"$.header.0.event_type.(1) == 'NT_ALARM'", false},
                     {"$header.fixed_header.event_type.type_name == 'NT_ALARM'", true},
                     {"$Priority == 4", true},
                     {"$.header.variable_header(Priority) == 4", true},
                     {"$.header.variable_header[0].name == 'Priority'", true},
                     {"$.header.variable_header._length == 1", true},
                     {"$.header.nosuch == 1", false},
                 });
}

TEST(Constraint, propertiesByName) {
  check(alarm(), {
                     {"$notificationId == '1207'", true},
                     {"$probableCause == 'LOS'", true},
                     {"$.filterable_data(probableCause) == 'LOS'", true},
                     {"$.filterable_data('probableCause') == 'LOS'", true},
                     {"$.filterable_data[0].value == '1207'", true},
                     {"$.filterable_data[0].1 == '1207'", true},
                     {"$.filterable_data[99].value == '1207'", false},
                     {"$.filterable_data._length == 11", true},
                     {"$isClearable", true},
                     {"$isClearable == TRUE", true},
                     {"not $isClearable", false},
                     {"$layerRate == -1", true},
                     {"$layerRate < 0", true},
                     {"$nosuch == 1", false},
                     {"$nosuch != 1", false},
                     {"$notificationId.value == '1207'", false},
                 });
}

// A variable header field hides a property of the same name; the header's own
// names hide both.
TEST(Constraint, variablesInOrderOfPrecedence) {
  auto event = alarm();
  addProperty(event, "Priority") <<= CORBA::Short{9};
  addProperty(event, "type_name") <<= "mine";
  addProperty(event, "remainder_of_body") <<= "property";
  check(event, {
                   {"$Priority == 4", true},
                   {"$.filterable_data(Priority) == 9", true},
                   {"$type_name == 'NT_ALARM'", true},
                   {"$.filterable_data(type_name) == 'mine'", true},
                   {"$remainder_of_body == 'property'", true},
               });
}

TEST(Constraint, enumerationsByLabelAndNumber) {
  check(
      alarm(),
      {
          {"$perceivedSeverity == PS_CRITICAL", true},
          {"PS_CRITICAL == $perceivedSeverity", true},
          {"$perceivedSeverity == PS_MAJOR", false},
          {"$perceivedSeverity != PS_MAJOR", true},
          {"$perceivedSeverity <= PS_MAJOR", true},
          {"PS_MAJOR >= $perceivedSeverity", true},
          {"$perceivedSeverity > PS_MAJOR", false},
          {"$perceivedSeverity == 1", true},
          {"$perceivedSeverity == 1.0", true},
          {"2 > $perceivedSeverity", true},
          {"$perceivedSeverity == 'PS_CRITICAL'", true},
          {"$perceivedSeverity == OT_EMS", false},
          {"$perceivedSeverity != OT_EMS", false},
          {"$perceivedSeverity == $perceivedSeverity", true},
          {"$perceivedSeverity == $serviceAffecting", false},
          {"$objectType == OT_MANAGED_ELEMENT and $serviceAffecting == SA_SERVICE_AFFECTING", true},
          {"$perceivedSeverity._type_id == 'PerceivedSeverity_T'", true},
          {"$perceivedSeverity._repos_id == "
           "'IDL:mtnm.tmforum.org/notifications/PerceivedSeverity_T:1.0'",
           true},
          {"$perceivedSeverity == TRUE", false},
          {"probableCause == 'LOS'", true},
          {"'LOS' == probableCause", true},
      });
}

TEST(Constraint, namesInsideValues) {
  check(alarm(), {
                     {"$objectName[0].value == 'Quor/1'", true},
                     {"$objectName[1].name == 'ManagedElement'", true},
                     {"$objectName[1].1 == '7'", true},
                     {"$objectName[2].value == '7'", false},
                     {"$objectName(ManagedElement) == '7'", true},
                     {"$objectName('ManagedElement') == '7'", true},
                     {"$objectName(PTP) == '7'", false},
                     {"$.filterable_data(objectName)(ManagedElement) == '7'", true},
                     {"$.filterable_data(objectName)[0].value == 'Quor/1'", true},
                     {"$objectName._length == 2", true},
                     {"$objectName._type_id == 'NVSList_T'", true},
                     {"$additionalInfo('Slot-No') == '3'", true},
                     {"$additionalInfo('it\\'s') == 'odd'", true},
                     {"$affectedTPList._length == 2", true},
                     {"$affectedTPList[1](PTP) == '/slot=2'", true},
                     {"$affectedTPList[1][0].value == 'Quor/1'", true},
                     {"$affectedTPList[2](PTP) == '/slot=2'", false},
                 });
}

TEST(Constraint, bodiesOfObjects) {
  check(creation(), {
                        {"$.remainder_of_body.userLabel == 'north'", true},
                        {"$.remainder_of_body.1 == 'north'", true},
                        {"$remainder_of_body.userLabel == 'north'", true},
                        {"$.remainder_of_body.99 == 'north'", false},
                        {"$.remainder_of_body.name(ManagedElement) == '7'", true},
                        {"$.remainder_of_body.name[1].value == '7'", true},
                        {"$.remainder_of_body.communicationState == CS_UNAVAILABLE", true},
                        {"$.remainder_of_body.communicationState == CS_AVAILABLE", false},
                        {"$.remainder_of_body.emsInSyncState", true},
                        {"$.remainder_of_body.supportedRates[1] == 27", true},
                        {"$.remainder_of_body.supportedRates._length == 2", true},
                        {"15 in $.remainder_of_body.supportedRates", true},
                        {"16 in $.remainder_of_body.supportedRates", false},
                        {"$.remainder_of_body.additionalInfo('Rack') == '12'", true},
                        {"$.remainder_of_body._type_id == 'ManagedElement_T'", true},
                        {"$.remainder_of_body.name._type_id == 'NamingAttributes_T'", true},
                        {"$.remainder_of_body.owner == ''", true},
                        {"$.remainder_of_body.userLabel.more == ''", false},
                        {"exist $.remainder_of_body.userLabel", true},
                        {"exist $.remainder_of_body.nosuch", false},
                        {"$edgePointRelated == FALSE", true},
                    });
  check(alarm(), {{"exist $.remainder_of_body", false},
                  {"$.remainder_of_body.userLabel == 'north'", false}});
}

TEST(Constraint, attributesThatChanged) {
  check(change(), {
                      {"$attributeList(userLabel) == 'south'", true},
                      {"$attributeList('userLabel') == 'south'", true},
                      {"$attributeList[0].value == 'south'", true},
                      {"$attributeList[0].name == 'userLabel'", true},
                      {"$attributeList(communicationState) == CS_UNAVAILABLE", true},
                      {"exist $attributeList(userLabel)", true},
                      {"exist $attributeList(owner)", false},
                      {"$attributeList._length == 2", true},
                  });
}

TEST(Constraint, simpleTypesOfEachKind) {
  check(simpleTypes(), {
                           {"$string == 'Zürich'", true},
                           {"'rich' ~ $string", true},
                           {"$string ~ 'rich'", false},
                           {"'Z' < $string and $string < 'Zz' ", false},
                           {"$boolean and TRUE == $boolean and $boolean > FALSE", true},
                           {"$octet == 200", true},
                           {"$char == 'x'", true},
                           {"$short == -32768", true},
                           {"$ushort == 65535", true},
                           {"$long == -2147483647", true},
                           {"$ulong == 4294967295", true},
                           {"$ulong > $long", true},
                           {"$longlong == -9223372036854775808", true},
                           {"$ulonglong == 18446744073709551615", true},
                           {"$ulonglong > 18446744073709551614", true},
                           {"$ulonglong > $longlong", true},
                           {"$float == .5 and $float == 5e-1", true},
                           {"$double == 2.25 and $double < $octet", true},
                           {"$nested == 5", true},
                           {"exist $empty", false},
                           {"$empty == 0", false},
                           {"$boolean == 1", false},
                           {"$string == 1", false},
                           {"$short == '-32768'", false},
                       });
}

TEST(Constraint, valuesInLists) {
  check(simpleTypes(), {
                           {"'LOS' in $causes", true},
                           {"'LOS' in causes", true},
                           {"'AIS' in $causes", false},
                           {"not ('AIS' in $causes)", true},
                           {"PS_MINOR in $severities", true},
                           {"PS_CLEARED in $severities", false},
                           {"2 in $severities", true},
                           {"1 + 1 in $severities", true},
                           {"'LOS' in $string", false},
                           {"not ('LOS' in $string)", false},
                           {"'LOS' in $nosuch", false},
                           {"$causes[0] in $causes", true},
                           {"$nosuch in $causes", false},
                           {"$causes == $causes", false},
                       });
}

TEST(Constraint, arithmetic) {
  check(simpleTypes(), {
                           {"1 + 2 * 3 - 4 / 2 == 5", true},
                           {"(1 + 2) * 3 == 9", true},
                           {"5 / 2 == 2.5", true},
                           {"6 / -2 == -3", true},
                           {"1 - -1 == 2", true},
                           {"1-1 == 0", true},
                           {"+3 == 3", true},
                           {"$octet + $double * 2 == 204.5", true},
                           {"$octet / 0 == 0", false},
                           {"not ($octet / 0 == 0)", false},
                           {"$octet / 0.0 > 1", false},
                           {"$longlong - 1 < $longlong", true},
                           {"$longlong / -1 > 0", true},
                           {"$ulonglong + 1 > 0", true},
                           {"9223372036854775807 + 1 == 9223372036854775808", true},
                           {"9223372036854775807 * 2 > 9223372036854775807", true},
                           {"$string + 1 == 1", false},
                           {"$boolean + 1 == 2", false},
                           {"$nosuch + 1 != 2", false},
                       });
}

TEST(Constraint, missingPartsDecideNothing) {
  check(alarm(), {
                     {"not ($nosuch == 1)", false},
                     {"$nosuch", false},
                     {"not $nosuch", false},
                     {"nosuch", false},
                     {"$nosuch == 1 or $type_name == 'NT_ALARM'", true},
                     {"$type_name == 'NT_ALARM' or $nosuch == 1", true},
                     {"$nosuch == 1 and $type_name == 'NT_ALARM'", false},
                     {"not ($nosuch == 1 and $type_name == 'NT_TCA')", true},
                     {"not ($nosuch == 1 or $type_name == 'NT_TCA')", false},
                     {"exist $nosuch or $isClearable", true},
                     {"exist $probableCause", true},
                     {"exist probableCause", true},
                     {"exist $objectName(ManagedElement)", true},
                     {"exist $objectName(PTP)", false},
                     {"not exist $objectName(PTP)", true},
                     {"exist $", true},
                     {"default $probableCause", false},
                     {"$ == 1", false},
                 });
}

TEST(Constraint, precedenceOfOperators) {
  check(alarm(), {
                     {"TRUE or FALSE and FALSE", true},
                     {"(TRUE or FALSE) and FALSE", false},
                     {"not FALSE and FALSE", false},
                     {"not (FALSE and FALSE)", true},
                     {"$layerRate<3and$Priority>3", true},
                     {"'LO' ~ $probableCause == TRUE", true},
                     {"FALSE and FALSE or TRUE and TRUE and TRUE", true},
                 });
}

// Names that the language or its parser uses for itself.
TEST(Constraint, awkwardNames) {
  auto event = alarm();
  for (const char* name : {"and", "max", "first", "_length", "in", "TRUE", "_x", "n1"}) {
    addProperty(event, name) <<= name;
  }
  check(event, {
                   {"$\\and == 'and'", true},
                   {"$max == 'max' and $first == 'first'", true},
                   {"$\\_length == '_length'", true},
                   {"$\\in == 'in' and $\\TRUE == 'TRUE'", true},
                   {"$\\_x == '_x' and $n1 == 'n1'", true},
                   {"$.filterable_data(\\and) == 'and'", true},
                   {"$.filterable_data('and') == 'and'", true},
                   {"max == 'max'", true},
               });
}

TEST(Constraint, unknownTypesAreThereWithoutAFactory) {
  const auto event = creation();
  const auto text = [](const char* constraint) {
    return agent::Constraint::parse(constraint, DynamicAny::DynAnyFactory::_nil());
  };
  EXPECT_TRUE(text("exist $.remainder_of_body")->matches(event));
  EXPECT_FALSE(text("$.remainder_of_body.userLabel == 'north'")->matches(event));
  EXPECT_TRUE(text("$objectType == OT_MANAGED_ELEMENT")->matches(event));
}

TEST(Constraint, keepsItsText) { EXPECT_EQ(parsed(" $a == 1 ")->text(), " $a == 1 "); }

}  // namespace

}  // namespace zk::test
