// What the agent's channel calls: consumers that pass on what they are given.
#ifndef ZK_NMS_EVENTS_CONSUMERS_H
#define ZK_NMS_EVENTS_CONSUMERS_H

#include "nms/events/queue.h"
#include "zk_quornex/idl/channel.h"
#include "zk_quornex/idl/events.h"

namespace zk::nms {

// The queue must outlive the ORB. Called on the ORB's threads.
class SequenceConsumer : public POA_CosNotifyComm::SequencePushConsumer {
 public:
  SequenceConsumer(EventQueue& queue, const ValueReader& reader) : queue_(queue), reader_(reader) {}

  void push_structured_events(const CosNotification::EventBatch& events) override;
  void disconnect_sequence_push_consumer() override { queue_.disconnected(); }
  void offer_change(const CosNotification::EventTypeSeq&,
                    const CosNotification::EventTypeSeq&) override {}

 private:
  EventQueue& queue_;
  const ValueReader reader_;
};

class StructuredConsumer : public POA_CosNotifyComm::StructuredPushConsumer {
 public:
  StructuredConsumer(EventQueue& queue, const ValueReader& reader)
      : queue_(queue), reader_(reader) {}

  void push_structured_event(const CosNotification::StructuredEvent& event) override;
  void disconnect_structured_push_consumer() override { queue_.disconnected(); }
  void offer_change(const CosNotification::EventTypeSeq&,
                    const CosNotification::EventTypeSeq&) override {}

 private:
  EventQueue& queue_;
  const ValueReader reader_;
};

// Only hears of the end: it is this program that fetches.
class PullConsumer : public POA_CosNotifyComm::SequencePullConsumer {
 public:
  explicit PullConsumer(EventQueue& queue) : queue_(queue) {}

  void disconnect_sequence_pull_consumer() override { queue_.disconnected(); }
  void offer_change(const CosNotification::EventTypeSeq&,
                    const CosNotification::EventTypeSeq&) override {}

 private:
  EventQueue& queue_;
};

}  // namespace zk::nms

#endif
