#include "agent/sessions/sessionservants.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "tests/agent/support/localagent.h"
#include "tests/agent/support/refusals.h"
#include "tests/platform/waiting.h"

namespace {

using zk::test::becomesTrue;
using zk::test::isGone;
using zk::test::LocalAgent;
using zk::test::refusalBy;

class Session : public testing::Test {
 protected:
  std::string refusalOfManager(const char* name) {
    return refusalBy([&] {
      common::Common_I_var manager;
      session->getManager(name, manager.out());
    });
  }

  LocalAgent agent{{}, {5, 1}};
  emsSession::EmsSession_I_var session = agent.logIn();
};

TEST_F(Session, answersPings) { EXPECT_NO_THROW(session->ping()); }

TEST_F(Session, knowsTheOtherHalf) {
  const session::Session_I_var other = session->associatedSession();
  ASSERT_FALSE(CORBA::is_nil(other.in()));
  EXPECT_TRUE(other->_is_equivalent(agent.nmsReference.in()));
  other->ping();
  EXPECT_EQ(agent.nms->pings.load(), 1);
}

TEST_F(Session, listsTheManagersThatItGives) {
  emsSession::EmsSession_I::managerNames_T_var names;
  session->getSupportedManagers(names.out());
  ASSERT_EQ(names->length(), 4U);
  EXPECT_STREQ(names[0U], "EMS");
  EXPECT_STREQ(names[1U], "ManagedElement");
  EXPECT_STREQ(names[2U], "MultiLayerSubnetwork");
  EXPECT_STREQ(names[3U], "TopologyMap");
  for (CORBA::ULong i = 0; i < names->length(); ++i) {
    EXPECT_EQ(refusalOfManager(names[i]), "");
  }
}

TEST_F(Session, givesManagersOfTheirOwnType) {
  EXPECT_FALSE(CORBA::is_nil(agent.manager<emsMgr::EMSMgr_I>("EMS", session.in()).in()));
  EXPECT_FALSE(CORBA::is_nil(
      agent.manager<managedElementManager::ManagedElementMgr_I>("ManagedElement", session.in())
          .in()));
  EXPECT_FALSE(CORBA::is_nil(agent
                                 .manager<multiLayerSubnetwork::MultiLayerSubnetworkMgr_I>(
                                     "MultiLayerSubnetwork", session.in())
                                 .in()));
  EXPECT_TRUE(CORBA::is_nil(agent.manager<emsMgr::EMSMgr_I>("ManagedElement", session.in()).in()));
}

TEST_F(Session, givesTheSameManagerAgain) {
  const auto first = agent.manager<emsMgr::EMSMgr_I>("EMS", session.in());
  const auto second = agent.manager<emsMgr::EMSMgr_I>("EMS", session.in());
  EXPECT_TRUE(first->_is_equivalent(second.in()));
}

TEST_F(Session, refusesManagersThatItDoesNotHave) {
  EXPECT_EQ(refusalOfManager("EquipmentInventory"), "NOT_IMPLEMENTED: ");
  EXPECT_EQ(refusalOfManager("PerformanceManagement"), "NOT_IMPLEMENTED: ");
  EXPECT_EQ(refusalOfManager("ems"), "INVALID_INPUT: no manager has the name 'ems'");
  EXPECT_EQ(refusalOfManager(""), "INVALID_INPUT: no manager has the name ''");
}

TEST_F(Session, givesOneEventChannelAndTakesItAway) {
  CosNotifyChannelAdmin::EventChannel_var channel;
  CosNotifyChannelAdmin::EventChannel_var again;
  session->getEventChannel(channel.out());
  session->getEventChannel(again.out());
  ASSERT_FALSE(CORBA::is_nil(channel.in()));
  EXPECT_TRUE(channel->_is_equivalent(again.in()));
  session->endSession();
  EXPECT_TRUE(zk::test::isGone([&] {
    const CosNotifyChannelAdmin::ConsumerAdmin_var admin = channel->default_consumer_admin();
  }));
}

TEST_F(Session, takesItsManagersWithItAndLeavesOthersAlone) {
  const auto manager = agent.manager<emsMgr::EMSMgr_I>("EMS", session.in());
  const auto other = agent.manager<emsMgr::EMSMgr_I>("EMS");
  session->endSession();
  emsMgr::EMS_T_var ems;
  EXPECT_TRUE(becomesTrue([&] { return isGone([&] { manager->getEMS(ems.out()); }); }));
  EXPECT_TRUE(isGone([&] { session->ping(); }));
  EXPECT_NO_THROW(other->getEMS(ems.out()));
}

TEST_F(Session, givesNothingMoreOnceItHasEnded) {
  // A request that was under way when the session ended.
  const auto ended = agent.sessions.begin({"late", ""}, agent.nmsReference.in());
  agent.sessions.end(ended->id, "test");
  zk::agent::SessionServant servant(ended, agent.sessions, *agent.inventory, agent.events);
  common::Common_I_var manager;
  EXPECT_TRUE(isGone([&] { servant.getManager("EMS", manager.out()); }));
}

TEST_F(Session, endsOnceWhoeverEndsIt) {
  const auto other = agent.sessions.begin({"x", ""}, agent.nmsReference.in());
  std::vector<std::thread> threads;
  threads.reserve(4);
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&] { agent.sessions.end(other->id, "test"); });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(agent.sessions.count(), 1U);
}

TEST_F(Session, servesManyThreadsAtOnce) {
  std::vector<std::thread> threads;
  threads.reserve(4);
  std::atomic<int> wrong{0};
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&] {
      for (int round = 0; round < 20; ++round) {
        const auto own = agent.logIn();
        const auto elements =
            agent.manager<managedElementManager::ManagedElementMgr_I>("ManagedElement", own.in());
        globaldefs::NamingAttributesList_T_var names;
        globaldefs::NamingAttributesIterator_I_var iterator;
        elements->getAllManagedElementNames(2, names.out(), iterator.out());
        globaldefs::NamingAttributesList_T_var rest;
        wrong += iterator->next_n(10, rest.out()) || names->length() + rest->length() != 5;
        own->endSession();
      }
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(wrong.load(), 0);
  EXPECT_TRUE(becomesTrue([&] { return agent.sessions.count() == 1; }));
}

}  // namespace
