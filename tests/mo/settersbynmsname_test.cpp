// Setting an attribute of an object that the NMS names: the order of checks,
// the codes, and the one notification of a change that the EMS accepted.
#include "tests/mo/setters.h"

namespace zk::test {
namespace {

using NS_QUORCORBA::TECommonFunc;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr unsigned long NOT_SUPPORTED = 0x41180032;
constexpr unsigned long NULL_ARGUMENT = 0x4118005F;
constexpr unsigned long BAD_NAME = 0x41180060;
constexpr unsigned long TOO_LONG = 0x4118006A;

const std::string TEXT_252(252, 'a');
const std::string TEXT_253(253, 'a');
const std::string TEXT_254(254, 'a');

class SetByNmsName : public SetterTest {
 protected:
  const globaldefs::NVSList_T empty;
  const globaldefs::NVSList_T element = makeName({{"EMS", "Quor/1"}, {"ManagedElement", "7"}});
  const globaldefs::NVSList_T unreadable = makeName({{"EMS", "Quor/1"}, {"Shelf", "7"}});
};

INSTANTIATE_TEST_SUITE_P(Setter, SetByNmsName, testing::Values(OWNER, USER_LABEL), setterName);

TEST_P(SetByNmsName, sendsOneNotificationWithOnePair) {
  EXPECT_EQ(set(element, "north"), 0U);
  EXPECT_EQ(journal, reported());
  ASSERT_EQ(pusher.pushed.size(), 1U);
  EXPECT_EQ(dumpEvent(pusher.pushed[0]), objectEventText({}, false, "empty", pair("north")));
}

TEST_P(SetByNmsName, refusesAnEmptyNameFirst) {
  EXPECT_EQ(set(empty, "north"), BAD_NAME);
  EXPECT_EQ(set(empty, nullptr), BAD_NAME);
  EXPECT_EQ(set(empty, TEXT_253.c_str()), BAD_NAME);
  EXPECT_THAT(journal, IsEmpty());
}

TEST_P(SetByNmsName, refusesANullTextBeforeReadingTheName) {
  EXPECT_EQ(set(element, nullptr), NULL_ARGUMENT);
  EXPECT_EQ(set(unreadable, nullptr), NULL_ARGUMENT);
  EXPECT_THAT(journal, IsEmpty());
}

TEST_P(SetByNmsName, refusesATooLongTextBeforeReadingTheName) {
  EXPECT_EQ(set(element, TEXT_253.c_str()), TOO_LONG);
  EXPECT_EQ(set(element, TEXT_254.c_str()), TOO_LONG);
  EXPECT_EQ(set(unreadable, TEXT_253.c_str()), TOO_LONG);
  EXPECT_THAT(journal, IsEmpty());
}

TEST_P(SetByNmsName, takesATextOf252Characters) {
  EXPECT_EQ(set(element, TEXT_252.c_str()), 0U);
  EXPECT_NE(dumpEvent(pusher.pushed.at(0)).find(changed(TEXT_252)), std::string::npos);
  EXPECT_EQ(set(unreadable, TEXT_252.c_str()), BAD_NAME);
}

TEST_P(SetByNmsName, takesAnEmptyText) {
  EXPECT_EQ(set(element, ""), 0U);
  EXPECT_NE(dumpEvent(pusher.pushed.at(0)).find(changed("")), std::string::npos);
}

struct Refused {
  globaldefs::NVSList_T name;
  unsigned long result;
};

TEST_P(SetByNmsName, returnsTheConversionsCodeWithoutAskingTheEms) {
  const std::vector<Refused> all{
      {unreadable, BAD_NAME},
      {makeName({{"EMS", "Quor/1"}, {"ManagedElement", "7x"}}), BAD_NAME},
      {makeName({{"EMS", "Quor/1"}, {"PhysicalLink", "42"}}), BAD_NAME},
      {makeName({{"EMS", "Quor/1"}, {"ManagedElement", "7"}, {"AID", "7/3"}}), BAD_NAME},
      {makeName({{"EMS", "Quor/1"}, {"ManagedElement", "7"}, {"DN", "7/3"}}), BAD_NAME},
      {makeName({{"EMS", "Quor/1"}, {"DisplayLink", "/id=17"}}), BAD_NAME},
      {makeName({{"EMS", "Other"}}), 0x411800CB},
      {makeName({{"EMS", "Other"}, {"Node", "/id=17"}}), 0x411800CB},
      {makeName({{"EMS", "Quor/1"}, {"ManagedElement", "0"}}), 0x411800CC},
      {makeName({{"EMS", "Quor/1"}, {"ManagedElement", "4294967296"}}), 0x411800CC},
      {makeName({{"EMS", "Quor/1"}, {"MultiLayerSubnetwork", "2"}}), 0x411800D5},
  };
  for (const Refused& refused : all) {
    EXPECT_EQ(set(refused.name, "north"), refused.result) << dumpName(refused.name);
  }
  EXPECT_THAT(journal, IsEmpty());
}

TEST_P(SetByNmsName, returnsTheEmssCodeAndSendsNothing) {
  for (const unsigned long result : {1UL, 0x41180032UL, 0x100000000UL, 0xFFFFFFFFFFFFFFFFUL}) {
    journal.clear();
    backend.*GetParam().result = result;
    EXPECT_EQ(set(element, "north"), result);
    EXPECT_THAT(journal, ElementsAre(GetParam().service));
  }
}

TEST_P(SetByNmsName, leavesTheNameAsItWas) {
  set(element, "north");
  EXPECT_EQ(dumpName(element), "EMS=Quor/1|ManagedElement=7");
}

TEST_P(SetByNmsName, tracesNothing) {
  CapturedTrace trace;
  set(element, "north");
  set(unreadable, "north");
  set(element, nullptr);
  backend.*GetParam().result = 1;
  set(element, "north");
  EXPECT_THAT(trace.texts(), IsEmpty());
}

TEST_P(SetByNmsName, succeedsThoughThePusherThrows) {
  pusher.onPush = [] { throw CORBA::TRANSIENT(); };
  EXPECT_EQ(set(element, "north"), 0U);
  EXPECT_EQ(journal, reported());
}

class RefusedUserLabel : public SetByNmsName {};

INSTANTIATE_TEST_SUITE_P(Setter, RefusedUserLabel, testing::Values(USER_LABEL), setterName);

TEST_P(RefusedUserLabel, looksAtNothingElse) {
  EXPECT_EQ(TECommonFunc::OnSetUserLabel(element, "north", true), NOT_SUPPORTED);
  EXPECT_EQ(TECommonFunc::OnSetUserLabel(empty, nullptr, true), NOT_SUPPORTED);
  EXPECT_EQ(TECommonFunc::OnSetUserLabel(empty, "north", true), NOT_SUPPORTED);
  EXPECT_EQ(TECommonFunc::OnSetUserLabel(element, TEXT_253.c_str(), true), NOT_SUPPORTED);
  EXPECT_EQ(TECommonFunc::OnSetUserLabel(unreadable, "north", true), NOT_SUPPORTED);
  EXPECT_THAT(journal, IsEmpty());
}

}  // namespace
}  // namespace zk::test
