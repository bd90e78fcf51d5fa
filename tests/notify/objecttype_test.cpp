// Which TMF 814 object type and qualifier each kind of name is reported under.
#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <string>

#include "zk_quornex/names/mapname.h"
#include "zk_quornex/notify/notification.h"

namespace zk::test {
namespace {

using NS_QUORCORBA::TANotification;
using NS_QUORCORBA::TEName;

constexpr unsigned int NO_OBJECT_TYPE = 0x41180053;

struct Mapped {
  int objectType;
  std::string qualifier;
};

const std::map<int, Mapped> MAPPED = {
    {0, {0, "EMS"}},
    {1, {1, "ManagedElement"}},
    {2, {2, "MultiLayerSubnetwork"}},
    {3, {3, "TopologicalLink"}},
    {4, {4, "SubnetworkConnection"}},
    {5, {5, "PTP"}},
    {6, {6, "CTP"}},
    {10, {10, "PGP"}},
    {12, {12, "AID"}},
    {16, {12, "NODE"}},
    {17, {12, "SUBMAP"}},
    {19, {12, "PHYSICALLINK"}},
    {20, {12, "DN"}},
};

TEName nameOfType(int type) {
  TEName name;
  name.type_ = type;
  return name;
}

void expectNoObjectType(TEName* name) {
  notifications::ObjectType_T objectType = notifications::OT_TRAFFIC_DESCRIPTOR;
  std::string qualifier = "left over";
  EXPECT_EQ(TANotification::GetOjectType(name, objectType, qualifier), NO_OBJECT_TYPE);
  EXPECT_EQ(objectType, notifications::OT_TRAFFIC_DESCRIPTOR);
  EXPECT_EQ(qualifier, "");
}

TEST(ObjectType, mapsEachKindOfName) {
  for (const auto& [type, mapped] : MAPPED) {
    SCOPED_TRACE(type);
    TEName name = nameOfType(type);
    notifications::ObjectType_T objectType = notifications::OT_TRAFFIC_DESCRIPTOR;
    std::string qualifier = "left over";
    EXPECT_EQ(TANotification::GetOjectType(&name, objectType, qualifier), 0U);
    EXPECT_EQ(static_cast<int>(objectType), mapped.objectType);
    EXPECT_EQ(qualifier, mapped.qualifier);
  }
}

TEST(ObjectType, refusesKindsWithoutObjectType) {
  for (int type = -5; type <= 30; ++type) {
    if (MAPPED.count(type) == 0) {
      SCOPED_TRACE(type);
      TEName name = nameOfType(type);
      expectNoObjectType(&name);
    }
  }
}

TEST(ObjectType, refusesCodesAtTheEndsOfTheRange) {
  for (const int type : {std::numeric_limits<int>::min(), std::numeric_limits<int>::max(), 256,
                         0x10000, 0x01000001}) {
    SCOPED_TRACE(type);
    TEName name = nameOfType(type);
    expectNoObjectType(&name);
  }
}

TEST(ObjectType, refusesNullNameAndClearsQualifier) { expectNoObjectType(nullptr); }

TEST(ObjectType, readsTheCodeNotTheClass) {
  NS_QUORCORBA::CADispLinkName displayLink;
  expectNoObjectType(&displayLink);
  displayLink.type_ = NS_QUORCORBA::NAME_PGP;
  notifications::ObjectType_T objectType = notifications::OT_EMS;
  std::string qualifier;
  EXPECT_EQ(TANotification::GetOjectType(&displayLink, objectType, qualifier), 0U);
  EXPECT_EQ(objectType, notifications::OT_PROTECTION_GROUP);
  EXPECT_EQ(qualifier, "PGP");
}

TEST(ObjectType, leavesTheNameAsItWas) {
  NS_QUORCORBA::TEMEName name;
  name.meId_ = 7;
  notifications::ObjectType_T objectType = notifications::OT_EMS;
  std::string qualifier;
  EXPECT_EQ(TANotification::GetOjectType(&name, objectType, qualifier), 0U);
  EXPECT_EQ(name.type_, 1);
  EXPECT_EQ(name.meId_, 7U);
  EXPECT_EQ(name.emsName_, TEName().emsName_);
}

}  // namespace
}  // namespace zk::test
