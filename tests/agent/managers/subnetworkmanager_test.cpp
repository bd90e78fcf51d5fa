#include "agent/managers/managers.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/agent/support/localagent.h"
#include "tests/agent/support/names.h"
#include "tests/agent/support/refusals.h"

namespace {

using multiLayerSubnetwork::MultiLayerSubnetworkMgr_I;
using zk::test::dump;
using zk::test::LocalAgent;
using zk::test::named;
using zk::test::nameOf;
using zk::test::refusalBy;
using zk::test::refusalTypeBy;

class SubnetworkManager : public testing::Test {
 protected:
  LocalAgent agent{{}, {12, 2}};
  multiLayerSubnetwork::MultiLayerSubnetworkMgr_I_var manager =
      agent.manager<MultiLayerSubnetworkMgr_I>("MultiLayerSubnetwork");
  const globaldefs::NVSList_T whole = named("MultiLayerSubnetwork", "1");
};

TEST_F(SubnetworkManager, showsTheSubnetwork) {
  multiLayerSubnetwork::MultiLayerSubnetwork_T_var subnetwork;
  manager->getMultiLayerSubnetwork(whole, subnetwork.out());
  const auto record = agent.inventory->subnetwork();
  EXPECT_EQ(dump(subnetwork->name), "EMS=Quor/1|MultiLayerSubnetwork=1");
  EXPECT_STREQ(subnetwork->userLabel, record.userLabel.c_str());
  EXPECT_STREQ(subnetwork->nativeEMSName, record.nativeName.c_str());
  EXPECT_EQ(static_cast<int>(subnetwork->subnetworkType), static_cast<int>(record.topology));
  EXPECT_EQ(subnetwork->supportedRates.length(), 0U);
}

TEST_F(SubnetworkManager, listsItsElementsAndLinks) {
  managedElement::ManagedElementList_T_var elements;
  managedElement::ManagedElementIterator_I_var elementIterator;
  manager->getAllManagedElements(whole, 100, elements.out(), elementIterator.out());
  EXPECT_EQ(elements->length(), 12U);

  globaldefs::NamingAttributesList_T_var names;
  globaldefs::NamingAttributesIterator_I_var nameIterator;
  manager->getAllManagedElementNames(whole, 100, names.out(), nameIterator.out());
  ASSERT_EQ(names->length(), 12U);
  EXPECT_EQ(dump(names[3]), dump(elements[3].name));

  topologicalLink::TopologicalLinkList_T_var links;
  topologicalLink::TopologicalLinkIterator_I_var linkIterator;
  manager->getAllTopologicalLinks(whole, 1000, links.out(), linkIterator.out());
  EXPECT_EQ(static_cast<long>(links->length()),
            agent.inventory->count(zk::agent::ObjectKind::LINK));
  manager->getAllTopologicalLinkNames(whole, 1000, names.out(), nameIterator.out());
  ASSERT_EQ(names->length(), links->length());
  ASSERT_GT(names->length(), 0U);
  EXPECT_EQ(dump(names[0]), dump(links[0].name));

  topologicalLink::TopologicalLink_T_var link;
  manager->getTopologicalLink(names[0], link.out());
  EXPECT_EQ(dump(link->aEndTP), dump(links[0].aEndTP));
}

TEST_F(SubnetworkManager, refusesOtherSubnetworks) {
  globaldefs::NamingAttributesList_T_var names;
  globaldefs::NamingAttributesIterator_I_var iterator;
  const auto refusalOf = [&](const globaldefs::NVSList_T& name) {
    return refusalTypeBy(
        [&] { manager->getAllManagedElementNames(name, 1, names.out(), iterator.out()); });
  };
  EXPECT_EQ(refusalOf(named("MultiLayerSubnetwork", "2")), "ENTITY_NOT_FOUND");
  EXPECT_EQ(refusalOf(nameOf({{"EMS", "Other/2"}, {"MultiLayerSubnetwork", "1"}})),
            "ENTITY_NOT_FOUND");
  EXPECT_EQ(refusalOf(named("MultiLayerSubnetwork", "")), "INVALID_INPUT");
  EXPECT_EQ(refusalOf(named("ManagedElement", "1")), "INVALID_INPUT");
  EXPECT_EQ(refusalTypeBy([&] {
              topologicalLink::TopologicalLinkList_T_var links;
              topologicalLink::TopologicalLinkIterator_I_var linkIterator;
              manager->getAllTopologicalLinks(named("MultiLayerSubnetwork", "2"), 1, links.out(),
                                              linkIterator.out());
            }),
            "ENTITY_NOT_FOUND");
}

TEST_F(SubnetworkManager, refusesTheRestTheStandardWay) {
  const transmissionParameters::LayerRateList_T rates;
  globaldefs::NamingAttributesList_T_var names;
  globaldefs::NamingAttributesIterator_I_var iterator;
  const std::string refused = "NOT_IMPLEMENTED: ";
  EXPECT_EQ(refusalBy([&] {
              manager->getAllEdgePointNames(whole, rates, rates, 1, names.out(), iterator.out());
            }),
            refused);
  EXPECT_EQ(refusalBy([&] {
              manager->getAllSubnetworkConnectionNames(whole, rates, 1, names.out(),
                                                       iterator.out());
            }),
            refused);
  EXPECT_EQ(refusalBy([&] { manager->getAllTPPoolNames(whole, 1, names.out(), iterator.out()); }),
            refused);
}

}  // namespace
