// Delivering one proxy's events to its consumer, step by step. For one thread at a
// time.
#ifndef ZK_AGENT_CHANNEL_PUSHER_H
#define ZK_AGENT_CHANNEL_PUSHER_H

#include <chrono>
#include <memory>
#include <string>

#include "agent/channel/eventqueue.h"
#include "agent/channel/gate.h"
#include "agent/channel/qos.h"
#include "agent/channel/settings.h"

namespace zk::agent {

// The consumer that a push proxy delivers to.
class PushTarget {
 public:
  virtual ~PushTarget() = default;
  // Pushes the events from at on, as many as go into one call, and returns how
  // many those were. What the call throws passes through.
  virtual CORBA::ULong push(const CosNotification::EventBatch& batch, CORBA::ULong at) = 0;
  // Whether one call takes many events.
  virtual bool takesBatches() const = 0;
  // Tells the consumer that the channel has let go of it.
  virtual void disconnect() = 0;
};

// Calls to the consumers fail when they take longer than limit.
std::unique_ptr<PushTarget> targetOf(CosNotifyComm::StructuredPushConsumer_ptr consumer,
                                     std::chrono::milliseconds limit);
std::unique_ptr<PushTarget> targetOf(CosNotifyComm::SequencePushConsumer_ptr consumer,
                                     std::chrono::milliseconds limit);

// Events leave in order. A call that fails is repeated with the same events until
// it succeeds or the consumer is given up; after a failure that left open whether
// the consumer had taken them, it may see them twice.
class Pusher {
 public:
  Pusher(std::shared_ptr<Gate> gate, std::shared_ptr<EventQueue> queue, std::shared_ptr<Qos> qos,
         std::shared_ptr<PushTarget> target, const ChannelSettings& settings);

  enum class Step { AGAIN, CLOSED, FAILED };
  // Waits for events, or pushes once, or waits before the next try. CLOSED: the
  // gate is; FAILED: the consumer is given up.
  Step step();

  // Why, after FAILED.
  const std::string& failure() const { return failure_; }

 private:
  Step collect();
  Step push();
  Step giveUp(const std::string& why);
  Step retryLater(const std::string& why);

  const std::shared_ptr<Gate> gate_;
  const std::shared_ptr<EventQueue> queue_;
  const std::shared_ptr<Qos> qos_;
  const std::shared_ptr<PushTarget> target_;
  const ChannelSettings settings_;

  CosNotification::EventBatch_var batch_;
  CORBA::ULong at_ = 0;  // what the consumer has of the batch
  std::chrono::milliseconds retry_{0};
  Gate::Clock::time_point failingSince_{};
  std::string failure_;
};

}  // namespace zk::agent

#endif
