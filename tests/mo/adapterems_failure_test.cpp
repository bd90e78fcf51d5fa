// What the record of the EMS keeps when the EMS's name cannot be written. The
// conversion that the adapter calls is this file's: see CMakeLists.txt.
#include <gtest/gtest.h>

#include "tests/mo/recordtext.h"
#include "zk_quornex/mo/moadapter.h"
#include "zk_quornex/names/tename.h"

namespace {

unsigned long conversionResult = 0;
int conversions = 0;

}  // namespace

// Under these names the linker keeps the original and looks for the replacement.
unsigned long convert(NS_QUORCORBA::TEName*, globaldefs::NVSList_T&) asm(
    "__real__ZN12NS_QUORCORBA6TEName11Ems2NmsNameERN10globaldefs9NVSList_TE");
unsigned long convertOrFail(NS_QUORCORBA::TEName*, globaldefs::NVSList_T&) asm(
    "__wrap__ZN12NS_QUORCORBA6TEName11Ems2NmsNameERN10globaldefs9NVSList_TE");

unsigned long convertOrFail(NS_QUORCORBA::TEName* self, globaldefs::NVSList_T& name) {
  ++conversions;
  return conversionResult != 0 ? conversionResult : convert(self, name);
}

namespace zk::test {
namespace {

TEST(AdapterEmsFailure, returnsTheConversionsCodeAndTouchesNothing) {
  for (const unsigned long result : {0x411800BDUL, 1UL, 0xFFFFFFFFFFFFFFFFUL}) {
    conversions = 0;
    conversionResult = result;
    emsMgr::EMS_T ems = filledEms();
    EXPECT_EQ(NS_QUORCORBA::CAMOAdapter::AdapterEms(ems), result);
    EXPECT_EQ(conversions, 1);
    EXPECT_EQ(recordText(ems), recordText(filledEms()));
  }
}

TEST(AdapterEmsFailure, isOverWhenTheNameConvertsAgain) {
  conversionResult = 0;
  emsMgr::EMS_T ems = filledEms();
  EXPECT_EQ(NS_QUORCORBA::CAMOAdapter::AdapterEms(ems), 0U);
  EXPECT_STREQ(ems.owner.in(), "Veltra");
}

}  // namespace
}  // namespace zk::test
