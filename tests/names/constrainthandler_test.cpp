// Names from outside in a process that ends when a bounds-checked function finds a
// constraint violated.
#include <gtest/gtest.h>
#include <safeclib/safe_str_lib.h>

#include "tests/names/names.h"

namespace zk::test {
namespace {

using namespace NS_QUORCORBA;

class AbortingHandler : public testing::Test {
 protected:
  AbortingHandler() { set_str_constraint_handler_s(&abort_handler_s); }
  ~AbortingHandler() override { set_str_constraint_handler_s(nullptr); }

  FixedEmsConfig config_;
};

TEST_F(AbortingHandler, isNotCalledForAWrappedId) {
  TEMEName name;
  ASSERT_EQ(name.Nms2EmsName(makeName({{"EMS", "Quor/1"}, {"ManagedElement", "4294967295"}})), OK);
  globaldefs::NVSList_T list;
  EXPECT_EQ(name.Ems2NmsName(list), EMPTY_NAME);
  EXPECT_EQ(list.length(), 2U);
}

TEST_F(AbortingHandler, isNotCalledAtTheLimitsOfAnIdsText) {
  TEMEName name;
  globaldefs::NVSList_T list;
  name.meId_ = 99999999999;
  EXPECT_EQ(name.Ems2NmsName(list), OK);
  EXPECT_STREQ(list[1].value, "99999999999");
  name.meId_ = 100000000000;
  EXPECT_EQ(name.Ems2NmsName(list), EMPTY_NAME);
}

TEST_F(AbortingHandler, isNotCalledForTextsOfAnyLength) {
  CAAIDName name;
  for (const std::size_t length : {0U, 1U, 245U, 246U, 5000U}) {
    const std::string text(length, '1');
    name.SetStrIDs(text.c_str());
    name.Nms2EmsName(makeName({{"EMS", "Quor/1"}, {"ManagedElement", "7"}, {"AID", text.c_str()}}));
  }
  SUCCEED();
}

}  // namespace
}  // namespace zk::test
