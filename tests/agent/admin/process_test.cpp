// `zk-agent admin` against a running agent, over real IIOP.
#include <gtest/gtest.h>

#include <csignal>

#include "tests/agent/support/names.h"
#include "tests/agent/support/refusals.h"
#include "tests/agent/support/runningagent.h"
#include "tests/support/dump.h"

namespace {

using managedElementManager::ManagedElementMgr_I;
using zk::test::becomesTrue;
using zk::test::managerOf;
using zk::test::named;
using zk::test::ReachableNms;
using zk::test::RunningAgent;
using Arguments = RunningAgent::Arguments;

std::string typeOf(const CosNotification::StructuredEvent& event) {
  return event.header.fixed_header.event_type.type_name.in();
}

// Takes a session's events one by one.
class EventPuller {
 public:
  explicit EventPuller(emsSession::EmsSession_I_ptr session) {
    CosNotifyChannelAdmin::EventChannel_var channel;
    session->getEventChannel(channel.out());
    const CosNotifyChannelAdmin::ConsumerAdmin_var admin = channel->default_consumer_admin();
    CosNotifyChannelAdmin::ProxyID id = 0;
    const CosNotifyChannelAdmin::ProxySupplier_var proxy =
        admin->obtain_notification_pull_supplier(CosNotifyChannelAdmin::STRUCTURED_EVENT, id);
    supplier_ = CosNotifyChannelAdmin::StructuredProxyPullSupplier::_narrow(proxy.in());
    supplier_->connect_structured_pull_consumer(CosNotifyComm::StructuredPullConsumer::_nil());
  }

  // An empty event, failing, when none comes before the deadline.
  CosNotification::StructuredEvent next() const {
    CosNotification::StructuredEvent_var event;
    EXPECT_TRUE(becomesTrue([&] {
      CORBA::Boolean has = false;
      event = supplier_->try_pull_structured_event(has);
      return has;
    }));
    event->filterable_data.length(17);
    return event.in();
  }

 private:
  CosNotifyChannelAdmin::StructuredProxyPullSupplier_var supplier_;
};

class AdminProcess : public testing::Test {
 protected:
  // Exit status and output of one command, such as "0 7\n".
  std::string admin(const Arguments& command) {
    Arguments arguments = {"admin", "--agent", address()};
    arguments.insert(arguments.end(), command.begin(), command.end());
    const auto process = agent.run(arguments);
    const int status = process->waitForEnd().value_or(-1);
    return std::to_string(status) + " " + process->output();
  }

  std::string address() const { return "127.0.0.1:" + std::to_string(agent.port); }

