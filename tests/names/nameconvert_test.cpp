// The converter's two entries: which class the last pair chooses, and what the
// caller's pointer and list hold afterwards.
#include "zk_quornex/names/nameconvert.h"

#include <gtest/gtest.h>

#include <type_traits>
#include <typeinfo>

#include "tests/names/names.h"

namespace zk::test {

namespace {

using namespace NS_QUORCORBA;
using globaldefs::NVSList_T;

class NameConvert : public testing::Test {
 protected:
  // Converts with a pointer that was not null before.
  unsigned long convert(const NVSList_T& list) {
    result_ = &before_;
    const unsigned long code = TENameConvert::NmsToEmsNameConvert(list, result_);
    owned_.reset(result_ == &before_ ? nullptr : result_);
    return code;
  }

  template <class Name>
  void expectMade(const NVSList_T& list, const std::string& fields) {
    EXPECT_EQ(convert(list), OK) << dumpName(list);
    ASSERT_NE(owned_, nullptr) << dumpName(list);
    const TEName& made = *owned_;
    EXPECT_EQ(typeid(made), typeid(Name)) << dumpName(list);
    EXPECT_EQ(describe(made), fields) << dumpName(list);
  }

  void expectNotChosen(const NVSList_T& list) {
    EXPECT_EQ(convert(list), BAD_NAME) << dumpName(list);
    EXPECT_EQ(result_, &before_) << dumpName(list);
  }

  void expectMadeAndFailed(const NVSList_T& list, unsigned long code) {
    EXPECT_EQ(convert(list), code) << dumpName(list);
    EXPECT_EQ(result_, nullptr) << dumpName(list);
  }

