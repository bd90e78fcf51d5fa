// What ends a session's channel, and what is left then.
#include <gtest/gtest.h>

#include <thread>

#include "tests/agent/channel/support/clients.h"
#include "zk_quornex/messages/messagecach.h"

namespace {

using namespace zk::test;

class Lifecycle : public testing::Test {
 protected:
  LocalChannel local;
};

TEST_F(Lifecycle, ofTheSessionEndsEverythingOfTheChannel) {
  StructuredPush pushing(local);
  SequencePull pulling(local);
  pushing.connect();
  pulling.connect();
  const CosNotifyFilter::FilterFactory_var factory = local.channel->default_filter_factory();
  const CosNotifyFilter::Filter_var filter = factory->create_filter("EXTENDED_TCL");
  CosNotifyChannelAdmin::AdminID id = 0;
  const CosNotifyChannelAdmin::ConsumerAdmin_var admin =
      local.channel->new_for_consumers(CosNotifyChannelAdmin::AND_OP, id);
  local.session->close();
  EXPECT_THROW(local.channel->get_qos(), CORBA::OBJECT_NOT_EXIST);
  EXPECT_THROW(local.admin->get_qos(), CORBA::OBJECT_NOT_EXIST);
  EXPECT_THROW(admin->get_qos(), CORBA::OBJECT_NOT_EXIST);
  EXPECT_THROW(factory->create_filter("EXTENDED_TCL"), CORBA::OBJECT_NOT_EXIST);
  EXPECT_THROW(filter->constraint_grammar(), CORBA::OBJECT_NOT_EXIST);
  EXPECT_THROW(pushing.proxy->MyType(), CORBA::OBJECT_NOT_EXIST);
  EXPECT_THROW(pulling.next(1), CORBA::OBJECT_NOT_EXIST);
  EXPECT_TRUE(becomesTrue([&] { return pushing.consumer->disconnects == 1; }));
  EXPECT_NO_THROW(local.session->close());
}

TEST_F(Lifecycle, endsCallsThatWaitForEvents) {
  StructuredPull client(local);
  SequencePull other(local);
  client.connect();
  other.connect();
  std::atomic<int> asking{0};
  std::atomic<int> disconnected{0};
  const auto ask = [&](auto& one) {
    ++asking;
    try {
      one.proxy->MyType();
      if constexpr (std::is_same_v<std::decay_t<decltype(one)>, StructuredPull>) {
        one.next();
      } else {
        one.next(10);
      }
    } catch (const CosEventComm::Disconnected&) {
      ++disconnected;
    } catch (const CORBA::OBJECT_NOT_EXIST&) {
      ++disconnected;  // it had not begun
    }
  };
  std::thread first([&] { ask(client); });
  std::thread second([&] { ask(other); });
  EXPECT_TRUE(becomesTrue([&] { return asking == 2; }));
  local.session->close();
  first.join();
  second.join();
  EXPECT_EQ(disconnected, 2);
}

TEST_F(Lifecycle, doesNotWaitForAConsumerThatHangs) {
  StructuredPush hanging(local);
  Gate gate;
  std::atomic<bool> called{false};
  hanging.consumer->onPush = [&] {
    called = true;
    gate.pass();
  };
  hanging.connect();
  sendNumbers(1, 5);
  ASSERT_TRUE(becomesTrue([&] { return called.load(); }));
  local.session->close();  // returns although the gate is shut
  gate.open();
  local.service.stop();
  EXPECT_EQ(hanging.consumer->ids(), numbers(1, 1)) << "nothing is pushed after the end";
}

TEST_F(Lifecycle, takesADeadSessionOutOfTheCacheWithTheNextEvent) {
  StructuredPull client(local);
  client.connect();
  local.alive = false;
  std::atomic<bool> disconnected{false};
  std::thread waiting([&] {
    try {
      client.next();
    } catch (const CosEventComm::Disconnected&) {
      disconnected = true;
    }
  });
  sendNumbers(1, 2);
  waiting.join();
  EXPECT_TRUE(disconnected);
}

TEST_F(Lifecycle, tellsAPullingConsumerTheEnd) {
  auto* const puller = new StructuredPuller;
  puller->_add_ref();
  const auto reference = local.activate<CosNotifyComm::StructuredPullConsumer>(puller);
  StructuredPull client(local);
  client.proxy->connect_structured_pull_consumer(reference);
  local.session->close();
  EXPECT_TRUE(becomesTrue([&] { return puller->disconnects == 1; }));
  puller->_remove_ref();
}

TEST_F(Lifecycle, ofAnAdminEndsItsProxiesAlone) {
  CosNotifyChannelAdmin::AdminID id = 0;
  const CosNotifyChannelAdmin::ConsumerAdmin_var admin =
      local.channel->new_for_consumers(CosNotifyChannelAdmin::AND_OP, id);
  StructuredPush own(local, admin.in());
  StructuredPush other(local);
  own.connect();
  other.connect();
  admin->destroy();
  EXPECT_THROW(own.proxy->MyType(), CORBA::OBJECT_NOT_EXIST);
  EXPECT_THROW(admin->MyID(), CORBA::OBJECT_NOT_EXIST);
  EXPECT_THROW(local.channel->get_consumeradmin(id), CosNotifyChannelAdmin::AdminNotFound);
  sendNumbers(1, 2);
  EXPECT_TRUE(receives(other, numbers(1, 2)));
  EXPECT_THROW(local.admin->destroy(), CORBA::NO_PERMISSION);
}

TEST_F(Lifecycle, leavesNoClientInTheCache) {
  for (int round = 0; round < 20; ++round) {
    StructuredPull client(local);
    client.connect();
    sendNumbers(1, 3);
    EXPECT_EQ(client.next(3), numbers(1, 3));
    client.proxy->disconnect_structured_pull_supplier();
    // A client of the cache would have a list.
    for (const long messageClass : {8L, 10L}) {
      for (long proxy = 1; proxy <= 21; ++proxy) {
        notifications::EventList_T* list = nullptr;
        NS_QUORCORBA::NXMessageMgr::Instance()->getMsgList(
            messageClass, LocalChannel::SESSION * 65536 + proxy, list);
        EXPECT_EQ(list, nullptr) << messageClass << " " << proxy;
        delete list;
      }
    }
  }
}

TEST_F(Lifecycle, survivesClientsThatComeAndGoUnderLoad) {
  StructuredPush steady(local);
  steady.connect();
  std::atomic<bool> over{false};
  std::vector<std::thread> threads;
  threads.reserve(3);
  for (int i = 0; i < 3; ++i) {
    threads.emplace_back([&, i] {
      while (!over) {
        if (i == 0) {
          StructuredPush client(local);
          client.connect();
          client.proxy->disconnect_structured_push_supplier();
        } else if (i == 1) {
          SequencePull client(local);
          client.connect();
          client.tryNext(10);
          client.proxy->disconnect_sequence_pull_supplier();
        } else {
          CosNotifyChannelAdmin::AdminID id = 0;
          const CosNotifyChannelAdmin::ConsumerAdmin_var admin =
              local.channel->new_for_consumers(CosNotifyChannelAdmin::OR_OP, id);
          SequencePush client(local, admin.in());
          client.connect();
          admin->destroy();
        }
      }
    });
  }
  sendNumbers(1, 500);
  EXPECT_TRUE(receives(steady, numbers(1, 500)));
  over = true;
  for (std::thread& thread : threads) {
    thread.join();
  }
}

TEST(EventService, refusesSessionsOnceStopped) {
  LocalChannel local;
  local.service.stop();
  EXPECT_THROW(local.service.open(8, local.home, local.losses), CORBA::OBJECT_NOT_EXIST);
  EXPECT_THROW(local.channel->get_qos(), CORBA::OBJECT_NOT_EXIST);
}

}  // namespace
