#include "agent/managers/iterators.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "tests/agent/support/localagent.h"
#include "tests/agent/support/names.h"
#include "tests/agent/support/refusals.h"
#include "tests/platform/waiting.h"

namespace {

using globaldefs::NamingAttributesIterator_I_var;
using globaldefs::NamingAttributesList_T_var;
using managedElementManager::ManagedElementMgr_I;
using managedElementManager::ManagedElementMgr_I_var;
using zk::test::isGone;
using zk::test::LocalAgent;
using zk::test::refusalBy;

constexpr int DEVICES = 25;

zk::agent::SessionLimits limits() {
  zk::agent::SessionLimits result;
  result.iterators = 2;
  result.iteratorIdle = std::chrono::seconds(60);
  result.page = 10;
  return result;
}

class Iterators : public testing::Test {
 protected:
  NamingAttributesIterator_I_var ask(CORBA::ULong howMany) {
    NamingAttributesIterator_I_var iterator;
    manager->getAllManagedElementNames(howMany, names.out(), iterator.out());
    return iterator;
  }

  void advance(int seconds) { agent.now += std::chrono::seconds(seconds); }

  // One device fewer than the default page can hold, or as many as asked for.
  LocalAgent agent{limits(), {DEVICES, 2}};
  emsSession::EmsSession_I_var session = agent.logIn();
  ManagedElementMgr_I_var manager =
      agent.manager<ManagedElementMgr_I>("ManagedElement", session.in());
  NamingAttributesList_T_var names;
};

TEST(IteratorsOfOtherAgents, answerAllAtOnceWithoutOne) {
  zk::agent::SessionLimits wide;
  wide.page = 100;
  LocalAgent other(wide, {DEVICES, 2});
  const auto elements = other.manager<ManagedElementMgr_I>("ManagedElement");
  NamingAttributesList_T_var names;
  for (const CORBA::ULong howMany : {25U, 26U, 4294967295U}) {
    NamingAttributesIterator_I_var iterator;
    elements->getAllManagedElementNames(howMany, names.out(), iterator.out());
    EXPECT_EQ(names->length(), 25U) << howMany;
    EXPECT_TRUE(CORBA::is_nil(iterator.in())) << howMany;
  }
  NamingAttributesIterator_I_var iterator;
  elements->getAllManagedElementNames(24, names.out(), iterator.out());
  EXPECT_EQ(names->length(), 24U);
  EXPECT_FALSE(CORBA::is_nil(iterator.in()));
}

TEST_F(Iterators, giveEverythingForHowManyZero) {
  const auto iterator = ask(0);
  EXPECT_EQ(names->length(), 0U);
  ASSERT_FALSE(CORBA::is_nil(iterator.in()));
  std::set<std::string> seen;
  bool more = true;
  while (more) {
    NamingAttributesList_T_var page;
    more = iterator->next_n(7, page.out());
    ASSERT_GT(page->length(), 0U);
    for (CORBA::ULong i = 0; i < page->length(); ++i) {
      EXPECT_TRUE(seen.insert(zk::test::dump(page[i])).second) << zk::test::dump(page[i]);
    }
  }
  EXPECT_EQ(seen.size(), 25U);
}

TEST(IteratorsOfOtherAgents, areNilForNothingAtAll) {
  LocalAgent empty(limits(), {0, 1});
  const auto elements = empty.manager<ManagedElementMgr_I>("ManagedElement");
  NamingAttributesList_T_var names;
  for (const CORBA::ULong howMany : {0U, 5U}) {
    NamingAttributesIterator_I_var iterator;
    elements->getAllManagedElementNames(howMany, names.out(), iterator.out());
    EXPECT_EQ(names->length(), 0U);
    EXPECT_TRUE(CORBA::is_nil(iterator.in()));
  }
}

TEST_F(Iterators, boundThePageWhateverIsAskedFor) {
  const auto iterator = ask(1000);
  EXPECT_EQ(names->length(), 10U);
  ASSERT_FALSE(CORBA::is_nil(iterator.in()));
  NamingAttributesList_T_var page;
  EXPECT_TRUE(iterator->next_n(4294967295U, page.out()));
  EXPECT_EQ(page->length(), 10U);
  EXPECT_FALSE(iterator->next_n(4294967295U, page.out()));
  EXPECT_EQ(page->length(), 5U);
}

TEST_F(Iterators, stayAfterTheirLastEntryUntilDestroyed) {
  const auto iterator = ask(10);
  NamingAttributesList_T_var page;
  while (iterator->next_n(10, page.out())) {
  }
  EXPECT_EQ(iterator->getLength(), 25U);
  EXPECT_FALSE(iterator->next_n(10, page.out()));
  EXPECT_EQ(page->length(), 0U);
  iterator->destroy();
  EXPECT_TRUE(isGone([&] { iterator->next_n(1, page.out()); }));
}

TEST_F(Iterators, countTheWholeAnswer) { EXPECT_EQ(ask(3)->getLength(), 25U); }

TEST_F(Iterators, refuseToHandOutNothing) {
  const auto iterator = ask(3);
  NamingAttributesList_T_var page;
  EXPECT_EQ(refusalBy([&] { iterator->next_n(0, page.out()); }),
            "INVALID_INPUT: how_many must be at least 1");
  EXPECT_TRUE(iterator->next_n(1, page.out()));
}

TEST(IteratorsOfOtherAgents, passOverDevicesRemovedMeanwhile) {
  LocalAgent bare(limits(), {0, 1});
  std::vector<long> ids;
  for (int i = 0; i < 5; ++i) {
    zk::agent::DeviceRecord device;
    device.name = "d" + std::to_string(i);
    ASSERT_EQ(bare.inventory->create(device), zk::agent::Result::DONE);
    ids.push_back(device.id);
  }
  const auto elements = bare.manager<ManagedElementMgr_I>("ManagedElement");
  managedElement::ManagedElementIterator_I_var iterator;
  managedElement::ManagedElementList_T_var list;
  elements->getAllManagedElements(1, list.out(), iterator.out());
  const auto gone = zk::agent::ObjectKey::device(static_cast<unsigned long>(ids[1]));
  ASSERT_EQ(bare.inventory->remove(gone), zk::agent::Result::DONE);
  managedElement::ManagedElementList_T_var rest;
  EXPECT_FALSE(iterator->next_n(10, rest.out()));
  ASSERT_EQ(rest->length(), 3U);
  EXPECT_STREQ(rest[0].nativeEMSName, "d2");
}

TEST_F(Iterators, areLimitedPerSession) {
  const auto first = ask(1);
  const auto second = ask(1);
  EXPECT_EQ(refusalBy([&] { ask(1); }),
            "TOO_MANY_OPEN_ITERATORS: the session has 2 open iterators, the most it may have: "
            "destroy one");
  // Answers that need none are still given.
  EXPECT_EQ(refusalBy([&] {
              NamingAttributesList_T_var list;
              manager->getContainingSubnetworkNames(zk::test::named("ManagedElement", "1"),
                                                    list.out());
            }),
            "");
  const auto other = agent.manager<ManagedElementMgr_I>("ManagedElement");
  NamingAttributesIterator_I_var iterator;
  other->getAllManagedElementNames(1, names.out(), iterator.out());
  EXPECT_FALSE(CORBA::is_nil(iterator.in()));
  first->destroy();
  EXPECT_FALSE(CORBA::is_nil(ask(1).in()));
}

TEST_F(Iterators, areDestroyedWhenIdleForTooLong) {
  const auto idle = ask(1);
  advance(30);
  const auto used = ask(1);
  advance(30);
  EXPECT_EQ(agent.sessions.reapIterators(), 0U);
  NamingAttributesList_T_var page;
  used->next_n(1, page.out());
  advance(1);
  EXPECT_EQ(agent.sessions.reapIterators(), 1U);
  EXPECT_TRUE(isGone([&] { idle->next_n(1, page.out()); }));
  EXPECT_TRUE(used->next_n(1, page.out()));
  EXPECT_FALSE(CORBA::is_nil(ask(1).in())) << "a destroyed iterator keeps its place";
  advance(61);
  EXPECT_EQ(agent.sessions.reapIterators(), 2U);
}

TEST_F(Iterators, keepAliveByAskingForTheLength) {
  const auto iterator = ask(1);
  advance(50);
  iterator->getLength();
  advance(50);
  EXPECT_EQ(agent.sessions.reapIterators(), 0U);
}

TEST_F(Iterators, endWithTheirSession) {
  const auto iterator = ask(1);
  session->endSession();
  NamingAttributesList_T_var page;
  EXPECT_TRUE(
      zk::test::becomesTrue([&] { return isGone([&] { iterator->next_n(1, page.out()); }); }));
}

}  // namespace
