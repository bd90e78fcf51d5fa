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
using zk::test::refusalTypeBy;

class EmsManager : public testing::Test {
 protected:
  LocalAgent agent{{}, {12, 2}};
  emsMgr::EMSMgr_I_var manager = agent.manager<emsMgr::EMSMgr_I>("EMS");
};

TEST_F(EmsManager, showsTheEms) {
  emsMgr::EMS_T_var ems;
  manager->getEMS(ems.out());
  EXPECT_EQ(dump(ems->name), "EMS=Quor/1");
  EXPECT_STREQ(ems->emsVersion, "1.0");
  EXPECT_STREQ(ems->type, "Veltra/Quor");
  EXPECT_NE(std::string(ems->owner), "");
  EXPECT_NE(std::string(ems->userLabel), "");
}

TEST_F(EmsManager, showsWhatIsStoredOfTheEms) {
  const auto key = zk::agent::ObjectKey::ems();
  ASSERT_EQ(agent.inventory->setUserLabel(key, "label"), zk::agent::Result::DONE);
  ASSERT_EQ(agent.inventory->setOwner(key, "owner"), zk::agent::Result::DONE);
  emsMgr::EMS_T_var ems;
  manager->getEMS(ems.out());
  EXPECT_STREQ(ems->userLabel, "label");
  EXPECT_STREQ(ems->owner, "owner");
  EXPECT_STREQ(ems->nativeEMSName, "Quor/1");
}

TEST_F(EmsManager, hasOneTopLevelSubnetwork) {
  multiLayerSubnetwork::SubnetworkList_T_var subnetworks;
  multiLayerSubnetwork::SubnetworkIterator_I_var iterator;
  manager->getAllTopLevelSubnetworks(10, subnetworks.out(), iterator.out());
  ASSERT_EQ(subnetworks->length(), 1U);
  EXPECT_TRUE(CORBA::is_nil(iterator.in()));
  EXPECT_EQ(dump(subnetworks[0].name), "EMS=Quor/1|MultiLayerSubnetwork=1");

  manager->getAllTopLevelSubnetworks(0, subnetworks.out(), iterator.out());
  EXPECT_EQ(subnetworks->length(), 0U);
  ASSERT_FALSE(CORBA::is_nil(iterator.in()));
  EXPECT_FALSE(iterator->next_n(1, subnetworks.out()));
  EXPECT_EQ(subnetworks->length(), 1U);

  globaldefs::NamingAttributesList_T_var names;
  globaldefs::NamingAttributesIterator_I_var nameIterator;
  manager->getAllTopLevelSubnetworkNames(10, names.out(), nameIterator.out());
  ASSERT_EQ(names->length(), 1U);
  EXPECT_EQ(dump(names[0]), "EMS=Quor/1|MultiLayerSubnetwork=1");
}

TEST_F(EmsManager, listsEveryLinkOnce) {
  topologicalLink::TopologicalLinkList_T_var links;
  topologicalLink::TopologicalLinkIterator_I_var iterator;
  manager->getAllTopLevelTopologicalLinks(1, links.out(), iterator.out());
  ASSERT_FALSE(CORBA::is_nil(iterator.in()));
  std::set<std::string> seen = {dump(links[0].name)};
  const CORBA::ULong length = iterator->getLength();
  for (bool more = true; more;) {
    more = iterator->next_n(3, links.out());
    for (CORBA::ULong i = 0; i < links->length(); ++i) {
      EXPECT_TRUE(seen.insert(dump(links[i].name)).second);
    }
  }
  EXPECT_EQ(seen.size(), length);
  EXPECT_EQ(static_cast<long>(length), agent.inventory->count(zk::agent::ObjectKind::LINK));

  globaldefs::NamingAttributesList_T_var names;
  globaldefs::NamingAttributesIterator_I_var nameIterator;
  manager->getAllTopLevelTopologicalLinkNames(1000, names.out(), nameIterator.out());
  ASSERT_EQ(names->length(), length);
  for (CORBA::ULong i = 0; i < length; ++i) {
    EXPECT_EQ(seen.count(dump(names[i])), 1U);
  }
}

