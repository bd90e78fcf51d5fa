// The record that describes the EMS to the NMS.
#include <gtest/gtest.h>

#include "tests/mo/recordtext.h"
#include "tests/support/doubles.h"
#include "zk_quornex/mo/moadapter.h"

namespace zk::test {
namespace {

using NS_QUORCORBA::CAMOAdapter;

TEST(AdapterEms, fillsAnEmptyRecord) {
  FixedEmsConfig config;
  emsMgr::EMS_T ems;
  EXPECT_EQ(CAMOAdapter::AdapterEms(ems), 0U);
  EXPECT_EQ(recordText(ems),
            "name EMS=Quor/1\nuserLabel Quor\nnativeEMSName Quor/1\nowner Veltra\n"
            "emsVersion 4.2\ntype Veltra/Quor\nadditionalInfo \n");
}

TEST(AdapterEms, replacesAllButAdditionalInfo) {
  FixedEmsConfig config;
  emsMgr::EMS_T ems = filledEms();
  EXPECT_EQ(CAMOAdapter::AdapterEms(ems), 0U);
  EXPECT_EQ(recordText(ems),
            "name EMS=Quor/1\nuserLabel Quor\nnativeEMSName Quor/1\nowner Veltra\n"
            "emsVersion 4.2\ntype Veltra/Quor\nadditionalInfo Kept=yes\n");
}

TEST(AdapterEms, reportsMakerAndLabelWhateverTheEmsIsCalled) {
  FixedEmsConfig config;
  config.emsName = "Another/EMS 9";
  config.emsVersion = "";
  emsMgr::EMS_T ems;
  EXPECT_EQ(CAMOAdapter::AdapterEms(ems), 0U);
  EXPECT_EQ(recordText(ems),
            "name EMS=Another/EMS 9\nuserLabel Quor\nnativeEMSName Another/EMS 9\nowner Veltra\n"
            "emsVersion \ntype Veltra/Quor\nadditionalInfo \n");
}

TEST(AdapterEms, readsTheConfigurationEachTime) {
  FixedEmsConfig config;
  emsMgr::EMS_T ems;
  CAMOAdapter::AdapterEms(ems);
  config.emsName = "Quor/2";
  config.emsVersion = "5.0";
  EXPECT_EQ(CAMOAdapter::AdapterEms(ems), 0U);
  EXPECT_EQ(dumpName(ems.name), "EMS=Quor/2");
  EXPECT_STREQ(ems.nativeEMSName.in(), "Quor/2");
  EXPECT_STREQ(ems.emsVersion.in(), "5.0");
}

}  // namespace
}  // namespace zk::test
