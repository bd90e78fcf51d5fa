// Names of generated fields, written and read back: the same fields return
// wherever a class promises it, and every place where one does not is here too.
#include <gtest/gtest.h>

#include <cstdint>
#include <random>

#include "tests/names/names.h"

namespace zk::test {

namespace {

using namespace NS_QUORCORBA;
using globaldefs::NVSList_T;

constexpr int ROUNDS = 20000;

// Writes the name and reads it into a fresh object of the same class. Gives that
// object's fields, or the code of the step that failed.
template <class Name>
std::string thereAndBack(Name name) {
  NVSList_T list;
  unsigned long code = name.Ems2NmsName(list);
  if (code != OK) {
    return "not written " + std::to_string(code);
  }
  Name back;
  code = back.Nms2EmsName(list);
  return code == OK ? describe(back) : "not read " + std::to_string(code);
}

// The same from the NMS's side: reads the value and writes it again.
template <class Name>
std::string backAndThere(const char* pairName, const char* value) {
  Name name;
  EXPECT_EQ(name.Nms2EmsName(named(pairName, value)), OK) << value;
  NVSList_T list;
  EXPECT_EQ(name.Ems2NmsName(list), OK) << value;
  return list[1].value.in();
}

template <class Name>
Name mapObject(const std::string& parentId, const std::string& id) {
  Name name;
  name.parentId_ = parentId;
  name.id_ = id;
  return name;
}

class RoundTrip : public testing::Test {
 protected:
  // 1 to 12 characters of the alphabet.
  std::string text(const std::string& alphabet) {
    std::string result(1 + random_() % 12, ' ');
    for (char& character : result) {
      character = alphabet[random_() % alphabet.size()];
    }
    return result;
  }

  // A text that a layer of a path keeps: no slash, no blank at the end.
  std::string layerText() {
    std::string result = text("aZ09=.-_% \t\xC3\xA4");
    result.back() = result.back() == ' ' ? 'x' : result.back();
    return result;
  }