  RunningAgent agent;
};

TEST_F(AdminProcess, changesTheNetworkOfARunningAgent) {
  const auto process = agent.start({"--admin"});
  ASSERT_TRUE(agent.awaitServing(*process)) << process->output();
  EXPECT_EQ(admin({"create-device", "--name", "Gannet", "--product", "QA-8", "--site", "2"}),
            "0 201\n");
  EXPECT_EQ(admin({"rename-device", "201", "Gannet-2"}), "0 ");
  EXPECT_EQ(admin({"set", "device", "201", "userLabel", "north"}), "0 ");
  EXPECT_EQ(admin({"set", "ems", "", "userLabel", "Headquarters"}), "0 ");

  ReachableNms nms;
  const auto session = nms.logIn(agent);
  const auto elements = managerOf<ManagedElementMgr_I>(session.in(), "ManagedElement");
  managedElement::ManagedElement_T_var me;
  elements->getManagedElement(named("ManagedElement", "201"), me.out());
  EXPECT_STREQ(me->nativeEMSName, "Gannet-2");
  EXPECT_STREQ(me->userLabel, "north");
  EXPECT_STREQ(me->productName, "QA-8");
  emsMgr::EMS_T_var ems;
  managerOf<emsMgr::EMSMgr_I>(session.in(), "EMS")->getEMS(ems.out());
  EXPECT_STREQ(ems->userLabel, "Headquarters");

  const std::string link =
      admin({"create-link", "--name", "Spur", "--a", "201", "--z", "1", "--z-port", "/port=9"});
  ASSERT_EQ(link.rfind("0 ", 0), 0U) << link;
  const std::string linkId = link.substr(2, link.size() - 3);
  EXPECT_EQ(admin({"create-submap", "--name", "S", "--parent", "/", "--id", "s"}), "0 s\n");
  EXPECT_EQ(admin({"create-node", "--name", "N", "--parent", "s", "--device", "201", "--id", "n"}),
            "0 n\n");
  EXPECT_EQ(admin({"create-display-link", "--name", "D", "--parent", "s", "--aEnd", "n", "--zEnd",
                   "s", "--id", "d"}),
            "0 d\n");
  EXPECT_EQ(admin({"create-physical-link", "--link", linkId, "--id", "p"}), "0 p\n");
  EXPECT_EQ(admin({"remove", "device", "201"}),
            "6 zk-agent: refused: other objects refer to it: device 201\n");
  EXPECT_EQ(admin({"remove", "physical-link", "p"}), "0 ");
  EXPECT_EQ(admin({"remove", "display-link", "d"}), "0 ");
  EXPECT_EQ(admin({"remove", "node", "n"}), "0 ");
  EXPECT_EQ(admin({"remove", "submap", "s"}), "0 ");
  EXPECT_EQ(admin({"remove", "link", linkId}), "0 ");
  EXPECT_EQ(admin({"remove", "device", "201"}), "0 ");
  EXPECT_THROW(elements->getManagedElement(named("ManagedElement", "201"), me.out()),
               globaldefs::ProcessingFailureException);
}

TEST_F(AdminProcess, raisesAndClearsAlarms) {
  const auto process = agent.start({"--admin"});
  ASSERT_TRUE(agent.awaitServing(*process)) << process->output();
  EXPECT_EQ(admin({"raise-alarm", "--device", "7", "--cause", "LOS", "--severity", "critical",
                   "--qualifier", "/port=1", "--text", "see the card"}),
            "0 1\n");
  EXPECT_EQ(admin({"raise-alarm", "--cause", "EMS"}), "0 2\n");

  ReachableNms nms;
  const auto session = nms.logIn(agent);
  const auto ems = managerOf<emsMgr::EMSMgr_I>(session.in(), "EMS");
  const auto active = [&] {
    notifications::EventList_T_var events;
    notifications::EventIterator_I_var iterator;
    ems->getAllEMSAndMEActiveAlarms({}, {}, 10, events.out(), iterator.out());
    return events->length();
  };
  EXPECT_EQ(active(), 2U);
  EXPECT_EQ(admin({"clear-alarm", "1"}), "0 ");
  EXPECT_EQ(active(), 1U);
  EXPECT_EQ(admin({"clear-alarm", "1"}),
            "6 zk-agent: refused: the EMS has no such object: alarm 1\n");
}

// An agent on any free port is found by the file, as its factory is.
TEST_F(AdminProcess, isFoundByItsFile) {
  const std::string file = agent.folder.file("admin.ior");
  const auto process =
      agent.run({"--listen", "127.0.0.1:0", "--inventory", agent.inventory(), "--ior-file",
                 agent.iorFile(), "--admin", "--admin-ior-file", file});
  ASSERT_TRUE(agent.awaitServing(*process)) << process->output();
  const std::string reference = zk::test::bytesOf(file);
  for (const std::string& where : {file, reference.substr(0, reference.size() - 1)}) {
    const auto command = agent.run({"admin", "--agent", where, "rename-device", "1", "R"});
    EXPECT_EQ(command->waitForEnd().value_or(-1), 0) << command->output();
  }
  process->signal(SIGTERM);
  EXPECT_EQ(process->waitForEnd().value_or(-1), 0) << process->output();
  EXPECT_FALSE(std::filesystem::exists(file));
}

// What an operator does at the EMS reaches an NMS as events.
TEST_F(AdminProcess, isHeardOfByAnNms) {
  const auto process = agent.start({"--admin"});
  ASSERT_TRUE(agent.awaitServing(*process)) << process->output();
  ReachableNms nms;
  const auto session = nms.logIn(agent);
  const EventPuller events(session.in());
  EXPECT_EQ(admin({"rename-device", "7", "Renamed"}), "0 ");
  EXPECT_EQ(admin({"raise-alarm", "--device", "7", "--cause", "LOS"}), "0 1\n");
  EXPECT_EQ(admin({"clear-alarm", "1"}), "0 ");
  const auto renamed = events.next();
  EXPECT_EQ(typeOf(renamed), "NT_ATTRIBUTE_VALUE_CHANGE");
  EXPECT_EQ(zk::test::dumpAny(renamed.filterable_data[7].value),
            "NVList_T:[nativeEMSName=string:Renamed]");
  for (const char* severity : {"PS_MAJOR", "PS_CLEARED"}) {
    const auto alarm = events.next();
    EXPECT_EQ(typeOf(alarm), "NT_ALARM");
    EXPECT_EQ(zk::test::dumpAny(alarm.filterable_data[2].value), "string:Renamed");
    EXPECT_EQ(zk::test::dumpAny(alarm.filterable_data[11].value),
              std::string("PerceivedSeverity_T:") + severity);
  }
}

TEST_F(AdminProcess, endsASessionAndTellsItsNms) {
  const auto process = agent.start({"--admin"});
  ASSERT_TRUE(agent.awaitServing(*process)) << process->output();
  ReachableNms nms;
  const auto session = nms.logIn(agent, "operator");
  EXPECT_EQ(admin({"sessions"}), "0 1 operator\n");
  EXPECT_EQ(admin({"kick", "1"}), "0 ");
  EXPECT_TRUE(becomesTrue([&] { return nms.servant->ends.load() == 1; }));
  EXPECT_TRUE(zk::test::isGone([&] { session->ping(); }));
  EXPECT_EQ(admin({"kick", "1"}).substr(0, 2), "6 ");
}

TEST_F(AdminProcess, isOnlyThereWhenItIsAskedFor) {
  const auto process = agent.start();
  ASSERT_TRUE(agent.awaitServing(*process)) << process->output();
  EXPECT_EQ(admin({"clear-alarm", "1"}), "7 zk-agent: the agent at " + address() +
                                             " offers no administration; start it with --admin\n");
}

TEST_F(AdminProcess, saysWhenNoAgentIsThere) {
  EXPECT_EQ(admin({"clear-alarm", "1"}),
            "7 zk-agent: no agent answers at " + address() + " (TRANSIENT)\n");
}

TEST_F(AdminProcess, refusesWrongUsageWithoutAsking) {
  EXPECT_EQ(admin({"clear-alarm", "x"}).substr(0, 2), "3 ");
  EXPECT_EQ(admin({}).substr(0, 2), "3 ");
}

// Its labels and names change by themselves, and stop when they are told to.
TEST_F(AdminProcess, startsAndEndsTraffic) {
  const auto process = agent.start({"--admin"});
  ASSERT_TRUE(agent.awaitServing(*process)) << process->output();
  ReachableNms nms;
  const auto session = nms.logIn(agent);
  const auto ems = managerOf<emsMgr::EMSMgr_I>(session.in(), "EMS");
  const auto alarms = [&] {
    notifications::EventList_T_var events;
    notifications::EventIterator_I_var iterator;
    ems->getAllEMSAndMEActiveAlarms({}, {}, 100, events.out(), iterator.out());
    return events->length();
  };
  EXPECT_EQ(alarms(), 0U);
  EXPECT_EQ(admin({"traffic", "500"}), "0 ");
  EXPECT_TRUE(becomesTrue([&] { return alarms() > 0; }));
  EXPECT_EQ(admin({"traffic", "0"}), "0 ");
  EXPECT_EQ(admin({"traffic", "20000"}),
            "6 zk-agent: refused: a rate is 0 to 10000 changes a second\n");
  process->signal(SIGTERM);
  EXPECT_EQ(process->waitForEnd().value_or(-1), 0) << process->output();
}

TEST_F(AdminProcess, makesTrafficFromItsStart) {
  const auto process = agent.start({"--traffic", "500", "--traffic-seed", "3"});
  ASSERT_TRUE(agent.awaitServing(*process)) << process->output();
  ReachableNms nms;
  const auto session = nms.logIn(agent);
  const auto ems = managerOf<emsMgr::EMSMgr_I>(session.in(), "EMS");
  EXPECT_TRUE(becomesTrue([&] {
    notifications::EventList_T_var events;
    notifications::EventIterator_I_var iterator;
    ems->getAllEMSAndMEActiveAlarms({}, {}, 100, events.out(), iterator.out());
    return events->length() > 0;
  }));
  process->signal(SIGTERM);
  EXPECT_EQ(process->waitForEnd().value_or(-1), 0) << process->output();
}

}  // namespace
