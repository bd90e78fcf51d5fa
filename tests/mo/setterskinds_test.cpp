// Setting an attribute of each kind of object, by its converted name and by the
// NMS's.
#include <memory>

#include "tests/mo/setters.h"
#include "zk_quornex/names/aidname.h"
#include "zk_quornex/names/mapname.h"

namespace zk::test {
namespace {

using namespace NS_QUORCORBA;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr unsigned long NOT_SUPPORTED = 0x41180032;
constexpr unsigned long NULL_ARGUMENT = 0x4118005F;

// The name and the qualifier that the one notification told, or "nothing".
std::string told(const JournalPusher& pusher) {
  if (pusher.pushed.empty()) {
    return "nothing";
  }
  const auto& properties = pusher.pushed.at(0).filterable_data;
  return dumpAny(properties[1].value) + " " + dumpAny(properties[3].value);
}

class SetByKind : public SetterTest {
 protected:
  void expectTold(TEName& name, const std::string& expected) {
    journal.clear();
    pusher.pushed.clear();
    EXPECT_EQ(set(&name, "north"), 0U);
    EXPECT_EQ(journal, reported());
    EXPECT_EQ(told(pusher), expected);
  }

  void expectAcceptedInSilence(TEName& name) {
    journal.clear();
    EXPECT_EQ(set(&name, "north"), 0U);
    EXPECT_THAT(journal, ElementsAre(GetParam().service));
  }

