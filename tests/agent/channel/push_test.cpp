#include <gtest/gtest.h>

#include <numeric>

#include "tests/agent/channel/support/clients.h"

namespace {

using namespace zk::test;

class Push : public testing::Test {
 protected:
  LocalChannel local;
};

TEST_F(Push, deliversEventsOneByOneInOrder) {
  StructuredPush client(local);
  client.connect();
  sendNumbers(1, 200);
  EXPECT_TRUE(receives(client, numbers(1, 200)));
}

TEST_F(Push, deliversSequencesInOrder) {
  SequencePush client(local);
  client.connect();
  sendNumbers(1, 200);
  EXPECT_TRUE(receives(client, numbers(1, 200)));
  const auto batches = client.consumer->batches();
  EXPECT_EQ(std::accumulate(batches.begin(), batches.end(), std::size_t{0}), 200U);
}

TEST_F(Push, beginsWithConnecting) {
  StructuredPush early(local);
  StructuredPush late(local);
  early.connect();
  sendNumbers(1, 3);
  ASSERT_TRUE(receives(early, numbers(1, 3)));
  late.connect();
  sendNumbers(4, 5);
  EXPECT_TRUE(receives(late, numbers(4, 5)));
  EXPECT_TRUE(receives(early, numbers(1, 5)));
}

TEST_F(Push, connectsOnceAndOnlyToSomebody) {
  StructuredPush client(local);
  EXPECT_THROW(
      client.proxy->connect_structured_push_consumer(CosNotifyComm::StructuredPushConsumer::_nil()),
      CORBA::BAD_PARAM);
  client.connect();
  EXPECT_THROW(client.connect(), CosEventChannelAdmin::AlreadyConnected);
  SequencePush other(local);
  EXPECT_THROW(
      other.proxy->connect_sequence_push_consumer(CosNotifyComm::SequencePushConsumer::_nil()),
      CORBA::BAD_PARAM);
  other.connect();
  EXPECT_THROW(other.connect(), CosEventChannelAdmin::AlreadyConnected);
}

TEST_F(Push, keepsEventsWhileSuspended) {
  StructuredPush client(local);
  SequencePush other(local);
  client.connect();
  other.connect();
  client.proxy->suspend_connection();
  sendNumbers(1, 5);
  ASSERT_TRUE(receives(other, numbers(1, 5)));
  EXPECT_EQ(client.consumer->ids(), Ids());
  client.proxy->resume_connection();
  EXPECT_TRUE(receives(client, numbers(1, 5)));
}

TEST_F(Push, refusesWhatItsStateDoesNotAllow) {
  StructuredPush client(local);
  EXPECT_THROW(client.proxy->suspend_connection(), CosNotifyChannelAdmin::NotConnected);
  EXPECT_THROW(client.proxy->resume_connection(), CosNotifyChannelAdmin::NotConnected);
  client.connect();
  EXPECT_THROW(client.proxy->resume_connection(), CosNotifyChannelAdmin::ConnectionAlreadyActive);
  client.proxy->suspend_connection();
  EXPECT_THROW(client.proxy->suspend_connection(),
               CosNotifyChannelAdmin::ConnectionAlreadyInactive);
}

TEST_F(Push, endsWithDisconnecting) {
  StructuredPush client(local);
  StructuredPush other(local);
  client.connect();
  other.connect();
  client.proxy->disconnect_structured_push_supplier();
  EXPECT_THROW(client.proxy->suspend_connection(), CORBA::OBJECT_NOT_EXIST);
  EXPECT_EQ(local.session->proxies().count(), 1U);
  sendNumbers(1, 2);
  EXPECT_TRUE(receives(other, numbers(1, 2)));
  EXPECT_EQ(client.consumer->ids(), Ids());
  EXPECT_EQ(client.consumer->disconnects, 0) << "the client knows what it did";
}

TEST_F(Push, limitsBatchesToWhatTheClientAskedFor) {
  SequencePush client(local);
  CosNotification::QoSProperties qos;
  qos.length(1);
  qos[0].name = CORBA::string_dup("MaximumBatchSize");
  qos[0].value = toAny(CORBA::Long{3});
  client.proxy->set_qos(qos);
  client.connect();
  client.proxy->suspend_connection();
  sendNumbers(1, 20);
  client.proxy->resume_connection();
  EXPECT_TRUE(receives(client, numbers(1, 20)));
  for (const std::size_t batch : client.consumer->batches()) {
    EXPECT_LE(batch, 3U);
  }
}

TEST_F(Push, gathersEventsForAsLongAsThePacingAllows) {
  SequencePush client(local);
  CosNotification::QoSProperties qos;
  qos.length(2);
  qos[0].name = CORBA::string_dup("MaximumBatchSize");
  qos[0].value = toAny(CORBA::Long{10});
  qos[1].name = CORBA::string_dup("PacingInterval");
  qos[1].value = toAny(CORBA::ULongLong{600000000});
  client.proxy->set_qos(qos);
  client.connect();
  // A minute at most, or ten events: the test would time out on the minute.
  sendNumbers(1, 10);
  EXPECT_TRUE(receives(client, numbers(1, 10)));
}

}  // namespace
