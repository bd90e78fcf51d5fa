// Reporting a new native EMS name, and the operations that are not offered.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "tests/support/dump.h"
#include "tests/support/journal.h"
#include "tests/support/objectevent.h"
#include "zk_quornex/mo/commonfunc.h"
#include "zk_quornex/names/aidname.h"
#include "zk_quornex/names/mapname.h"

namespace zk::test {
namespace {

using namespace NS_QUORCORBA;
using testing::ElementsAre;
using testing::IsEmpty;

class NativeName : public testing::Test {
 protected:
  FixedEmsConfig config;
  Journal journal;
  JournalClock clock{journal};
  JournalPusher pusher{journal};
  JournalEms backend{journal};
};

TEST_F(NativeName, isToldWithoutAskingTheEms) {
  TEMEName element;
  element.meId_ = 7;
  EXPECT_EQ(TECommonFunc::OnSetNativeEmsName(&element, "NE 7"), 0U);
  EXPECT_THAT(journal, ElementsAre("header NT_ATTRIBUTE_VALUE_CHANGE", "time", "time", "push"));
  EXPECT_EQ(dumpEvent(pusher.pushed.at(0)),
            objectEventText({}, false, "empty", "nativeEMSName=string:NE 7"));
}

TEST_F(NativeName, isToldForKindsWithoutSetters) {
  CAPhyLinkName link;
  link.id_ = "42";
  CAAIDName dn;
  dn.ids_ = {7, 3};
  dn.type_ = NAME_DN;
  EXPECT_EQ(TECommonFunc::OnSetNativeEmsName(&link, "a"), 0U);
  EXPECT_EQ(TECommonFunc::OnSetNativeEmsName(&dn, "b"), 0U);
  ASSERT_EQ(pusher.pushed.size(), 2U);
  EXPECT_EQ(dumpAny(pusher.pushed[0].filterable_data[3].value), "string:PHYSICALLINK");
  EXPECT_EQ(dumpAny(pusher.pushed[1].filterable_data[3].value), "string:DN");
}

TEST_F(NativeName, isNotToldForANameThatCannotBeSent) {
  CADispLinkName link;
  link.id_ = "17";
  link.parentId_ = "3";
  TEMEName unset;
  EXPECT_EQ(TECommonFunc::OnSetNativeEmsName(nullptr, "a"), 0U);
  EXPECT_EQ(TECommonFunc::OnSetNativeEmsName(&link, "a"), 0U);
  EXPECT_EQ(TECommonFunc::OnSetNativeEmsName(&unset, "a"), 0U);
  EXPECT_THAT(journal, IsEmpty());
}

TEST_F(NativeName, takesAnyText) {
  TEName ems;
  const std::string text(1000, 'a');
  EXPECT_EQ(TECommonFunc::OnSetNativeEmsName(&ems, text.c_str()), 0U);
  EXPECT_EQ(TECommonFunc::OnSetNativeEmsName(&ems, ""), 0U);
  ASSERT_EQ(pusher.pushed.size(), 2U);
  EXPECT_EQ(dumpAny(pusher.pushed[0].filterable_data[7].value),
            "NVList_T:[nativeEMSName=string:" + text + "]");
  EXPECT_EQ(dumpAny(pusher.pushed[1].filterable_data[7].value), "NVList_T:[nativeEMSName=string:]");
}

// An Any cannot hold a null text.
TEST_F(NativeName, tellsANullTextAsEmpty) {
  TEName ems;
  EXPECT_EQ(TECommonFunc::OnSetNativeEmsName(&ems, nullptr), 0U);
  EXPECT_EQ(TECommonFunc::OnSetNativeEmsName(nullptr, nullptr), 0U);
  ASSERT_EQ(pusher.pushed.size(), 1U);
  EXPECT_EQ(dumpAny(pusher.pushed[0].filterable_data[7].value), "NVList_T:[nativeEMSName=string:]");
}

TEST_F(NativeName, isNotOfferedWithoutAName) {
  EXPECT_EQ(TECommonFunc::OnSetNativeEmsName(), 0x41180032U);
  EXPECT_EQ(TECommonFunc::OnsetAdditionalInfo(), 0x41180032U);
  EXPECT_THAT(journal, IsEmpty());
}

}  // namespace
}  // namespace zk::test
