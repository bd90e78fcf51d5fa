// What the name classes are made of: initial values, order of the fields, and
// the tree of classes.
#include <cxxabi.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <type_traits>
#include <typeinfo>

#include "tests/names/names.h"

namespace zk::test {

namespace {

using namespace NS_QUORCORBA;

static_assert(std::is_same_v<decltype(TEName::type_), std::int32_t>);
static_assert(std::is_same_v<decltype(TEName::emsName_), std::string>);
static_assert(std::is_same_v<decltype(TEMEName::meId_), std::uint64_t>);
static_assert(std::is_same_v<decltype(TESubnetworkName::subnetId_), std::string>);
static_assert(std::is_same_v<decltype(TETopoLinkName::topoLinkId_), std::string>);
static_assert(std::is_same_v<decltype(CANodeName::id_), std::string>);
static_assert(std::is_same_v<decltype(CAPhyLinkName::id_), std::string>);
static_assert(std::is_same_v<decltype(CAAIDName::ids_)::value_type, std::int64_t>);
static_assert(!std::is_abstract_v<TEName>, "an EMS's name is a complete name");
static_assert(std::has_virtual_destructor_v<TEName>);

// Counts how often a name asks for the EMS's name.
class CountedEmsConfig : public Installed<NS_CORBA::CorbaBaseAgentConfig> {
 public:
  const std::string& EmsName() const override {
    ++asked;
    return emsName;
  }
  const std::string& EmsVersion() const override { return emsName; }

  mutable int asked = 0;
  std::string emsName = "Quor/1";
};

template <class Name>
std::string fresh() {
  const CountedEmsConfig config;
  const Name name;
  return describe(name) + (config.asked == 1 ? "" : " asked " + std::to_string(config.asked));
}

TEST(NameModel, startsWithItsKindAndTheConfiguredEms) {
  EXPECT_EQ(fresh<TEName>(), "0 Quor/1");
  EXPECT_EQ(fresh<TEMEName>(), "1 Quor/1 me=0");
  EXPECT_EQ(fresh<TESubnetworkName>(), "2 Quor/1 subnet=1");
  EXPECT_EQ(fresh<TETopoLinkName>(), "3 Quor/1 link=");
  EXPECT_EQ(fresh<CAAIDName>(), "12 Quor/1 ids=");
  EXPECT_EQ(fresh<CANodeName>(), "16 Quor/1 id= parent=");
  EXPECT_EQ(fresh<CASubMapName>(), "17 Quor/1 id= parent=");
  EXPECT_EQ(fresh<CADispLinkName>(), "18 Quor/1 id= parent=");
  EXPECT_EQ(fresh<CAPhyLinkName>(), "19 Quor/1 id=");
}

TEST(NameModel, keepsTheEmsNameItWasBornWith) {
  FixedEmsConfig config;
  const TEName name;
  config.emsName = "Quor/2";
  EXPECT_EQ(name.emsName_, "Quor/1");
  EXPECT_EQ(TEName().emsName_, "Quor/2");
}

TEST(NameModel, numbersItsKinds) {
  EXPECT_EQ(NAME_EMS, 0);
  EXPECT_EQ(NAME_MANAGED_ELEMENT, 1);
  EXPECT_EQ(NAME_SUBNETWORK, 2);
  EXPECT_EQ(NAME_TOPOLOGICAL_LINK, 3);
  EXPECT_EQ(NAME_SUBNETWORK_CONNECTION, 4);
  EXPECT_EQ(NAME_PTP, 5);
  EXPECT_EQ(NAME_CTP, 6);
  EXPECT_EQ(NAME_PGP, 10);
  EXPECT_EQ(NAME_AID, 12);
  EXPECT_EQ(NAME_NODE, 16);
  EXPECT_EQ(NAME_SUBMAP, 17);
  EXPECT_EQ(NAME_DISPLAY_LINK, 18);
  EXPECT_EQ(NAME_PHYSICAL_LINK, 19);
  EXPECT_EQ(NAME_DN, 20);
}

TEST(NameModel, numbersItsResults) {
  EXPECT_EQ(RESULT_OK, 0UL);
  EXPECT_EQ(RESULT_NO_INTERFACE, 0x41180004UL);
  EXPECT_EQ(RESULT_NOT_SUPPORTED, 0x41180032UL);
  EXPECT_EQ(RESULT_NO_OBJECT_TYPE, 0x41180053UL);
  EXPECT_EQ(RESULT_NULL_ARGUMENT, 0x4118005FUL);
  EXPECT_EQ(RESULT_BAD_NAME, 0x41180060UL);
  EXPECT_EQ(RESULT_TEXT_TOO_LONG, 0x4118006AUL);
  EXPECT_EQ(RESULT_EMPTY_NAME, 0x411800BDUL);
  EXPECT_EQ(RESULT_OTHER_EMS, 0x411800CBUL);
  EXPECT_EQ(RESULT_NO_ELEMENT_ID, 0x411800CCUL);
  EXPECT_EQ(RESULT_LINK_REFUSED, 0x411800D4UL);
  EXPECT_EQ(RESULT_SUBNETWORK_REFUSED, 0x411800D5UL);
}

// The type whose only base, public and at offset 0, is the given one.
template <class Base, class Derived>
bool derivesOnlyFrom() {
  const auto* single = dynamic_cast<const abi::__si_class_type_info*>(&typeid(Derived));
  return single != nullptr && *single->__base_type == typeid(Base);
}

TEST(NameModel, derivesEveryKindDirectlyAndSinglyFromTheEmssName) {
  EXPECT_TRUE((derivesOnlyFrom<TEName, TEMEName>()));
  EXPECT_TRUE((derivesOnlyFrom<TEName, TESubnetworkName>()));
  EXPECT_TRUE((derivesOnlyFrom<TEName, TETopoLinkName>()));
  EXPECT_TRUE((derivesOnlyFrom<TEName, CAAIDName>()));
  EXPECT_TRUE((derivesOnlyFrom<TEName, CANodeName>()));
  EXPECT_TRUE((derivesOnlyFrom<TEName, CASubMapName>()));
  EXPECT_TRUE((derivesOnlyFrom<TEName, CADispLinkName>()));
  EXPECT_TRUE((derivesOnlyFrom<TEName, CAPhyLinkName>()));
  EXPECT_NE(dynamic_cast<const abi::__class_type_info*>(&typeid(TEName)), nullptr);
  EXPECT_EQ(dynamic_cast<const abi::__si_class_type_info*>(&typeid(TEName)), nullptr);
}

template <class First, class Second>
bool liesBefore(const First& first, const Second& second) {
  return std::less<>()(static_cast<const void*>(&first), static_cast<const void*>(&second));
}

TEST(NameModel, keepsItsFieldsInOrder) {
  const TEName ems;
  EXPECT_TRUE(liesBefore(ems.type_, ems.emsName_));
  const TEMEName element;
  EXPECT_TRUE(liesBefore(element.emsName_, element.meId_));
  const CANodeName node;
  EXPECT_TRUE(liesBefore(node.emsName_, node.id_));
  EXPECT_TRUE(liesBefore(node.id_, node.parentId_));
  const CASubMapName submap;
  EXPECT_TRUE(liesBefore(submap.id_, submap.parentId_));
  const CADispLinkName link;
  EXPECT_TRUE(liesBefore(link.id_, link.parentId_));
}

}  // namespace

}  // namespace zk::test
