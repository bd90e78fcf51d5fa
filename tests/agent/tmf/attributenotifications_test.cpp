// Labels, owners and names that change in the embedded EMS.
#include "agent/ems/inventorybackend.h"
#include "tests/agent/tmf/network.h"
#include "tests/support/objectevent.h"
#include "zk_quornex/mo/commonfunc.h"

namespace {

using namespace zk::agent;
using zk::test::Network;
using Texts = std::vector<std::string>;

std::string change(const std::string& name, const std::string& objectType,
                   const std::string& qualifier, const std::string& attribute,
                   const std::string& text) {
  return zk::test::objectEventText({"tmf_mtnm|NT_ATTRIBUTE_VALUE_CHANGE|", "EMS=Quor/1" + name,
                                    objectType, qualifier, "20121120094200.0Z"},
                                   false, "empty", attribute + "=string:" + text);
}

class AttributeNotifications : public Network {};

struct Case {
  const char* name;
  ObjectKey key;
  const char* nmsName;
  const char* objectType;
  const char* qualifier;
};

const Case KINDS[] = {
    {"ems", ObjectKey::ems(), "", "OT_EMS", "EMS"},
    {"device", ObjectKey::device(1), "|ManagedElement=1", "OT_MANAGED_ELEMENT", "ManagedElement"},
    {"subnetwork", ObjectKey::subnetwork("1"), "|MultiLayerSubnetwork=1",
     "OT_MULTILAYER_SUBNETWORK", "MultiLayerSubnetwork"},
    {"link", ObjectKey::link("1"), "|TopologicalLink=1", "OT_TOPOLOGICAL_LINK", "TopologicalLink"},
    {"node", {ObjectKind::NODE, "4", {}}, "|Node=/parentid=2/id=4", "OT_AID", "NODE"},
    {"submap", {ObjectKind::SUB_MAP, "2", {}}, "|SubMap=/parentid=1/id=2", "OT_AID", "SUBMAP"},
};

class OfEachKind : public Network, public testing::WithParamInterface<Case> {};

INSTANTIATE_TEST_SUITE_P(Kinds, OfEachKind, testing::ValuesIn(KINDS),
                         [](const auto& row) { return row.param.name; });

TEST_P(OfEachKind, tellsEachAttributeByItsName) {
  const Case& row = GetParam();
  const auto expected = [&row](const char* attribute, const char* text) {
    return change(row.nmsName, row.objectType, row.qualifier, attribute, text);
  };
  ASSERT_EQ(inventory->setUserLabel(row.key, "a label"), Result::DONE);
  ASSERT_EQ(inventory->setOwner(row.key, "an owner"), Result::DONE);
  ASSERT_EQ(inventory->setNativeName(row.key, "a name"), Result::DONE);
  EXPECT_EQ(told(), (Texts{expected("userLabel", "a label"), expected("owner", "an owner"),
                           expected("nativeEMSName", "a name")}));
}

TEST_F(AttributeNotifications, tellARenamedDevice) {
  ASSERT_EQ(inventory->renameDevice(1, "Renamed"), Result::DONE);
  EXPECT_EQ(told(), Texts{change("|ManagedElement=1", "OT_MANAGED_ELEMENT", "ManagedElement",
                                 "nativeEMSName", "Renamed")});
}

TEST_F(AttributeNotifications, tellNothingThatStayedTheSame) {
  ASSERT_EQ(inventory->setUserLabel(ObjectKey::device(1), "Aldermoor-QM32-01"), Result::DONE);
  EXPECT_EQ(told(), Texts{});
}

// An NMS's own change is reported by the library alone: once, not twice.
TEST_F(AttributeNotifications, tellWhatAnNmsSetOnce) {
  const auto name = zk::test::makeName({{"EMS", "Quor/1"}, {"ManagedElement", "1"}});
  const EmsRequest request(ObjectKey::device(1), "by the NMS");
  ASSERT_EQ(NS_QUORCORBA::TECommonFunc::OnSetUserLabel(name, "by the NMS", false), 0U);
  EXPECT_EQ(inventory->device(1)->userLabel, "by the NMS");
  EXPECT_EQ(told(), Texts{change("|ManagedElement=1", "OT_MANAGED_ELEMENT", "ManagedElement",
                                 "userLabel", "by the NMS")});
}

TEST_F(AttributeNotifications, leaveTheNmssChangesToTheLibrary) {
  const ChangeOptions byNms{false, Origin::NMS};
  ASSERT_EQ(inventory->setNativeName(ObjectKey::device(1), "by the NMS", byNms), Result::DONE);
  EXPECT_EQ(told(), Texts{});
}

}  // namespace