  void expectUnsupported(TEName& name) {
    EXPECT_EQ(set(&name, "north"), NOT_SUPPORTED) << name.type_;
    EXPECT_THAT(journal, IsEmpty()) << name.type_;
  }
};

INSTANTIATE_TEST_SUITE_P(Setter, SetByKind, testing::Values(OWNER, USER_LABEL), setterName);

TEST_P(SetByKind, refusesANullName) {
  TEName* const none = nullptr;
  EXPECT_EQ(set(none, "north"), NULL_ARGUMENT);
  EXPECT_EQ(set(none, nullptr), NULL_ARGUMENT);
  EXPECT_THAT(journal, IsEmpty());
}

TEST_P(SetByKind, setsTheContainmentTree) {
  TEName ems;
  TEMEName element;
  element.meId_ = 7;
  TESubnetworkName subnetwork;
  TETopoLinkName link;
  link.topoLinkId_ = "5";
  expectTold(ems, "NVSList_T:EMS=Quor/1 string:EMS");
  expectTold(element, "NVSList_T:EMS=Quor/1|ManagedElement=7 string:ManagedElement");
  expectTold(subnetwork, "NVSList_T:EMS=Quor/1|MultiLayerSubnetwork=1 string:MultiLayerSubnetwork");
  expectTold(link, "NVSList_T:EMS=Quor/1|TopologicalLink=5 string:TopologicalLink");
}

TEST_P(SetByKind, setsNodesAndSubmaps) {
  CANodeName node;
  node.id_ = "17";
  CASubMapName submap;
  submap.id_ = "4";
  submap.parentId_ = "3";
  expectTold(node, "NVSList_T:EMS=Quor/1|Node=/parentid=AllSubMap/id=17 string:NODE");
  expectTold(submap, "NVSList_T:EMS=Quor/1|SubMap=/parentid=3/id=4 string:SUBMAP");
}

TEST_P(SetByKind, setsDisplayLinksInSilence) {
  CADispLinkName link;
  link.id_ = "17";
  link.parentId_ = "3";
  expectAcceptedInSilence(link);
}

TEST_P(SetByKind, returnsZeroWhenTheNameCannotBeTold) {
  TEMEName element;
  CANodeName node;
  expectAcceptedInSilence(element);
  expectAcceptedInSilence(node);
}

TEST_P(SetByKind, refusesPhysicalLinksAidsAndDns) {
  CAPhyLinkName link;
  link.id_ = "42";
  CAAIDName aid;
  aid.ids_ = {7, 3};
  expectUnsupported(link);
  expectUnsupported(aid);
  aid.type_ = NAME_DN;
  expectUnsupported(aid);
}

TEST_P(SetByKind, refusesEveryOtherCode) {
  TEName name;
  for (int type = 4; type <= 25; ++type) {
    if (type < 16 || type > 18) {
      name.type_ = type;
      expectUnsupported(name);
    }
  }
  name.type_ = -1;
  expectUnsupported(name);
}

TEST_P(SetByKind, refusesTheKindBeforeTheEmsCanRefuse) {
  backend.*GetParam().result = 5;
  CAPhyLinkName link;
  expectUnsupported(link);
}

TEST_P(SetByKind, returnsTheEmssCodeForEveryKind) {
  backend.*GetParam().result = 0x41180077;
  std::vector<std::unique_ptr<TEName>> names;
  names.push_back(std::make_unique<TEName>());
  names.push_back(std::make_unique<TEMEName>());
  names.push_back(std::make_unique<TESubnetworkName>());
  names.push_back(std::make_unique<TETopoLinkName>());
  names.push_back(std::make_unique<CANodeName>());
  names.push_back(std::make_unique<CASubMapName>());
  names.push_back(std::make_unique<CADispLinkName>());
  for (const auto& name : names) {
    journal.clear();
    EXPECT_EQ(set(name.get(), "north"), 0x41180077U);
    EXPECT_THAT(journal, ElementsAre(GetParam().service));
  }
}

// The length is the NMS entry's check alone.
TEST_P(SetByKind, takesAnyLengthOfText) {
  const std::string text(1000, 'a');
  TEName ems;
  EXPECT_EQ(set(&ems, text.c_str()), 0U);
  EXPECT_EQ(dumpAny(pusher.pushed.at(0).filterable_data[7].value),
            "NVList_T:[" + std::string(GetParam().attribute) + "=string:" + text + "]");
}

TEST_P(SetByKind, leavesTheNameToItsOwner) {
  TEMEName element;
  element.meId_ = 7;
  set(&element, "north");
  EXPECT_EQ(element.meId_, 7U);
  EXPECT_EQ(element.type_, 1);
  EXPECT_EQ(element.emsName_, "Quor/1");
}

struct Named {
  globaldefs::NVSList_T name;
  std::string told;
};

TEST_P(SetByKind, setsEveryKindThatTheNmsCanName) {
  const std::vector<Named> all{
      {makeName({{"EMS", "Quor/1"}}), "NVSList_T:EMS=Quor/1 string:EMS"},
      {makeName({{"EMS", "Quor/1"}, {"ManagedElement", " 7 "}}),
       "NVSList_T:EMS=Quor/1|ManagedElement=7 string:ManagedElement"},
      {makeName({{"EMS", "Quor/1"}, {"MultiLayerSubnetwork", "1"}}),
       "NVSList_T:EMS=Quor/1|MultiLayerSubnetwork=1 string:MultiLayerSubnetwork"},
      {makeName({{"EMS", "Quor/1"}, {"TopologicalLink", "5"}}),
       "NVSList_T:EMS=Quor/1|TopologicalLink=5 string:TopologicalLink"},
      {makeName({{"EMS", "Quor/1"}, {"Node", "/id=17"}}),
       "NVSList_T:EMS=Quor/1|Node=/parentid=AllSubMap/id=17 string:NODE"},
      {makeName({{"EMS", "Quor/1"}, {"SubMap", "/parentid=0/id=VTMAP_PHY_SUBMAP"}}),
       "NVSList_T:EMS=Quor/1|SubMap=/parentid=0/id=/ string:SUBMAP"},
      {makeName({{"EMS", "Quor/1"}, {"DisplayLink", "/parentid=3/id=17"}}), "nothing"},
      // Read back with a sign, too long to be written again.
      {makeName({{"EMS", "Quor/1"}, {"ManagedElement", "2147483648"}}), "nothing"},
  };
  for (const Named& named : all) {
    journal.clear();
    pusher.pushed.clear();
    EXPECT_EQ(set(named.name, "north"), 0U) << dumpName(named.name);
    EXPECT_EQ(journal.at(0), GetParam().service);
    EXPECT_EQ(told(pusher), named.told);
    EXPECT_EQ(pusher.pushed.size(), named.told == "nothing" ? 0U : 1U);
  }
}

}  // namespace
}  // namespace zk::test
