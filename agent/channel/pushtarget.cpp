#include "agent/channel/pushtarget.h"

#include "agent/orb/orb.h"

namespace zk::agent {

namespace {

using CosNotification::EventBatch;
using CosNotifyComm::SequencePushConsumer;
using CosNotifyComm::SequencePushConsumer_var;
using CosNotifyComm::StructuredPushConsumer;
using CosNotifyComm::StructuredPushConsumer_var;

class StructuredTarget : public PushTarget {
 public:
  explicit StructuredTarget(const StructuredPushConsumer_var& consumer) : consumer_(consumer) {}

  CORBA::ULong push(const EventBatch& batch, CORBA::ULong at) override {
    consumer_->push_structured_event(batch[at]);
    return 1;
  }
  bool takesBatches() const override { return false; }
  void disconnect() override { consumer_->disconnect_structured_push_consumer(); }

 private:
  const StructuredPushConsumer_var consumer_;
};

// at is always 0: a batch is taken as a whole or not at all.
class SequenceTarget : public PushTarget {
 public:
  explicit SequenceTarget(const SequencePushConsumer_var& consumer) : consumer_(consumer) {}

  CORBA::ULong push(const EventBatch& batch, CORBA::ULong) override {
    consumer_->push_structured_events(batch);
    return batch.length();
  }
  bool takesBatches() const override { return true; }
  void disconnect() override { consumer_->disconnect_sequence_push_consumer(); }

 private:
  const SequencePushConsumer_var consumer_;
};

}  // namespace

// Narrowing unchecked: asking for the type would be a call of its own.
std::unique_ptr<PushTarget> targetOf(CosNotifyComm::StructuredPushConsumer_ptr consumer,
                                     std::chrono::milliseconds limit) {
  const CORBA::Object_var limited = withCallLimit(consumer, limit);
  return std::make_unique<StructuredTarget>(
      StructuredPushConsumer::_unchecked_narrow(limited.in()));
}

std::unique_ptr<PushTarget> targetOf(CosNotifyComm::SequencePushConsumer_ptr consumer,
                                     std::chrono::milliseconds limit) {
  const CORBA::Object_var limited = withCallLimit(consumer, limit);
  return std::make_unique<SequenceTarget>(SequencePushConsumer::_unchecked_narrow(limited.in()));
}

}  // namespace zk::agent
