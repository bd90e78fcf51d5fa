// What the record of the EMS keeps when the EMS's name cannot be written. The
// conversion that the adapter calls is this file's: see CMakeLists.txt.
#include <gtest/gtest.h>

#include "mo/moadapter.h"
#include "names/nameconvert.h"
#include "tests/mo/recordtext.h"

namespace {

unsigned long conversionResult = 0;
int conversions = 0;

}  // namespace

extern "C" {

// Under these names the linker looks for the replacement and keeps the original.
unsigned long __real__ZN12NS_QUORCORBA6TEName11Ems2NmsNameERN10globaldefs9NVSList_TE(
    NS_QUORCORBA::TEName*, globaldefs::NVSList_T&);
unsigned long __wrap__ZN12NS_QUORCORBA6TEName11Ems2NmsNameERN10globaldefs9NVSList_TE(
    NS_QUORCORBA::TEName* self, globaldefs::NVSList_T& name) {
  ++conversions;
  return conversionResult != 0
             ? conversionResult
             : __real__ZN12NS_QUORCORBA6TEName11Ems2NmsNameERN10globaldefs9NVSList_TE(self, name);
}
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
