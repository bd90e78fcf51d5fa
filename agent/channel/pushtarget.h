// The consumer that a push proxy delivers to. For one thread at a time.
#ifndef ZK_AGENT_CHANNEL_PUSHTARGET_H
#define ZK_AGENT_CHANNEL_PUSHTARGET_H

#include <chrono>
#include <memory>

#include "zk_quornex/idl/channel.h"
#include "zk_quornex/idl/events.h"

namespace zk::agent {

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

}  // namespace zk::agent

#endif
