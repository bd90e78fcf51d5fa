#include <gtest/gtest.h>

#include "tests/agent/channel/support/clients.h"

namespace {

using namespace zk::test;

class Pull : public testing::Test {
 protected:
  LocalChannel local;
};

TEST_F(Pull, givesEventsOneByOneInOrder) {
  StructuredPull client(local);
  client.connect();
  sendNumbers(1, 200);
  EXPECT_EQ(client.next(200), numbers(1, 200));
  EXPECT_EQ(client.rest(), Ids());
}

TEST_F(Pull, keepsTheRestOfASequence) {
  SequencePull client(local);
  client.connect();
  sendNumbers(1, 10);
  Ids all;
  while (all.size() < 10) {
    const Ids some = client.next(3);
    EXPECT_LE(some.size(), 3U);
    EXPECT_GE(some.size(), 1U);
    all.insert(all.end(), some.begin(), some.end());
  }
  EXPECT_EQ(all, numbers(1, 10));
  EXPECT_EQ(client.tryNext(3), Ids());
}

TEST_F(Pull, givesAWholeListAtOnce) {
  SequencePull client(local);
  StructuredPush witness(local);
  client.connect();
  witness.connect();
  for (int i = 1; i <= 300; ++i) {
    send(makeCreation(std::to_string(i)));
  }
  ASSERT_TRUE(receives(witness, numbers(1, 300)));
  // All 300 were offered to both; the cache's thread may still be busy.
  Ids all;
  int calls = 0;
  while (all.size() < 300) {
    const Ids some = client.next(1000);
    all.insert(all.end(), some.begin(), some.end());
    ++calls;
  }
  EXPECT_EQ(all, numbers(1, 300));
  EXPECT_LE(calls, 3);
}

TEST_F(Pull, waitsForAnEvent) {
  StructuredPull client(local);
  SequencePull other(local);
  client.connect();
  other.connect();
  std::atomic<int> asking{0};
  std::string first;
  Ids second;
  std::thread one([&] {
    ++asking;
    first = client.next();
  });
  std::thread two([&] {
    ++asking;
    second = other.next(5);
  });
  EXPECT_TRUE(becomesTrue([&] { return asking == 2; }));
  send(makeAlarm("1"));
  one.join();
  two.join();
  EXPECT_EQ(first, "1");
  EXPECT_EQ(second, Ids{"1"});
}

TEST_F(Pull, triesWithoutWaiting) {
  StructuredPull client(local);
  SequencePull other(local);
  client.connect();
  other.connect();
  CORBA::Boolean has = true;
  const CosNotification::StructuredEvent_var none = client.proxy->try_pull_structured_event(has);
  EXPECT_FALSE(has);
  EXPECT_EQ(other.tryNext(10), Ids());
}

TEST_F(Pull, needsAConnection) {
  StructuredPull client(local);
  SequencePull other(local);
  EXPECT_THROW(client.next(), CosEventComm::Disconnected);
  EXPECT_THROW(client.rest(), CosEventComm::Disconnected);
  EXPECT_THROW(other.next(1), CosEventComm::Disconnected);
  client.connect();
  other.connect();
  EXPECT_THROW(client.connect(), CosEventChannelAdmin::AlreadyConnected);
  EXPECT_THROW(other.connect(), CosEventChannelAdmin::AlreadyConnected);
  EXPECT_THROW(other.next(0), CORBA::BAD_PARAM);
  EXPECT_THROW(other.next(-1), CORBA::BAD_PARAM);
}

TEST_F(Pull, endsAWaitingCallWithTheProxy) {
  StructuredPull client(local);
  client.connect();
  std::atomic<bool> asking{false};
  std::atomic<bool> disconnected{false};
  std::thread waiting([&] {
    asking = true;
    try {
      client.next();
    } catch (const CosEventComm::Disconnected&) {
      disconnected = true;
    }
  });
  EXPECT_TRUE(becomesTrue([&] { return asking.load(); }));
  client.proxy->disconnect_structured_pull_supplier();
  waiting.join();
  EXPECT_TRUE(disconnected);
  EXPECT_THROW(client.next(), CORBA::OBJECT_NOT_EXIST);
}

TEST_F(Pull, boundsWhatWaitsForAClientThatNeverAsks) {
  StructuredPull idle(local);
  CosNotification::QoSProperties qos;
  qos.length(1);
  qos[0].name = CORBA::string_dup("MaxEventsPerConsumer");
  qos[0].value = toAny(CORBA::Long{5});
  idle.proxy->set_qos(qos);
  StructuredPush other(local);
  idle.connect();
  other.connect();
  sendNumbers(1, 100);
  ASSERT_TRUE(receives(other, numbers(1, 100)));
  EXPECT_EQ(idle.rest(), numbers(1, 5));
  sendNumbers(101, 103);
  EXPECT_EQ(idle.next(3), numbers(101, 103));
}

}  // namespace
