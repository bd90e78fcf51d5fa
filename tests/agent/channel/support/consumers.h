// Consumers that keep the ids of what is pushed to them, and can be made to
// hang, to fail or to be gone.
#ifndef ZK_TESTS_AGENT_CHANNEL_SUPPORT_CONSUMERS_H
#define ZK_TESTS_AGENT_CHANNEL_SUPPORT_CONSUMERS_H

#include <atomic>
#include <functional>
#include <mutex>
#include <vector>

#include "tests/agent/channel/support/events.h"
#include "zk_quornex/idl/channel.h"
#include "zk_quornex/idl/events.h"

namespace zk::test {

class Received {
 public:
  Ids ids() const {
    const std::lock_guard<std::mutex> guard(mutex_);
    return ids_;
  }
  std::vector<std::size_t> batches() const {
    const std::lock_guard<std::mutex> guard(mutex_);
    return batches_;
  }
  std::size_t count() const { return ids().size(); }

  // Called before the events are kept; throws what the consumer shall throw.
  std::function<void()> onPush = [] {};
  std::atomic<int> calls{0};
  std::atomic<int> disconnects{0};

 protected:
  void keep(const Ids& ids) {
    ++calls;
    onPush();
    const std::lock_guard<std::mutex> guard(mutex_);
    ids_.insert(ids_.end(), ids.begin(), ids.end());
    batches_.push_back(ids.size());
  }

 private:
  mutable std::mutex mutex_;
  Ids ids_;
  std::vector<std::size_t> batches_;
};

class StructuredConsumer : public Received,
                           public virtual POA_CosNotifyComm::StructuredPushConsumer,
                           public virtual PortableServer::RefCountServantBase {
 public:
  void push_structured_event(const CosNotification::StructuredEvent& event) override {
    keep({idOf(event)});
  }
  void disconnect_structured_push_consumer() override { ++disconnects; }
  void offer_change(const CosNotification::EventTypeSeq&,
                    const CosNotification::EventTypeSeq&) override {}
};

class SequenceConsumer : public Received,
                         public virtual POA_CosNotifyComm::SequencePushConsumer,
                         public virtual PortableServer::RefCountServantBase {
 public:
  void push_structured_events(const CosNotification::EventBatch& events) override {
    keep(idsOf(events));
  }
  void disconnect_sequence_push_consumer() override { ++disconnects; }
  void offer_change(const CosNotification::EventTypeSeq&,
                    const CosNotification::EventTypeSeq&) override {}
};

class StructuredPuller : public virtual POA_CosNotifyComm::StructuredPullConsumer,
                         public virtual PortableServer::RefCountServantBase {
 public:
  void disconnect_structured_pull_consumer() override { ++disconnects; }
  void offer_change(const CosNotification::EventTypeSeq&,
                    const CosNotification::EventTypeSeq&) override {}
  std::atomic<int> disconnects{0};
};

}  // namespace zk::test

#endif