TEST_F(EmsManager, showsOneLinkWithItsEnds) {
  zk::agent::LinkRecord record;
  record.aEnd = {1, "/rack=1/shelf=1/slot=1/port=901"};
  record.zEnd = {2, "/rack=1/shelf=1/slot=1/port=902"};
  record.nativeName = "A-Z";
  record.userLabel = "label";
  record.owner = "owner";
  record.direction = zk::agent::LinkDirection::UNIDIRECTIONAL;
  record.rate = zk::agent::LinkRate::STM_4;
  ASSERT_EQ(agent.inventory->create(record), zk::agent::Result::DONE);
  topologicalLink::TopologicalLink_T_var link;
  manager->getTopLevelTopologicalLink(named("TopologicalLink", record.id), link.out());
  EXPECT_EQ(dump(link->name), "EMS=Quor/1|TopologicalLink=" + record.id);
  EXPECT_STREQ(link->nativeEMSName, "A-Z");
  EXPECT_STREQ(link->userLabel, "label");
  EXPECT_STREQ(link->owner, "owner");
  EXPECT_EQ(link->direction, globaldefs::CD_UNI);
  EXPECT_EQ(link->rate, 21);
  EXPECT_EQ(dump(link->aEndTP), "EMS=Quor/1|ManagedElement=1|PTP=/rack=1/shelf=1/slot=1/port=901");
  EXPECT_EQ(dump(link->zEndTP), "EMS=Quor/1|ManagedElement=2|PTP=/rack=1/shelf=1/slot=1/port=902");
}

TEST_F(EmsManager, refusesLinksThatAreNotThere) {
  const auto refusalOf = [&](const globaldefs::NVSList_T& name) {
    return refusalTypeBy([&] {
      topologicalLink::TopologicalLink_T_var link;
      manager->getTopLevelTopologicalLink(name, link.out());
    });
  };
  EXPECT_EQ(refusalOf(named("TopologicalLink", "no such link")), "ENTITY_NOT_FOUND");
  EXPECT_EQ(refusalOf(nameOf({{"EMS", "Other/2"}, {"TopologicalLink", "1"}})), "ENTITY_NOT_FOUND");
  EXPECT_EQ(refusalOf(named("TopologicalLink", "")), "INVALID_INPUT");
  EXPECT_EQ(refusalOf(named("ManagedElement", "1")), "INVALID_INPUT");
  EXPECT_EQ(refusalOf(nameOf({})), "INVALID_INPUT");
}

TEST_F(EmsManager, saysWhatItCan) {
  common::CapabilityList_T_var capabilities;
  manager->getCapabilities(capabilities.out());
  std::set<std::string> names;
  for (CORBA::ULong i = 0; i < capabilities->length(); ++i) {
    names.insert(std::string(capabilities[i].name));
    EXPECT_STREQ(capabilities[i].value, "Supported");
  }
  EXPECT_EQ(names, (std::set<std::string>{
                       "setNativeEMSName", "setUserLabel", "setOwner", "getCapabilities", "getEMS",
                       "getAllTopLevelSubnetworks", "getAllTopLevelSubnetworkNames",
                       "getAllTopLevelTopologicalLinks", "getAllTopLevelTopologicalLinkNames",
                       "getTopLevelTopologicalLink", "getAllEMSAndMEActiveAlarms",
                       "getAllEMSSystemActiveAlarms"}));
}

TEST_F(EmsManager, refusesTheRestTheStandardWay) {
  notifications::EventList_T_var events;
  notifications::EventIterator_I_var iterator;
  topologicalLink::TopologicalLink_T_var link;
  const notifications::ProbableCauseList_T causes;
  const notifications::PerceivedSeverityList_T severities;
  const topologicalLink::TLCreateData_T data{};
  const std::string refused = "NOT_IMPLEMENTED: ";
  EXPECT_EQ(refusalBy([&] {
              manager->getAllEMSAndMEUnacknowledgedActiveAlarms(causes, severities, 1, events.out(),
                                                                iterator.out());
            }),
            refused);
  EXPECT_EQ(refusalBy([&] {
              manager->getAllEMSSystemUnacknowledgedActiveAlarms(severities, 1, events.out(),
                                                                 iterator.out());
            }),
            refused);
  EXPECT_EQ(refusalBy([&] { manager->createTopologicalLink(data, link.out()); }), refused);
  EXPECT_EQ(refusalBy([&] { manager->deleteTopologicalLink(named("TopologicalLink", "1")); }),
            refused);
}

}  // namespace
