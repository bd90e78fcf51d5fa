#include <gtest/gtest.h>

#include <string>

#include "agent/managers/managers.h"
#include "tests/agent/support/localagent.h"
#include "tests/agent/support/names.h"
#include "tests/agent/support/refusals.h"
#include "tests/support/doubles.h"

namespace {

using managedElementManager::ManagedElementMgr_I;
using zk::agent::ObjectKind;
using zk::test::LocalAgent;
using zk::test::named;
using zk::test::nameOf;
using zk::test::refusalBy;
using zk::test::refusalTypeBy;

// Any manager serves these for every object; one stands for all.
class Setters : public testing::Test {
 protected:
  // Attribute name and new text of the last reported change; "" without one.
  std::string lastChange() const {
    const auto events = pushed.events();
    if (events.empty()) {
      return "";
    }
    const auto& data = events.back().filterable_data;
    const notifications::NVList_T* attributes = nullptr;
    for (CORBA::ULong i = 0; i < data.length(); ++i) {
      if (std::string(data[i].name) == "attributeList") {
        data[i].value >>= attributes;
      }
    }
    const char* text = nullptr;
    if (attributes == nullptr || attributes->length() != 1 || !((*attributes)[0].value >>= text)) {
      return "(no attribute)";
    }
    return std::string((*attributes)[0].name) + "=" + text;
  }

  zk::test::CapturedEvents pushed;
  LocalAgent agent{{}, {4, 1}};
  managedElementManager::ManagedElementMgr_I_var manager =
      agent.manager<ManagedElementMgr_I>("ManagedElement");
  const globaldefs::NVSList_T element = named("ManagedElement", "1");
};

TEST_F(Setters, storeAndReportAUserLabel) {
  manager->setUserLabel(element, "label", false);
  EXPECT_EQ(agent.inventory->device(1)->userLabel, "label");
  EXPECT_EQ(pushed.events().size(), 1U);
  EXPECT_EQ(lastChange(), "userLabel=label");
  managedElement::ManagedElement_T_var me;
  manager->getManagedElement(element, me.out());
  EXPECT_STREQ(me->userLabel, "label");
}

TEST_F(Setters, storeAndReportAnOwner) {
  manager->setOwner(element, "owner");
  EXPECT_EQ(agent.inventory->device(1)->owner, "owner");
  EXPECT_EQ(pushed.events().size(), 1U);
  EXPECT_EQ(lastChange(), "owner=owner");
}

TEST_F(Setters, storeAndReportANativeName) {
  manager->setNativeEMSName(element, "renamed");
  EXPECT_EQ(agent.inventory->device(1)->name, "renamed");
  EXPECT_EQ(pushed.events().size(), 1U);
  EXPECT_EQ(lastChange(), "nativeEMSName=renamed");
}

TEST_F(Setters, reachEveryKindOfObject) {
  manager->setUserLabel(nameOf({{"EMS", "Quor/1"}}), "ems", false);
  EXPECT_EQ(agent.inventory->ems().userLabel, "ems");
  manager->setUserLabel(named("MultiLayerSubnetwork", "1"), "net", false);
  EXPECT_EQ(agent.inventory->subnetwork().userLabel, "net");
  const std::string link = agent.inventory->ids(ObjectKind::LINK).at(0);
  manager->setUserLabel(named("TopologicalLink", link), "link", false);
  EXPECT_EQ(agent.inventory->link(link)->userLabel, "link");
  EXPECT_EQ(pushed.events().size(), 3U);
}

TEST_F(Setters, refuseALabelInUseOnlyWhenAsked) {
  manager->setUserLabel(element, "label", false);
  const auto second = named("ManagedElement", "2");
  EXPECT_EQ(refusalTypeBy([&] { manager->setUserLabel(second, "label", true); }),
            "USERLABEL_IN_USE");
  EXPECT_EQ(pushed.events().size(), 1U);
  EXPECT_EQ(refusalBy([&] { manager->setUserLabel(second, "label", false); }), "");
  EXPECT_EQ(refusalBy([&] { manager->setUserLabel(second, "another", true); }), "");
}

TEST_F(Setters, boundTheirTexts) {
  const std::string longest(252, 'x');
  const std::string tooLong(253, 'x');
  manager->setUserLabel(element, longest.c_str(), false);
  manager->setOwner(element, longest.c_str());
  manager->setNativeEMSName(element, longest.c_str());
  EXPECT_EQ(refusalTypeBy([&] { manager->setUserLabel(element, tooLong.c_str(), false); }),
            "INVALID_INPUT");
  EXPECT_EQ(refusalTypeBy([&] { manager->setOwner(element, tooLong.c_str()); }), "INVALID_INPUT");
  EXPECT_EQ(refusalTypeBy([&] { manager->setNativeEMSName(element, tooLong.c_str()); }),
            "INVALID_INPUT");
  EXPECT_EQ(agent.inventory->device(1)->name, longest);
  EXPECT_EQ(pushed.events().size(), 3U);
}

TEST_F(Setters, takeTextsThatCanBeTold) {
  for (const char* good : {"", "plain", "\xc5\x81\xc3\xb3", "\xf0\x9f\x9a\x80"}) {
    EXPECT_EQ(refusalBy([&] { manager->setUserLabel(element, good, false); }), "") << good;
  }
  for (const char* bad : {"\x80", "\xc5", "\xc5\x41", "\xc0\x80", "\xed\xa0\x80", "\xff"}) {
    const std::string refused = "INVALID_INPUT: a text is not UTF-8";
    EXPECT_EQ(refusalBy([&] { manager->setUserLabel(element, bad, false); }), refused) << bad;
    EXPECT_EQ(refusalBy([&] { manager->setOwner(element, bad); }), refused) << bad;
    EXPECT_EQ(refusalBy([&] { manager->setNativeEMSName(element, bad); }), refused) << bad;
  }
}

TEST_F(Setters, refuseObjectsThatAreNotThereAndReportNothing) {
  const auto missing = named("ManagedElement", "4242");
  EXPECT_EQ(refusalTypeBy([&] { manager->setUserLabel(missing, "x", false); }), "ENTITY_NOT_FOUND");
  EXPECT_EQ(refusalTypeBy([&] { manager->setOwner(missing, "x"); }), "ENTITY_NOT_FOUND");
  EXPECT_EQ(refusalTypeBy([&] { manager->setNativeEMSName(missing, "x"); }), "ENTITY_NOT_FOUND");
  EXPECT_EQ(refusalTypeBy([&] { manager->setOwner(named("ManagedElement", "4294967297"), "x"); }),
            "ENTITY_NOT_FOUND");
  EXPECT_EQ(refusalTypeBy([&] { manager->setOwner(nameOf({}), "x"); }), "INVALID_INPUT");
  EXPECT_EQ(pushed.events().size(), 0U);
}

TEST_F(Setters, refuseAdditionalInformation) {
  globaldefs::NVSList_T info;
  EXPECT_EQ(refusalBy([&] { manager->setAdditionalInfo(element, info); }), "NOT_IMPLEMENTED: ");
}

}  // namespace
