// The record that describes one device to the NMS as a managed element.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "tests/mo/recordtext.h"
#include "tests/support/journal.h"
#include "zk_quornex/mo/moadapter.h"

namespace zk::test {
namespace {

using NS_QUORCORBA::CAMOAdapter;
using testing::ElementsAre;

constexpr unsigned long CANNOT_BE_WRITTEN = 0x411800BD;

class AdapterMe : public testing::Test {
 protected:
  unsigned long adapt(long id) {
    device.id = id;
    return CAMOAdapter::AdapterMe(device, me);
  }

  FixedEmsConfig config;
  Journal journal;
  JournalEms backend{journal};
  Device device{7, "NE north", "X-9000"};
  managedElement::ManagedElement_T me = filledMe();
  const std::string before = recordText(me);
};

TEST_F(AdapterMe, replacesAllButAdditionalInfo) {
  EXPECT_EQ(adapt(7), 0U);
  EXPECT_EQ(recordText(me),
            "name EMS=Quor/1|ManagedElement=7\nuserLabel NE north\nnativeEMSName NE north\n"
            "owner Veltra\nlocation Hall 3, row 12\nversion V100R002\nproductName X-9000\n"
            "communicationState 0\nemsInSyncState true\nsupportedRates 0\n"
            "additionalInfo Kept=yes\n");
}

TEST_F(AdapterMe, fillsAnEmptyRecord) {
  me = managedElement::ManagedElement_T();
  EXPECT_EQ(adapt(2147483647), 0U);
  EXPECT_EQ(recordText(me),
            "name EMS=Quor/1|ManagedElement=2147483647\nuserLabel NE north\n"
            "nativeEMSName NE north\nowner Veltra\nlocation Hall 3, row 12\nversion V100R002\n"
            "productName X-9000\ncommunicationState 0\nemsInSyncState true\nsupportedRates 0\n"
            "additionalInfo \n");
}

TEST_F(AdapterMe, takesEmptyTextsAsTheyAre) {
  device.name = "";
  device.productName = "";
  backend.version = "";
  backend.location = "";
  EXPECT_EQ(adapt(7), 0U);
  EXPECT_EQ(recordText(me),
            "name EMS=Quor/1|ManagedElement=7\nuserLabel \nnativeEMSName \nowner Veltra\n"
            "location \nversion \nproductName \ncommunicationState 0\nemsInSyncState true\n"
            "supportedRates 0\nadditionalInfo Kept=yes\n");
}

TEST_F(AdapterMe, ownsEveryDeviceByTheMaker) {
  device.name = "3000";
  device.productName = "3000";
  EXPECT_EQ(adapt(3000), 0U);
  EXPECT_STREQ(me.owner.in(), "Veltra");
}

TEST_F(AdapterMe, asksForTheVersionThenTheLocation) {
  adapt(7);
  EXPECT_THAT(journal, ElementsAre("getVersionOfDev 7", "getLocationOfDev 7"));
}

TEST_F(AdapterMe, leavesTheDeviceAsItWas) {
  adapt(7);
  EXPECT_EQ(device.id, 7);
  EXPECT_EQ(device.name, "NE north");
  EXPECT_EQ(device.productName, "X-9000");
}

TEST_F(AdapterMe, asksForTheVersionByTheLow32Bits) {
  EXPECT_EQ(adapt(4294967303), 0U);
  EXPECT_THAT(journal, ElementsAre("getVersionOfDev 7", "getLocationOfDev 4294967303"));
  EXPECT_EQ(dumpName(me.name), "EMS=Quor/1|ManagedElement=4294967303");
}

TEST_F(AdapterMe, asksForTheVersionByANegativeIdAbove31Bits) {
  EXPECT_EQ(adapt(2147483648), 0U);
  EXPECT_THAT(journal, ElementsAre("getVersionOfDev -2147483648", "getLocationOfDev 2147483648"));
}

TEST_F(AdapterMe, writesIdsOfElevenDigits) {
  EXPECT_EQ(adapt(99999999999), 0U);
  EXPECT_EQ(dumpName(me.name), "EMS=Quor/1|ManagedElement=99999999999");
}

TEST_F(AdapterMe, stopsAtTheVersion) {
  for (const unsigned long result : {5UL, 0x41180001UL, 0xFFFFFFFFFFFFFFFFUL, 0x100000000UL}) {
    journal.clear();
    backend.versionResult = result;
    EXPECT_EQ(adapt(7), result);
    EXPECT_THAT(journal, ElementsAre("getVersionOfDev 7"));
    EXPECT_EQ(recordText(me), before);
  }
}

TEST_F(AdapterMe, stopsAtTheLocation) {
  for (const unsigned long result : {5UL, 0x41180001UL, 0xFFFFFFFFFFFFFFFFUL, 0x100000000UL}) {
    journal.clear();
    backend.locationResult = result;
    EXPECT_EQ(adapt(7), result);
    EXPECT_THAT(journal, ElementsAre("getVersionOfDev 7", "getLocationOfDev 7"));
    EXPECT_EQ(recordText(me), before);
  }
}

TEST_F(AdapterMe, returnsTheVersionsCodeWhenBothFail) {
  backend.versionResult = 5;
  backend.locationResult = 6;
  EXPECT_EQ(adapt(0), 5U);
}

TEST_F(AdapterMe, refusesIdZeroOnlyAfterAsking) {
  EXPECT_EQ(adapt(0), CANNOT_BE_WRITTEN);
  EXPECT_THAT(journal, ElementsAre("getVersionOfDev 0", "getLocationOfDev 0"));
  EXPECT_EQ(recordText(me), before);
}

// The name is then partly written; nothing else may be.
TEST_F(AdapterMe, keepsTheOtherMembersWhenTheIdIsTooLong) {
  for (const long id :
       {100000000000L, -1L, std::numeric_limits<long>::min(), std::numeric_limits<long>::max()}) {
    me = filledMe();
    EXPECT_EQ(adapt(id), CANNOT_BE_WRITTEN) << id;
    me.name = filledMe().name;
    EXPECT_EQ(recordText(me), before) << id;
  }
}

TEST_F(AdapterMe, asksForBothBeforeATooLongIdFails) {
  adapt(100000000000);
  EXPECT_THAT(journal, ElementsAre("getVersionOfDev 1215752192", "getLocationOfDev 100000000000"));
}

TEST_F(AdapterMe, tracesNothing) {
  CapturedTrace trace;
  adapt(7);
  adapt(0);
  backend.versionResult = 5;
  adapt(7);
  EXPECT_THAT(trace.texts(), testing::IsEmpty());
}

}  // namespace
}  // namespace zk::test
