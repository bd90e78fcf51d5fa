// Consumers that hang, fail or vanish.
#include <gtest/gtest.h>

#include <set>
#include <thread>

#include "tests/agent/channel/support/clients.h"

namespace {

using namespace zk::test;

class Failure : public testing::Test {
 protected:
  bool isDestroyed(const CosNotifyChannelAdmin::ProxySupplier_ptr proxy) {
    return becomesTrue([&] {
      try {
        proxy->MyType();
        return false;
      } catch (const CORBA::OBJECT_NOT_EXIST&) {
        return true;
      }
    });
  }

  LocalChannel local;
};

TEST_F(Failure, ofOneConsumerToReturnDelaysNoOther) {
  StructuredPush hanging(local);
  StructuredPush structured(local);
  SequencePush sequence(local);
  StructuredPull pulling(local);
  Gate gate;
  hanging.consumer->onPush = [&] { gate.pass(); };
  hanging.connect();
  structured.connect();
  sequence.connect();
  pulling.connect();
  sendNumbers(1, 50);
  EXPECT_TRUE(receives(structured, numbers(1, 50)));
  EXPECT_TRUE(receives(sequence, numbers(1, 50)));
  EXPECT_EQ(pulling.next(50), numbers(1, 50));
  EXPECT_EQ(hanging.consumer->ids(), Ids());
  gate.open();
  EXPECT_TRUE(receives(hanging, numbers(1, 50)));
}

TEST_F(Failure, thatPassesIsSurvived) {
  StructuredPush client(local);
  client.consumer->onPush = [&] {
    if (client.consumer->calls <= 3) {
      throw CORBA::TRANSIENT();
    }
  };
  client.connect();
  sendNumbers(1, 10);
  EXPECT_TRUE(receives(client, numbers(1, 10)));
}

TEST_F(Failure, thatLastsDestroysTheProxyAndIsLogged) {
  testing::internal::CaptureStderr();
  SequencePush client(local);
  StructuredPush other(local);
  client.consumer->onPush = [] { throw CORBA::COMM_FAILURE(); };
  client.connect();
  other.connect();
  sendNumbers(1, 3);
  EXPECT_TRUE(isDestroyed(client.proxy.in()));
  EXPECT_GT(client.consumer->calls, 2) << "it was tried again before";
  EXPECT_TRUE(receives(other, numbers(1, 3)));
  EXPECT_EQ(local.session->proxies().count(), 1U);
  local.service.stop();
  EXPECT_NE(testing::internal::GetCapturedStderr().find(
                "session 7: push proxy 1 destroyed: its consumer failed with COMM_FAILURE"),
            std::string::npos);
}

TEST_F(Failure, ofAConsumerThatIsGoneDestroysTheProxy) {
  StructuredPush gone(local);
  gone.consumer->onPush = [] { throw CORBA::OBJECT_NOT_EXIST(); };
  gone.connect();
  StructuredPush saysSo(local);
  saysSo.consumer->onPush = [] { throw CosEventComm::Disconnected(); };
  saysSo.connect();
  sendNumbers(1, 1);
  EXPECT_TRUE(isDestroyed(gone.proxy.in()));
  EXPECT_TRUE(isDestroyed(saysSo.proxy.in()));
  EXPECT_EQ(gone.consumer->calls, 1);
  EXPECT_EQ(saysSo.consumer->calls, 1);
}

TEST_F(Failure, toAskLosesEventsAndIsToldOnce) {
  StructuredPull idle(local);
  CosNotification::QoSProperties qos;
  qos.length(1);
  qos[0].name = CORBA::string_dup("MaxEventsPerConsumer");
  qos[0].value = toAny(CORBA::Long{2});
  idle.proxy->set_qos(qos);
  StructuredPush other(local);
  idle.connect();
  other.connect();
  sendNumbers(1, 6);
  ASSERT_TRUE(receives(other, numbers(1, 6)));
  EXPECT_TRUE(local.losses->becomes({"occurred 20121120094200.0Z 3"}));
  EXPECT_EQ(idle.next(2), numbers(1, 2));
  EXPECT_TRUE(local.losses->becomes({"occurred 20121120094200.0Z 3", "cleared"}));
  sendNumbers(7, 8);
  EXPECT_EQ(idle.next(2), numbers(7, 8));
  EXPECT_EQ(local.losses->lines().size(), 2U);
}

// The EMS is faster than the cache can be fed.
TEST(Overrun, ofTheCacheIsALossToEverybody) {
  Gate gate;
  std::atomic<bool> asked{false};
  LocalChannel local;
  local.onValidity = [&] {
    asked = true;
    gate.pass();
  };
  StructuredPush client(local);
  client.connect();
  send(makeCreation("first"));
  ASSERT_TRUE(becomesTrue([&] { return asked.load(); }));
  for (int i = 0; i <= 10000; ++i) {
    send(makeCreation("later"));
  }
  ASSERT_GT(zk::platform::eventSinkCounts("event-cache").dropped, 0U);
  gate.open();
  ASSERT_TRUE(becomesTrue([&] { return local.losses->lines().size() >= 2; }));
  EXPECT_EQ(local.losses->lines().at(0).substr(0, 9), "occurred ");
  EXPECT_EQ(local.losses->lines().at(1), "cleared");
}

// Producers on many threads: the cache puts their events into one order, and that
// is what every client sees, whichever way it gets them.
TEST(ManyClients, allSeeTheSameEventsInTheSameOrder) {
  LocalChannel local;
  std::vector<std::unique_ptr<StructuredPush>> structured;
  std::vector<std::unique_ptr<SequencePush>> sequences;
  StructuredPull one(local);
  SequencePull many(local);
  StructuredPush hanging(local);
  Gate gate;
  hanging.consumer->onPush = [&] { gate.pass(); };
  for (int i = 0; i < 5; ++i) {
    structured.push_back(std::make_unique<StructuredPush>(local));
    sequences.push_back(std::make_unique<SequencePush>(local));
    structured.back()->connect();
    sequences.back()->connect();
  }
  one.connect();
  many.connect();
  hanging.connect();
  constexpr std::size_t TOTAL = 1200;
  std::vector<std::thread> producers;
  producers.reserve(3);
  for (int producer = 0; producer < 3; ++producer) {
    producers.emplace_back([producer] { sendNumbers(producer * 1000, producer * 1000 + 399); });
  }
  const Ids order = one.next(TOTAL);
  Ids pulled;
  while (pulled.size() < TOTAL) {
    const Ids some = many.next(37);
    pulled.insert(pulled.end(), some.begin(), some.end());
  }
  EXPECT_EQ(pulled, order);
  for (const auto& client : structured) {
    EXPECT_TRUE(receives(*client, order));
  }
  for (const auto& client : sequences) {
    EXPECT_TRUE(receives(*client, order));
  }
  for (std::thread& producer : producers) {
    producer.join();
  }
  EXPECT_EQ(std::set<std::string>(order.begin(), order.end()).size(), TOTAL);
  gate.open();
}

}  // namespace
