#include "agent/channel/pusher.h"

#include <algorithm>
#include <utility>

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

Pusher::Pusher(std::shared_ptr<Gate> gate, std::shared_ptr<EventQueue> queue,
               std::shared_ptr<Qos> qos, std::shared_ptr<PushTarget> target,
               const ChannelSettings& settings)
    : gate_(std::move(gate)),
      queue_(std::move(queue)),
      qos_(std::move(qos)),
      target_(std::move(target)),
      settings_(settings),
      batch_(new EventQueue::Batch) {}

Pusher::Step Pusher::step() {
  if (!gate_->awaitResumed()) {
    return Step::CLOSED;
  }
  return at_ < batch_->length() ? push() : collect();
}

// First for whatever comes; what comes soon after it is waited for as long as the
// pacing allows.
Pusher::Step Pusher::collect() {
  at_ = 0;
  batch_ = new EventQueue::Batch;  // an idle client keeps no events
  const bool takesBatches = target_->takesBatches();
  const CORBA::ULong most =
      takesBatches ? static_cast<CORBA::ULong>(qos_->values().batch) : settings_.eventsPerCall;
  const CORBA::ULong first = queue_->fetch(most, batch_.inout(), EventQueue::never());
  if (takesBatches && first < most && qos_->pacing().count() != 0) {
    const auto now = Gate::Clock::now();
    gate_->awaitWaiting(most - first, now + qos_->pacing());
    queue_->fetch(most, batch_.inout(), now,
                  std::min(most, first + static_cast<CORBA::ULong>(gate_->waiting())));
  }
  return Step::AGAIN;
}

Pusher::Step Pusher::push() {
  try {
    const CORBA::ULong pushed = target_->push(batch_.in(), at_);
    at_ += pushed;
    gate_->delivered(pushed);
    retry_ = std::chrono::milliseconds(0);
    return Step::AGAIN;
  } catch (const CORBA::OBJECT_NOT_EXIST& gone) {
    return giveUp(gone._name());
  } catch (const CORBA::INV_OBJREF& wrong) {
    return giveUp(wrong._name());
  } catch (const CORBA::BAD_OPERATION& wrong) {
    return giveUp(wrong._name());
  } catch (const CORBA::NO_IMPLEMENT& wrong) {
    return giveUp(wrong._name());
  } catch (const CORBA::SystemException& failure) {
    return retryLater(failure._name());
  } catch (const CORBA::Exception& refused) {
    return giveUp(refused._name());  // Disconnected
  }
}

Pusher::Step Pusher::giveUp(const std::string& why) {
  failure_ = why;
  return Step::FAILED;
}

Pusher::Step Pusher::retryLater(const std::string& why) {
  const auto now = Gate::Clock::now();
  if (retry_.count() == 0) {
    retry_ = settings_.firstRetry;
    failingSince_ = now;
  } else if (now - failingSince_ >= settings_.retryFor) {
    return giveUp(why + ", again and again for too long");
  } else {
    retry_ = std::min(retry_ * 2, settings_.longestRetry);
  }
  gate_->pause(retry_);
  return Step::AGAIN;
}

}  // namespace zk::agent