  FixedEmsConfig config_;
  TEName before_;
  TEName* result_ = nullptr;
  std::unique_ptr<TEName> owned_;
};

TEST_F(NameConvert, makesTheClassOfTheLastPair) {
  expectMade<TEName>(makeName({{"EMS", "Quor/1"}}), "0 Quor/1");
  expectMade<TEMEName>(named("ManagedElement", "7"), "1 Quor/1 me=7");
  expectMade<TESubnetworkName>(named("MultiLayerSubnetwork", "1"), "2 Quor/1 subnet=1");
  expectMade<TETopoLinkName>(named("TopologicalLink", "5"), "3 Quor/1 link=5");
  expectMade<CASubMapName>(named("SubMap", "/parentid=3/id=8"), "17 Quor/1 id=8 parent=3");
  expectMade<CANodeName>(named("Node", "/parentid=3/id=17"), "16 Quor/1 id=17 parent=3");
  expectMade<CADispLinkName>(named("DisplayLink", "/parentid=3/id=9"), "18 Quor/1 id=9 parent=3");
}

TEST_F(NameConvert, refusesAnEmptyNameUntouched) { expectNotChosen(makeName({})); }

TEST_F(NameConvert, refusesKindsThatOnlyCallersMake) {
  for (const char* last : {"PhysicalLink", "AID", "DN"}) {
    expectNotChosen(makeName({{"EMS", "Quor/1"}, {"ManagedElement", "7"}, {last, "1"}}));
    expectNotChosen(named(last, "1"));
    expectNotChosen(makeName({{last, "1"}}));
  }
}

TEST_F(NameConvert, comparesTheLastPairsNameExactly) {
  for (const char* last :
       {"node", "Submap", "SUBMAP", "ems", "Ems", "EMS ", " EMS", "managedElement",
        "ManagedElements", "MultilayerSubnetwork", "topologicalLink", "Displaylink", "Nod", ""}) {
    expectNotChosen(named(last, "1"));
  }
}

TEST_F(NameConvert, refusesALastPairWithoutAName) {
  NVSList_T list = named("Node", "/id=1");
  list[1].name = static_cast<char*>(nullptr);
  expectNotChosen(list);
}

TEST_F(NameConvert, choosesBeforeItLooksAtTheEms) {
  expectNotChosen(makeName({{"EMS", "other"}, {"PhysicalLink", "1"}}));
}

TEST_F(NameConvert, looksAtTheNameOfTheLastPairAndNotAtItsValue) {
  expectNotChosen(named("1", "ManagedElement"));
}

TEST_F(NameConvert, letsTheChosenClassJudgeThePairsBefore) {
  expectMadeAndFailed(makeName({{"Nothing", "1"}, {"EMS", "Quor/1"}}), BAD_NAME);
  expectMadeAndFailed(makeName({{"EMS", "Quor/1"}, {"EMS", "Quor/1"}}), BAD_NAME);
  expectMadeAndFailed(makeName({{"EMS", "Quor/1"}, {"Node", "/id=1"}, {"ManagedElement", "7"}}),
                      BAD_NAME);
  expectMadeAndFailed(makeName({{"Node", "/id=1"}}), BAD_NAME);
}

TEST_F(NameConvert, nullsTheResultForAnotherEms) {
  expectMadeAndFailed(makeName({{"EMS", "other"}}), OTHER_EMS);
  for (const char* last : {"ManagedElement", "MultiLayerSubnetwork", "TopologicalLink", "SubMap",
                           "Node", "DisplayLink"}) {
    expectMadeAndFailed(makeName({{"EMS", "other"}, {last, "x"}}), OTHER_EMS);
  }
}

TEST_F(NameConvert, passesTheClassesOwnCodeOn) {
  expectMadeAndFailed(named("ManagedElement", "12a"), BAD_NAME);
  expectMadeAndFailed(named("ManagedElement", "0"), NO_ELEMENT_ID);
  expectMadeAndFailed(named("MultiLayerSubnetwork", "2"), SUBNETWORK_REFUSED);
  expectMadeAndFailed(named("TopologicalLink", ""), BAD_NAME);
  expectMadeAndFailed(named("DisplayLink", "/id=17"), BAD_NAME);
}

TEST_F(NameConvert, refusesANullNameWithTheListUntouched) {
  NVSList_T list = makeName({{"a", "1"}, {"b", "2"}, {"c", "3"}});
  EXPECT_EQ(TENameConvert::EmsToNmsNameConvert(nullptr, list), EMPTY_NAME);
  EXPECT_EQ(dumpName(list), "a=1|b=2|c=3");
}

TEST_F(NameConvert, writesTheNameThroughItsOwnClass) {
  TEMEName element;
  element.meId_ = 7;
  NVSList_T list;
  EXPECT_EQ(TENameConvert::EmsToNmsNameConvert(&element, list), OK);
  EXPECT_EQ(dumpName(list), "EMS=Quor/1|ManagedElement=7");
}

TEST_F(NameConvert, writesKindsThatItDoesNotMake) {
  CAPhyLinkName link;
  link.id_ = "42";
  NVSList_T list;
  EXPECT_EQ(TENameConvert::EmsToNmsNameConvert(&link, list), OK);
  EXPECT_EQ(dumpName(list), "EMS=Quor/1|PhysicalLink=42");
  CAAIDName inside;
  inside.ids_ = {7, 3};
  EXPECT_EQ(TENameConvert::EmsToNmsNameConvert(&inside, list), OK);
  EXPECT_EQ(dumpName(list), "EMS=Quor/1|ManagedElement=7|AID=7/3");
}

TEST_F(NameConvert, passesTheWritersCodeOn) {
  TETopoLinkName link;
  NVSList_T list = makeName({{"a", "1"}});
  EXPECT_EQ(TENameConvert::EmsToNmsNameConvert(&link, list), EMPTY_NAME);
  EXPECT_EQ(dumpName(list), "a=1");
}

// Answers with whatever the test wants, for the virtual call.
class FixedAnswer : public TEName {
 public:
  unsigned long Ems2NmsName(NVSList_T&) override { return 77; }
};

TEST_F(NameConvert, callsASubclassOutsideTheLibraryThroughTheVirtualTable) {
  FixedAnswer name;
  NVSList_T list;
  EXPECT_EQ(TENameConvert::EmsToNmsNameConvert(&name, list), 77UL);
}

static_assert(std::is_empty_v<TENameConvert>, "the converter has no state");
static_assert(!std::is_polymorphic_v<TENameConvert>);

}  // namespace

}  // namespace zk::test
