// An NMS's four kinds of clients, connected.
#ifndef ZK_TESTS_AGENT_CHANNEL_SUPPORT_CLIENTS_H
#define ZK_TESTS_AGENT_CHANNEL_SUPPORT_CLIENTS_H

#include "tests/agent/channel/support/localchannel.h"

namespace zk::test {

struct StructuredPush {
  explicit StructuredPush(LocalChannel& local) : StructuredPush(local, local.admin.in()) {}
  StructuredPush(LocalChannel& local, CosNotifyChannelAdmin::ConsumerAdmin_ptr admin)
      : proxy(local.push<CosNotifyChannelAdmin::StructuredProxyPushSupplier>(
            CosNotifyChannelAdmin::STRUCTURED_EVENT, admin)),
        consumer(new StructuredConsumer),
        reference(local.activate<CosNotifyComm::StructuredPushConsumer>(consumer)) {
    consumer->_add_ref();
  }
  ~StructuredPush() { consumer->_remove_ref(); }
  StructuredPush(const StructuredPush&) = delete;
  StructuredPush& operator=(const StructuredPush&) = delete;
  void connect() { proxy->connect_structured_push_consumer(reference.in()); }

  CosNotifyChannelAdmin::StructuredProxyPushSupplier_var proxy;
  StructuredConsumer* const consumer;
  CosNotifyComm::StructuredPushConsumer_var reference;
};

struct SequencePush {
  explicit SequencePush(LocalChannel& local) : SequencePush(local, local.admin.in()) {}
  SequencePush(LocalChannel& local, CosNotifyChannelAdmin::ConsumerAdmin_ptr admin)
      : proxy(local.push<CosNotifyChannelAdmin::SequenceProxyPushSupplier>(
            CosNotifyChannelAdmin::SEQUENCE_EVENT, admin)),
        consumer(new SequenceConsumer),
        reference(local.activate<CosNotifyComm::SequencePushConsumer>(consumer)) {
    consumer->_add_ref();
  }
  ~SequencePush() { consumer->_remove_ref(); }
  SequencePush(const SequencePush&) = delete;
  SequencePush& operator=(const SequencePush&) = delete;
  void connect() { proxy->connect_sequence_push_consumer(reference.in()); }

  CosNotifyChannelAdmin::SequenceProxyPushSupplier_var proxy;
  SequenceConsumer* const consumer;
  CosNotifyComm::SequencePushConsumer_var reference;
};

struct StructuredPull {
  explicit StructuredPull(LocalChannel& local) : StructuredPull(local, local.admin.in()) {}
  StructuredPull(LocalChannel& local, CosNotifyChannelAdmin::ConsumerAdmin_ptr admin)
      : proxy(local.pull<CosNotifyChannelAdmin::StructuredProxyPullSupplier>(
            CosNotifyChannelAdmin::STRUCTURED_EVENT, admin)) {}
  void connect() {
    proxy->connect_structured_pull_consumer(CosNotifyComm::StructuredPullConsumer::_nil());
  }
  std::string next() {
    const CosNotification::StructuredEvent_var event = proxy->pull_structured_event();
    return idOf(event.in());
  }
  Ids next(int count) {
    Ids ids;
    for (int i = 0; i < count; ++i) {
      ids.push_back(next());
    }
    return ids;
  }
  // What there is, without waiting.
  Ids rest() {
    Ids ids;
    CORBA::Boolean has = true;
    while (has) {
      const CosNotification::StructuredEvent_var event = proxy->try_pull_structured_event(has);
      if (has) {
        ids.push_back(idOf(event.in()));
      }
    }
    return ids;
  }

  CosNotifyChannelAdmin::StructuredProxyPullSupplier_var proxy;
};

struct SequencePull {
  explicit SequencePull(LocalChannel& local) : SequencePull(local, local.admin.in()) {}
  SequencePull(LocalChannel& local, CosNotifyChannelAdmin::ConsumerAdmin_ptr admin)
      : proxy(local.pull<CosNotifyChannelAdmin::SequenceProxyPullSupplier>(
            CosNotifyChannelAdmin::SEQUENCE_EVENT, admin)) {}
  void connect() {
    proxy->connect_sequence_pull_consumer(CosNotifyComm::SequencePullConsumer::_nil());
  }
  Ids next(CORBA::Long most) {
    const CosNotification::EventBatch_var batch = proxy->pull_structured_events(most);
    return idsOf(batch.in());
  }
  Ids tryNext(CORBA::Long most) {
    CORBA::Boolean has = false;
    const CosNotification::EventBatch_var batch = proxy->try_pull_structured_events(most, has);
    EXPECT_EQ(has, batch.in().length() != 0);
    return idsOf(batch.in());
  }

  CosNotifyChannelAdmin::SequenceProxyPullSupplier_var proxy;
};

// What a client has been sent comes after it in its queue: its arrival proves
// that nothing else is to come.
inline void sendSentinel() { send(makeCreation("sentinel")); }

template <class Push>
bool receives(const Push& client, const Ids& expected) {
  const bool came = becomesTrue([&] { return client.consumer->count() >= expected.size(); });
  EXPECT_EQ(client.consumer->ids(), expected);
  return came;
}

}  // namespace zk::test

#endif
