// The event cache behind the channel: client ids, the manager's own criteria, and
// what happens without a validity service.
#include <gtest/gtest.h>
#include <unistd.h>

#include "agent/channel/clientids.h"
#include "agent/channel/gatefilter.h"
#include "tests/agent/channel/support/clients.h"
#include "tests/agent/channel/support/lists.h"
#include "zk_quornex/messages/messagecach.h"

namespace {

using namespace zk::test;
using NS_QUORCORBA::NXMessageMgr;
using NS_QUORCORBA::stDateTimeType;

constexpr long CLIENT = LocalChannel::SESSION * 65536 + 1;

struct CriteriaCall {
  std::vector<long> severities;
  std::vector<long> unused;
  std::vector<long> layers;
  std::vector<long> objectTypes;
  stDateTimeType start{};
  stDateTimeType end{};
  std::vector<std::string> types;

  int suspend(long messageClass) {
    return NXMessageMgr::Instance()->suspendFilter(messageClass, CLIENT, severities, unused, layers,
                                                   objectTypes, start, end, types);
  }
  int resume(long messageClass) {
    return NXMessageMgr::Instance()->resumeFilter(messageClass, CLIENT, severities, unused, layers,
                                                  objectTypes, start, end, types);
  }
  int cancel(long messageClass) {
    return NXMessageMgr::Instance()->cancelFilter(messageClass, CLIENT, severities, unused, layers,
                                                  objectTypes, start, end, types);
  }
};

class Cache : public testing::Test {
 protected:
  void SetUp() override {
    client.connect();
    witness.connect();
  }

  // Which of an alarm of layer 1, one of layer 2 and a creation come through.
  Ids passing() {
    send(makeAlarm("layer1", notifications::PS_MAJOR, 1));
    send(makeAlarm("layer2", notifications::PS_MINOR, 2));
    send(makeCreation("creation"));
    witness.next(3);
    return client.rest();
  }