  FixedEmsConfig config_;
  std::mt19937 random_{20121120};
};

TEST_F(RoundTrip, keepsANodesFields) {
  for (int i = 0; i < ROUNDS; ++i) {
    const auto name = mapObject<CANodeName>(layerText(), layerText());
    ASSERT_EQ(thereAndBack(name), describe(name)) << i;
  }
}

TEST_F(RoundTrip, keepsADisplayLinksFields) {
  for (int i = 0; i < ROUNDS; ++i) {
    const auto name = mapObject<CADispLinkName>(layerText(), layerText());
    ASSERT_EQ(thereAndBack(name), describe(name)) << i;
  }
}

TEST_F(RoundTrip, keepsASubmapsFields) {
  for (int i = 0; i < ROUNDS; ++i) {
    const auto name = mapObject<CASubMapName>(text("aZ09=.-_% \t\xC3\xA4"), text("aZ09=./-_% \t"));
    ASSERT_EQ(thereAndBack(name), describe(name)) << i;
  }
}

TEST_F(RoundTrip, keepsAPhysicalLinksId) {
  for (int i = 0; i < ROUNDS; ++i) {
    CAPhyLinkName name;
    name.id_ = text("aZ09=./-_% \t\xC3\xA4");
    ASSERT_EQ(thereAndBack(name), describe(name)) << i;
  }
}

TEST_F(RoundTrip, keepsATopologicalLinksId) {
  for (int i = 0; i < ROUNDS; ++i) {
    TETopoLinkName name;
    name.topoLinkId_ = text("aZ09=./-_% \t\xC3\xA4");
    ASSERT_EQ(thereAndBack(name), describe(name)) << i;
  }
}

TEST_F(RoundTrip, keepsTheNumbersAndTheTypeOfAnAid) {
  for (int i = 0; i < ROUNDS; ++i) {
    CAAIDName name;
    name.type_ = random_() % 2 == 0 ? NAME_AID : NAME_DN;
    name.ids_.push_back(static_cast<long>(random_()));
    for (unsigned long more = random_() % 10; more > 0; --more) {
      const auto wide = static_cast<long>(std::uint64_t{random_()} << 32 | random_());
      name.ids_.push_back(random_() % 2 == 0 ? wide : wide % 100);
    }
    ASSERT_EQ(thereAndBack(name), describe(name)) << i;
  }
}

TEST_F(RoundTrip, keepsANameAlreadyInItsWrittenForm) {
  for (const char* value : {"/parentid=3/id=17", "/parentid=AllSubMap/id=17"}) {
    EXPECT_EQ(backAndThere<CANodeName>("Node", value), value);
    EXPECT_EQ(backAndThere<CADispLinkName>("DisplayLink", value), value);
    EXPECT_EQ(backAndThere<CASubMapName>("SubMap", value), value);
  }
}

// From here on: what does not come back as it went.

TEST_F(RoundTrip, turnsANodesMissingParentIntoTheDefault) {
  EXPECT_EQ(thereAndBack(mapObject<CANodeName>("", "17")), "16 Quor/1 id=17 parent=AllSubMap");
  EXPECT_EQ(backAndThere<CANodeName>("Node", "/id=17"), "/parentid=AllSubMap/id=17");
}

TEST_F(RoundTrip, turnsASubmapsMissingParentIntoTheDefault) {
  EXPECT_EQ(thereAndBack(mapObject<CASubMapName>("", "17")), "17 Quor/1 id=17 parent=AllSubmap");
}

TEST_F(RoundTrip, keepsADefaultParentAsAText) {
  EXPECT_EQ(thereAndBack(mapObject<CANodeName>("AllSubmap", "17")),
            "16 Quor/1 id=17 parent=AllSubmap");
  EXPECT_EQ(thereAndBack(mapObject<CASubMapName>("AllSubMap", "17")),
            "17 Quor/1 id=17 parent=AllSubMap");
}

TEST_F(RoundTrip, refusesToWriteADisplayLinkWithoutAParent) {
  EXPECT_EQ(thereAndBack(mapObject<CADispLinkName>("", "17")),
            "not written " + std::to_string(EMPTY_NAME));
}

TEST_F(RoundTrip, turnsThePhysicalRootSubmapIntoASlash) {
  EXPECT_EQ(thereAndBack(mapObject<CASubMapName>("0", "VTMAP_PHY_SUBMAP")),
            "17 Quor/1 id=/ parent=0");
  EXPECT_EQ(backAndThere<CASubMapName>("SubMap", "/parentid=0/id=VTMAP_PHY_SUBMAP"),
            "/parentid=0/id=/");
  EXPECT_EQ(thereAndBack(mapObject<CASubMapName>("0", "/")), "17 Quor/1 id=/ parent=0");
}

TEST_F(RoundTrip, keepsThePhysicalRootsTextForEveryOtherKind) {
  EXPECT_EQ(thereAndBack(mapObject<CANodeName>("VTMAP_PHY_SUBMAP", "VTMAP_PHY_SUBMAP")),
            "16 Quor/1 id=VTMAP_PHY_SUBMAP parent=VTMAP_PHY_SUBMAP");
  EXPECT_EQ(thereAndBack(mapObject<CASubMapName>("VTMAP_PHY_SUBMAP", "1")),
            "17 Quor/1 id=1 parent=VTMAP_PHY_SUBMAP");
}

TEST_F(RoundTrip, losesTheBlanksAtTheEndOfANodesLayers) {
  EXPECT_EQ(thereAndBack(mapObject<CANodeName>("3 ", " 17  ")), "16 Quor/1 id= 17 parent=3");
  EXPECT_EQ(thereAndBack(mapObject<CADispLinkName>("3 ", " 17  ")), "18 Quor/1 id= 17 parent=3");
  EXPECT_EQ(thereAndBack(mapObject<CANodeName>("3", " ")), "not read " + std::to_string(BAD_NAME));
  EXPECT_EQ(thereAndBack(mapObject<CANodeName>(" ", "17")), "16 Quor/1 id=17 parent=");
  EXPECT_EQ(thereAndBack(mapObject<CADispLinkName>(" ", "17")),
            "not read " + std::to_string(BAD_NAME));
}

TEST_F(RoundTrip, readsASlashInANodesFieldsAsTheNextLayer) {
  EXPECT_EQ(thereAndBack(mapObject<CANodeName>("3", "a/b")), "16 Quor/1 id=a parent=3");
  EXPECT_EQ(thereAndBack(mapObject<CANodeName>("3/id=5", "17")), "16 Quor/1 id=5 parent=3");
  EXPECT_EQ(thereAndBack(mapObject<CADispLinkName>("3/id=5", "17")), "18 Quor/1 id=5 parent=3");
  EXPECT_EQ(thereAndBack(mapObject<CANodeName>("3", "/")), "not read " + std::to_string(BAD_NAME));
  EXPECT_EQ(thereAndBack(mapObject<CANodeName>("/", "17")), "not read " + std::to_string(BAD_NAME));
}

TEST_F(RoundTrip, cutsASubmapsParentAtItsFirstSlash) {
  EXPECT_EQ(thereAndBack(mapObject<CASubMapName>("a/b", "17")), "17 Quor/1 id=17 parent=a");
  EXPECT_EQ(thereAndBack(mapObject<CASubMapName>("a/b=c", "17")), "17 Quor/1 id=c/id=17 parent=a");
  EXPECT_EQ(thereAndBack(mapObject<CASubMapName>("/", "17")),
            "not read " + std::to_string(BAD_NAME));
}

TEST_F(RoundTrip, writesKeysAndOrderOfItsOwn) {
  EXPECT_EQ(backAndThere<CASubMapName>("SubMap", "/3/8"), "/parentid=3/id=8");
  EXPECT_EQ(backAndThere<CASubMapName>("SubMap", "/x=5/y=9"), "/parentid=5/id=9");
  EXPECT_EQ(backAndThere<CANodeName>("Node", "/x=1/id=17/parentid=3/id=18"), "/parentid=3/id=17");
  EXPECT_EQ(backAndThere<CADispLinkName>("DisplayLink", "/ id=17/ parentid=3/y"),
            "/parentid=3/id=17");
}

TEST_F(RoundTrip, isRefusedForAnObjectOfAnotherEms) {
  auto node = mapObject<CANodeName>("3", "17");
  node.emsName_ = "other";
  EXPECT_EQ(thereAndBack(node), "not read " + std::to_string(OTHER_EMS));
  TEMEName element;
  element.meId_ = 7;
  element.emsName_.clear();
  EXPECT_EQ(thereAndBack(element), "not read " + std::to_string(OTHER_EMS));
}

TEST_F(RoundTrip, replacesTheEmsOfKindsThatAskTheConfiguration) {
  CAPhyLinkName link;
  link.id_ = "42";
  link.emsName_ = "other";
  EXPECT_EQ(thereAndBack(link), "19 Quor/1 id=42");
  CAAIDName inside;
  inside.ids_ = {7};
  inside.emsName_ = "other";
  EXPECT_EQ(thereAndBack(inside), "12 Quor/1 ids=7");
}

TEST_F(RoundTrip, refusesASubnetworkThatIsNotTheOne) {
  TESubnetworkName name;
  EXPECT_EQ(thereAndBack(name), "2 Quor/1 subnet=1");
  name.subnetId_ = "2";
  EXPECT_EQ(thereAndBack(name), "not read " + std::to_string(SUBNETWORK_REFUSED));
}

TEST_F(RoundTrip, cutsAnElementsIdToItsLow32Bits) {
  TEMEName name;
  name.meId_ = 4294967303;
  EXPECT_EQ(thereAndBack(name), "1 Quor/1 me=7");
  name.meId_ = 4294967296;
  EXPECT_EQ(thereAndBack(name), "not read " + std::to_string(NO_ELEMENT_ID));
  name.meId_ = 2147483648;
  EXPECT_EQ(thereAndBack(name), "1 Quor/1 me=18446744071562067968");
}

TEST_F(RoundTrip, refusesAnAidWhoseElementIsNegative) {
  CAAIDName name;
  name.ids_ = {-1, 3};
  EXPECT_EQ(thereAndBack(name), "not read " + std::to_string(BAD_NAME));
  ASSERT_EQ(name.Nms2EmsName(named("ManagedElement", "4294967295")), OK);
  EXPECT_EQ(thereAndBack(name), "not read " + std::to_string(BAD_NAME));
}

TEST_F(RoundTrip, turnsEveryOtherTypeIntoADn) {
  CAAIDName name;
  name.ids_ = {7};
  name.type_ = 0;
  EXPECT_EQ(thereAndBack(name), "20 Quor/1 ids=7");
}

TEST_F(RoundTrip, cutsALongAidAt245Characters) {
  CAAIDName name;
  name.ids_.assign(124, 1);  // 247 characters
  CAAIDName expected;
  expected.ids_.assign(123, 1);
  EXPECT_EQ(thereAndBack(name), describe(expected));
  EXPECT_EQ(thereAndBack(expected), describe(expected));
}

}  // namespace

}  // namespace zk::test
