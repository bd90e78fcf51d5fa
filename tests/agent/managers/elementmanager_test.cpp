#include "agent/managers/managers.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "tests/agent/support/localagent.h"
#include "tests/agent/support/names.h"
#include "tests/agent/support/refusals.h"

namespace {

using zk::test::dump;
using zk::test::LocalAgent;
using zk::test::named;
using zk::test::nameOf;
using zk::test::refusalBy;

using managedElementManager::ManagedElementMgr_I;

class ElementManager : public testing::Test {
 protected:
  managedElement::ManagedElement_T_var element(const globaldefs::NVSList_T& name) {
    managedElement::ManagedElement_T_var result;
    manager->getManagedElement(name, result.out());
    return result;
  }

  zk::agent::DeviceRecord newDevice() {
    zk::agent::DeviceRecord device;
    device.name = "device";
    device.productName = "product";
    device.version = "V1.2";
    device.location = "Rack 7";
    EXPECT_EQ(agent.inventory->create(device), zk::agent::Result::DONE);
    return device;
  }

  LocalAgent agent{{}, {12, 2}};
  managedElementManager::ManagedElementMgr_I_var manager =
      agent.manager<ManagedElementMgr_I>("ManagedElement");
};

TEST_F(ElementManager, showsOneElement) {
  const auto device = newDevice();
  const std::string id = std::to_string(device.id);
  const auto me = element(named("ManagedElement", id));
  EXPECT_EQ(dump(me->name), "EMS=Quor/1|ManagedElement=" + id);
  EXPECT_STREQ(me->nativeEMSName, "device");
  EXPECT_STREQ(me->userLabel, "device");
  EXPECT_STREQ(me->productName, "product");
  EXPECT_STREQ(me->version, "V1.2");
  EXPECT_STREQ(me->location, "Rack 7");
  EXPECT_STREQ(me->owner, "Veltra");
  EXPECT_EQ(me->communicationState, managedElement::CS_AVAILABLE);
  EXPECT_TRUE(me->emsInSyncState);
  EXPECT_EQ(me->supportedRates.length(), 0U);
  EXPECT_EQ(me->additionalInfo.length(), 0U);
}

TEST_F(ElementManager, showsStoredLabelAndOwner) {
  const auto device = newDevice();
  const auto key = zk::agent::ObjectKey::device(static_cast<unsigned long>(device.id));
  ASSERT_EQ(agent.inventory->setUserLabel(key, "label"), zk::agent::Result::DONE);
  ASSERT_EQ(agent.inventory->setOwner(key, "owner"), zk::agent::Result::DONE);
  const auto me = element(named("ManagedElement", std::to_string(device.id)));
  EXPECT_STREQ(me->userLabel, "label");
  EXPECT_STREQ(me->owner, "owner");
  EXPECT_STREQ(me->nativeEMSName, "device");
}

TEST_F(ElementManager, refusesElementsThatAreNotThere) {
  const auto refusalOf = [&](const globaldefs::NVSList_T& name) {
    return refusalBy([&] { element(name); });
  };
  EXPECT_EQ(refusalOf(named("ManagedElement", "4242")),
            "ENTITY_NOT_FOUND: the EMS has no such object: EMS=Quor/1, ManagedElement=4242");
  EXPECT_EQ(refusalOf(named("ManagedElement", "0")),
            "ENTITY_NOT_FOUND: no managed element can have this identifier: EMS=Quor/1, "
            "ManagedElement=0");
  EXPECT_EQ(refusalOf(named("ManagedElement", "4294967297")),
            "ENTITY_NOT_FOUND: no managed element can have this identifier: EMS=Quor/1, "
            "ManagedElement=4294967297");
  EXPECT_EQ(refusalOf(nameOf({{"EMS", "Other/2"}, {"ManagedElement", "1"}})),
            "ENTITY_NOT_FOUND: not an object of this EMS, which is Quor/1: EMS=Other/2, "
            "ManagedElement=1");
  EXPECT_EQ(refusalOf(named("ManagedElement", "x")),
            "INVALID_INPUT: not a well-formed object name: EMS=Quor/1, ManagedElement=x");
  EXPECT_EQ(refusalOf(nameOf({})), "INVALID_INPUT: not a well-formed object name: (empty name)");
}

TEST_F(ElementManager, listsEveryElementOnceWithItsRecord) {
  managedElement::ManagedElementList_T_var list;
  managedElement::ManagedElementIterator_I_var iterator;
  manager->getAllManagedElements(5, list.out(), iterator.out());
  EXPECT_EQ(list->length(), 5U);
  std::set<std::string> seen;
  bool more = true;
  for (;;) {
    for (CORBA::ULong i = 0; i < list->length(); ++i) {
      EXPECT_TRUE(seen.insert(dump(list[i].name)).second);
      const auto alone = element(list[i].name);
      EXPECT_STREQ(list[i].nativeEMSName, alone->nativeEMSName);
      EXPECT_STREQ(list[i].location, alone->location);
    }
    if (!more) {
      break;
    }
    more = iterator->next_n(5, list.out());
  }
  EXPECT_EQ(seen.size(), 12U);
}

TEST_F(ElementManager, putsEveryElementInTheOneSubnetwork) {
  globaldefs::NamingAttributesList_T_var names;
  manager->getContainingSubnetworkNames(named("ManagedElement", std::to_string(newDevice().id)),
                                        names.out());
  ASSERT_EQ(names->length(), 1U);
  EXPECT_EQ(dump(names[0]), "EMS=Quor/1|MultiLayerSubnetwork=1");
  EXPECT_EQ(refusalBy([&] {
              manager->getContainingSubnetworkNames(named("ManagedElement", "4242"), names.out());
            }),
            "ENTITY_NOT_FOUND: the EMS has no such object: EMS=Quor/1, ManagedElement=4242");
}

TEST_F(ElementManager, refusesTheRestTheStandardWay) {
  const auto name = named("ManagedElement", "1");
  const notifications::ProbableCauseList_T causes;
  const notifications::PerceivedSeverityList_T severities;
  const transmissionParameters::LayerRateList_T rates;
  notifications::EventList_T_var events;
  notifications::EventIterator_I_var eventIterator;
  globaldefs::NamingAttributesList_T_var names;
  globaldefs::NamingAttributesIterator_I_var iterator;
  const std::string refused = "NOT_IMPLEMENTED: ";
  EXPECT_EQ(refusalBy([&] {
              manager->getAllUnacknowledgedActiveAlarms(name, causes, severities, 1, events.out(),
                                                        eventIterator.out());
            }),
            refused);
  EXPECT_EQ(refusalBy([&] {
              manager->getAllPTPNames(name, rates, rates, 1, names.out(), iterator.out());
            }),
            refused);
  EXPECT_EQ(refusalBy([&] {
              manager->getContainedPotentialTPNames(name, rates, 1, names.out(), iterator.out());
            }),
            refused);
  EXPECT_EQ(refusalBy([&] {
              manager->getContainedInUseTPNames(name, rates, 1, names.out(), iterator.out());
            }),
            refused);
  EXPECT_EQ(refusalBy([&] {
              manager->getContainedCurrentTPNames(name, rates, 1, names.out(), iterator.out());
            }),
            refused);
  EXPECT_EQ(refusalBy([&] { manager->getContainingTPNames(name, names.out()); }), refused);
}

// The EMS itself fails, not the request.
class FailingBackend : public zk::platform::EmsBackend {};

TEST_F(ElementManager, leavesOutElementsThatTheEmsFailsOn) {
  FailingBackend failing;
  zk::platform::EmsBackend* const before = zk::platform::install(&failing);
  managedElement::ManagedElementList_T_var list;
  managedElement::ManagedElementIterator_I_var iterator;
  manager->getAllManagedElements(100, list.out(), iterator.out());
  EXPECT_EQ(list->length(), 0U);
  EXPECT_EQ(refusalBy([&] { element(named("ManagedElement", "1")); }),
            "INTERNAL_ERROR: the EMS answered 0x41180001: EMS=Quor/1, ManagedElement=1");
  zk::platform::install(before);
}

}  // namespace