  LocalChannel local;
  StructuredPull client{local};
  StructuredPull witness{local};
};

const Ids ALL = {"layer1", "layer2", "creation"};

TEST_F(Cache, withholdsLayersByTheManagersCalls) {
  CriteriaCall layer;
  layer.layers = {2, 3};
  EXPECT_EQ(layer.resume(8), -1);
  EXPECT_EQ(layer.suspend(8), 0);
  EXPECT_EQ(passing(), (Ids{"layer1", "creation"}));
  EXPECT_EQ(layer.resume(8), 0);
  EXPECT_EQ(passing(), ALL);
  EXPECT_EQ(layer.suspend(8), 0);
  EXPECT_EQ(passing(), (Ids{"layer1", "creation"}));
  EXPECT_EQ(layer.cancel(8), 0);
  EXPECT_EQ(layer.cancel(8), -1);
  EXPECT_EQ(passing(), ALL);
}

TEST_F(Cache, withholdsSeveritiesTypesAndTimes) {
  CriteriaCall severity;
  severity.severities = {notifications::PS_MAJOR};
  EXPECT_EQ(severity.suspend(8), 0);
  EXPECT_EQ(passing(), (Ids{"layer2", "creation"}));
  EXPECT_EQ(CriteriaCall().cancel(8), 0);
  CriteriaCall type;
  type.types = {"NT_OBJECT_CREATION"};
  EXPECT_EQ(type.suspend(10), 0);
  EXPECT_EQ(passing(), (Ids{"layer1", "layer2"}));
  EXPECT_EQ(type.cancel(10), 0);
  CriteriaCall time;
  time.start = {2012, 11, 20, 9, 42, 0};
  EXPECT_EQ(time.suspend(8), 0);
  EXPECT_EQ(passing(), Ids{"creation"});
  EXPECT_EQ(time.cancel(8), 0);
  time.start = {2012, 11, 20, 9, 42, 1};
  EXPECT_EQ(time.suspend(8), 0);
  EXPECT_EQ(passing(), ALL);
  time.start = {};
  time.end = {2012, 11, 20, 9, 42, 0};
  EXPECT_EQ(time.suspend(8), 0);
  EXPECT_EQ(passing(), Ids{"creation"});
}

TEST_F(Cache, withholdsOnlyWhatHasAllOfTheCriteria) {
  CriteriaCall both;
  both.layers = {1, 2};
  both.severities = {notifications::PS_MINOR};
  both.objectTypes = {notifications::OT_MANAGED_ELEMENT};
  EXPECT_EQ(both.suspend(8), 0);
  EXPECT_EQ(passing(), (Ids{"layer1", "creation"}));
}

TEST_F(Cache, refusesCriteriaThatSayNothing) {
  EXPECT_EQ(CriteriaCall().suspend(8), -1);
  EXPECT_EQ(passing(), ALL);
}

TEST_F(Cache, reportsWhatIsWithheld) {
  CriteriaCall layer;
  layer.layers = {2};
  layer.types = {"NT_ALARM"};
  ASSERT_EQ(layer.suspend(8), 0);
  std::vector<long> severities;
  std::vector<std::string> unused;
  std::vector<long> layers;
  std::vector<long> objectTypes;
  stDateTimeType start;
  stDateTimeType end;
  std::vector<std::string> types;
  EXPECT_EQ(NXMessageMgr::Instance()->GetFilter(8, CLIENT, severities, unused, layers, objectTypes,
                                                start, end, types),
            0);
  EXPECT_EQ(layers, std::vector<long>{2});
  EXPECT_EQ(types, Ids{"NT_ALARM"});
  EXPECT_TRUE(severities.empty());
  EXPECT_TRUE(NS_QUORCORBA::TimeChange::checkDateTimeValid(start))
      << "a filter without criteria would not be asked";
}

TEST(GateFilterTest, letsNothingThroughWithoutTheEvent) {
  OpenGate open;
  zk::agent::GateFilter filter(zk::agent::EventKind::Alarm, open.gate);
  EXPECT_TRUE(filter.isFiltered(nullptr));
  const auto event = makeAlarm("1");
  EXPECT_FALSE(filter.isFiltered(&event));
  EXPECT_EQ(open.gate->waiting(), 1U);
}

TEST(GateFilterTest, closesItsGateWhenTheCacheLetsGo) {
  OpenGate open;
  std::make_unique<zk::agent::GateFilter>(zk::agent::EventKind::Alarm, open.gate).reset();
  EXPECT_TRUE(open.gate->isClosed());
}

TEST(ClientIds, leadBackToTheSession) {
  EXPECT_EQ(zk::agent::sessionOf(zk::agent::clientIdOf(1, 1)), 1);
  EXPECT_EQ(zk::agent::sessionOf(zk::agent::clientIdOf(1, 65535)), 1);
  EXPECT_EQ(zk::agent::sessionOf(zk::agent::clientIdOf(2, 1)), 2);
  EXPECT_EQ(zk::agent::sessionOf(zk::agent::clientIdOf(4000000000, 65535)), 4000000000);
}

// The class's lock stays held for good, and so does its client: in a process of
// its own, which leaves without destroying either.
[[noreturn]] void loseTheValidityService() {
  auto* const local = new LocalChannel;
  StructuredPull client(*local);
  client.connect();
  const ScopedService missing("SecurityIF", nullptr);
  for (int i = 1; i <= 4; ++i) {
    send(makeCreation(std::to_string(i)));
  }
  const bool taken =
      becomesTrue([] { return zk::platform::eventSinkCounts("event-cache").taken == 4; });
  const bool empty = client.rest().empty();
  local->session->close();
  local->service.stop();
  _exit(taken && empty ? 0 : 1);
}

TEST(NoValidityServiceDeathTest, putsTheCacheOutOfUseWithoutHangingTheAgent) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(loseTheValidityService(), testing::ExitedWithCode(0), "is out of use");
}

}  // namespace
