#include "agent/tmf/names.h"

#include <gtest/gtest.h>

#include "tests/agent/support/names.h"
#include "tests/agent/support/refusals.h"
#include "zk_quornex/names/aidname.h"
#include "zk_quornex/names/mapname.h"
#include "zk_quornex/names/tename.h"

namespace {

using namespace zk::agent;
using zk::test::dump;
using zk::test::named;
using zk::test::nameOf;
using zk::test::refusalBy;
using zk::test::refusalTypeBy;

struct Accepted {
  const char* text;
  long id;
};

const Accepted ACCEPTED[] = {
    {"1", 1}, {"7", 7}, {" 12 ", 12}, {"007", 7}, {"2147483647", 2147483647}};

TEST(Names, readElementIdentifiers) {
  for (const Accepted& row : ACCEPTED) {
    EXPECT_EQ(readDeviceId(named("ManagedElement", row.text)), row.id) << row.text;
  }
}

// Identifiers that are well formed and that no element can have: the library
// would read the larger ones as another element's.
TEST(Names, findNoElementUnderIdentifiersThatTheLibraryCuts) {
  for (const char* text : {"0", "00", "2147483648", "4294967295", "4294967296", "4294967303",
                           "99999999999", "18446744073709551623", "99999999999999999999999999"}) {
    EXPECT_EQ(refusalTypeBy([&] { readDeviceId(named("ManagedElement", text)); }),
              "ENTITY_NOT_FOUND")
        << text;
  }
}

TEST(Names, refuseIdentifiersThatAreNoNumber) {
  for (const char* text : {"", " ", "12a", "-1", "+1", "0x7", "1 2", "7\n8"}) {
    EXPECT_EQ(refusalTypeBy([&] { readDeviceId(named("ManagedElement", text)); }), "INVALID_INPUT")
        << text;
  }
}

TEST(Names, refuseMalformedNames) {
  const globaldefs::NVSList_T names[] = {
      nameOf({}),
      nameOf({{"ManagedElement", "7"}}),
      nameOf({{"ems", "Quor/1"}, {"ManagedElement", "7"}}),
      nameOf({{"EMS", "Quor/1"}, {"MultiLayerSubnetwork", "1"}, {"ManagedElement", "7"}}),
  };
  for (const auto& name : names) {
    EXPECT_EQ(refusalTypeBy([&] { readDeviceId(name); }), "INVALID_INPUT") << dump(name);
  }
}

TEST(Names, findNothingOfAnotherEms) {
  const auto name = nameOf({{"EMS", "Other/2"}, {"ManagedElement", "7"}});
  EXPECT_EQ(refusalBy([&] { readDeviceId(name); }),
            "ENTITY_NOT_FOUND: not an object of this EMS, which is Quor/1: EMS=Other/2, "
            "ManagedElement=7");
}

TEST(Names, refuseNamesOfAnotherKind) {
  EXPECT_EQ(refusalBy([] { readDeviceId(named("TopologicalLink", "7")); }),
            "INVALID_INPUT: expected the name of a ManagedElement: EMS=Quor/1, TopologicalLink=7");
  EXPECT_EQ(refusalTypeBy([] { readLinkId(named("ManagedElement", "7")); }), "INVALID_INPUT");
  EXPECT_EQ(refusalTypeBy([] { readSubnetworkId(nameOf({{"EMS", "Quor/1"}})); }), "INVALID_INPUT");
}

TEST(Names, readTextIdentifiersAsTheyStand) {
  EXPECT_EQ(readLinkId(named("TopologicalLink", " 5 ")), " 5 ");
  EXPECT_EQ(readSubnetworkId(named("MultiLayerSubnetwork", "1")), "1");
}

TEST(Names, findNoOtherSubnetwork) {
  EXPECT_EQ(refusalBy([] { readSubnetworkId(named("MultiLayerSubnetwork", "2")); }),
            "ENTITY_NOT_FOUND: no such subnetwork: EMS=Quor/1, MultiLayerSubnetwork=2");
}

TEST(Names, writeWhatTheyRead) {
  EXPECT_EQ(dump(nmsNameOf(ObjectKey::device(7))), "EMS=Quor/1|ManagedElement=7");
  EXPECT_EQ(dump(nmsNameOf(ObjectKey::link("5"))), "EMS=Quor/1|TopologicalLink=5");
  EXPECT_EQ(dump(nmsNameOf(ObjectKey::subnetwork("1"))), "EMS=Quor/1|MultiLayerSubnetwork=1");
  EXPECT_EQ(dump(nmsNameOf(LinkEnd{7, "/rack=1/port=2"})),
            "EMS=Quor/1|ManagedElement=7|PTP=/rack=1/port=2");
}

TEST(Names, cannotWriteWhatHasNoIdentifier) {
  EXPECT_EQ(refusalTypeBy([] { nmsNameOf(ObjectKey::device(0)); }), "INTERNAL_ERROR");
  EXPECT_EQ(refusalTypeBy([] { nmsNameOf(ObjectKey::link("")); }), "INTERNAL_ERROR");
}

TEST(Names, giveTheEmsItsKeys) {
  EXPECT_EQ(readKey(nameOf({{"EMS", "Quor/1"}})), ObjectKey::ems());
  EXPECT_EQ(readKey(named("ManagedElement", "7")), ObjectKey::device(7));
  EXPECT_EQ(readKey(named("MultiLayerSubnetwork", "1")), ObjectKey::subnetwork("1"));
  EXPECT_EQ(readKey(named("TopologicalLink", "5")), ObjectKey::link("5"));
}

TEST(Names, giveTheEmsItsTextsForTheParentsOfMapObjects) {
  const auto keyOf = [](const char* parent) {
    NS_QUORCORBA::CASubMapName name;
    name.id_ = "5";
    name.parentId_ = parent;
    return keyOfName(name);
  };
  const auto inside = [](const char* parent) {
    return ObjectKey{ObjectKind::SUB_MAP, "5", parent};
  };
  EXPECT_EQ(keyOf("AllSubMap"), inside(""));
  EXPECT_EQ(keyOf("AllSubmap"), inside(""));
  EXPECT_EQ(keyOf("VTMAP_PHY_SUBMAP"), inside("/"));
  EXPECT_EQ(keyOf(""), inside(""));
  EXPECT_EQ(keyOf("allsubmap"), inside("allsubmap"));
  EXPECT_EQ(keyOf("7"), inside("7"));
}

TEST(Names, sayWhichIdsMapObjectsCanHave) {
  for (const char* id : {"", "7", "a b", "allsubmap", "?"}) {
    EXPECT_TRUE(canNameMapObject(id)) << id;
  }
  for (const char* id : {"a/b", "a=b", "/", "AllSubMap", "AllSubmap", "VTMAP_PHY_SUBMAP"}) {
    EXPECT_FALSE(canNameMapObject(id)) << id;
  }
}

TEST(Names, haveNoKeyForKindsWithoutAttributes) {
  const NS_QUORCORBA::CAAIDName aid;
  EXPECT_EQ(refusalTypeBy([&] { keyOfName(aid); }), "NOT_IMPLEMENTED");
}

}  // namespace
