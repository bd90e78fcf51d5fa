// The event cache behind the channel: client ids, who gets what, and what happens
// without a validity service.
#include <gtest/gtest.h>
#include <unistd.h>

#include <future>
#include <thread>

#include "agent/channel/eventcache.h"
#include "tests/agent/channel/support/clients.h"
#include "tests/agent/channel/support/lists.h"

namespace {

using namespace zk::test;
using NS_QUORCORBA::stDateTimeType;

constexpr long CLIENT = LocalChannel::SESSION * 65536 + 1;

TEST(GateFilterTest, letsThroughWhatItsGateHasLetIn) {
  OpenGate open;
  zk::agent::GateFilter filter(5, open.gate);
  const zk::agent::AdmittedClients with = {1, 5, 9};
  const zk::agent::AdmittedClients without = {1, 9};
  EXPECT_FALSE(filter.isFiltered(&with));
  EXPECT_TRUE(filter.isFiltered(&without));
  EXPECT_TRUE(filter.isFiltered(nullptr));
  EXPECT_EQ(open.gate->waiting(), 1U) << "what was let through has come in";
}

TEST(GateFilterTest, closesItsGateWhenTheCacheLetsGo) {
  OpenGate open;
  std::make_unique<zk::agent::GateFilter>(1, open.gate).reset();
  EXPECT_TRUE(open.gate->isClosed());
}

TEST(GateFilterTest, isAlwaysAskedAndTakesNoCriteria) {
  OpenGate open;
  zk::agent::GateFilter filter(1, open.gate);
  std::vector<long> severities = {1};
  std::vector<long> unused;
  std::vector<std::string> texts;
  std::vector<long> layers;
  std::vector<long> objectTypes;
  stDateTimeType start{};
  stDateTimeType end{};
  std::vector<std::string> types;
  EXPECT_EQ(filter.suspendFilter(severities, unused, layers, objectTypes, start, end, types), -1);
  EXPECT_EQ(filter.resumeFilter(severities, unused, layers, objectTypes, start, end, types), -1);
  EXPECT_EQ(filter.cancelFilter(severities, unused, layers, objectTypes, start, end, types), -1);
  EXPECT_EQ(filter.GetFilter(unused, texts, layers, objectTypes, start, end, types), 0);
  EXPECT_TRUE(NS_QUORCORBA::TimeChange::checkDateTimeValid(start))
      << "a filter without criteria would not be asked";
}

// The cache without a channel around it.
class Cache : public testing::Test {
 protected:
  std::unique_ptr<zk::agent::CacheClient> client(OpenGate& open, long id = CLIENT) {
    return std::make_unique<zk::agent::CacheClient>(cache, id, open.gate);
  }
  static Ids fetch(zk::agent::CacheClient& client) {
    EXPECT_EQ(client.wait(farAway()), State::EVENTS);
    const auto list = client.takeList();
    return list ? idsOf(*list) : Ids();
  }
  static std::chrono::steady_clock::time_point farAway() {
    return std::chrono::steady_clock::now() + std::chrono::minutes(1);
  }

  using State = zk::agent::CacheClient::State;
  ScopedService validity{"SecurityIF",
                         std::make_shared<zk::agent::ClientValidity>(
                             [](long session) { return session == LocalChannel::SESSION; })};
  std::shared_ptr<zk::agent::EventCache> cache = std::make_shared<zk::agent::EventCache>();
};

TEST_F(Cache, keepsAlarmsAndOtherEventsInOneOrder) {
  OpenGate open;
  const auto one = client(open);
  cache->push(makeAlarm("1"));
  EXPECT_EQ(fetch(*one), Ids{"1"});
  EXPECT_EQ(one->wait({}), State::TIME_OUT);
  cache->push(makeCreation("2"));
  EXPECT_EQ(fetch(*one), Ids{"2"});
}

TEST_F(Cache, asksAGateOnlyAboutTypesThatItWants) {
  OpenGate deaf;
  OpenGate open;
  deaf.wants = false;
  const auto first = client(deaf);
  const auto second = client(open, CLIENT + 1);
  cache->push(makeAlarm("1"));
  EXPECT_EQ(fetch(*second), Ids{"1"});
  EXPECT_EQ(deaf.judged, 0);
  EXPECT_EQ(open.judged, 1);
  EXPECT_EQ(first->wait({}), State::TIME_OUT);
}

TEST_F(Cache, givesAnEventToThoseWhoseGatesLetItIn) {
  OpenGate shut;
  OpenGate open;
  shut.admits = false;
  const auto first = client(shut);
  const auto second = client(open, CLIENT + 1);
  cache->push(makeAlarm("1"));
  shut.admits = true;
  cache->push(makeAlarm("2"));
  EXPECT_EQ(fetch(*first), Ids{"2"});
  Ids all = fetch(*second);
  while (all.size() < 2) {
    const Ids more = fetch(*second);
    all.insert(all.end(), more.begin(), more.end());
  }
  EXPECT_EQ(all, numbers(1, 2));
}

TEST_F(Cache, countsOnlyWhatReachesTheClients) {
  OpenGate open;
  const auto one = client(open);
  FixedAgentConfig config;
  config.notifyModel = 1;  // does not use the cache
  cache->push(makeAlarm("1"));
  EXPECT_EQ(open.judged, 1);
  EXPECT_EQ(open.gate->waiting(), 0U);
}

TEST_F(Cache, endsWaitsWithTheClient) {
  OpenGate open;
  const auto one = client(open);
  auto waiting = std::async(std::launch::async, [&] { return one->wait(farAway()); });
  one->end();
  EXPECT_EQ(waiting.get(), State::OVER);
  EXPECT_TRUE(open.gate->isClosed());
  EXPECT_EQ(one->takeList(), nullptr);
}

// A late end of the old client must not take the new one away.
TEST_F(Cache, endsAClientOnce) {
  OpenGate open;
  OpenGate other;
  const auto old = client(open);
  old->end();
  const auto next = client(other);
  old->end();
  cache->push(makeAlarm("1"));
  EXPECT_EQ(fetch(*next), Ids{"1"});
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
  std::atomic<bool> disconnected{false};
  std::thread waiting([&] {
    try {
      client.next();
    } catch (const CORBA::Exception&) {
      disconnected = true;
    }
  });
  local->session->close();
  waiting.join();
  local->service.stop();
  _exit(taken && empty && disconnected ? 0 : 1);
}

TEST(NoValidityServiceDeathTest, putsTheCacheOutOfUseWithoutHangingTheAgent) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(loseTheValidityService(), testing::ExitedWithCode(0), "is out of use");
}

}  // namespace
