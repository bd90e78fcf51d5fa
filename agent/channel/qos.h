// The quality of service of the channel, an admin or a proxy, and the channel's
// own properties: what can be set, what is fixed, and what is refused. Safe on
// any thread.
#ifndef ZK_AGENT_CHANNEL_QOS_H
#define ZK_AGENT_CHANNEL_QOS_H

#include <chrono>

#include "agent/channel/settings.h"
#include "zk_quornex/idl/channel.h"
#include "zk_quornex/platform/threadsafety.h"

namespace zk::agent {

struct QosValues {
  CORBA::Long batch = 100;          // events in one push of a sequence
  CORBA::ULongLong pacing = 0;      // units of 100 ns: how long such a push gathers events; 0: not
  CORBA::Long eventsPerConsumer{};  // that may wait; 0: as many as the channel keeps
};

class Qos {
 public:
  // What may be asked for, at most.
  struct Most {
    CORBA::Long batch;
    CORBA::Long eventsPerConsumer;
  };
  static Most mostOf(const ChannelSettings& settings);

  Qos(const QosValues& initial, const Most& most) : most_(most), values_(initial) {}

  // The three that can be set; the reliabilities, BestEffort; OrderPolicy and
  // DiscardPolicy, FifoOrder; StartTimeSupported and StopTimeSupported, false.
  // The caller owns the result.
  CosNotification::QoSProperties* get() const;

  // Throws UnsupportedQoS with an entry for each that cannot be, CORBA::BAD_PARAM
  // for far more than there are; nothing is changed then. Fixed ones are accepted with the value
  // that they have.
  void set(const CosNotification::QoSProperties& properties);

  // As set, without setting. Gives the ranges of those that could be set and were
  // not asked for. The caller owns the result.
  CosNotification::NamedPropertyRangeSeq* validate(
      const CosNotification::QoSProperties& properties) const;

  QosValues values() const;
  // How many events may wait.
  long limit() const;
  std::chrono::nanoseconds pacing() const;

 private:
  QosValues checked(const CosNotification::QoSProperties& properties) const;

  const Most most_;
  mutable Mutex mutex_;
  QosValues values_ ZK_GUARDED_BY(mutex_);
};

// The channel's own properties: told, and accepted only as they are. A consumer's
// own queue is bounded by its quality of service; there is no other, hence a
// MaxQueueLength of 0. Nobody supplies but the EMS.
class FixedProperties {
 public:
  // maxConsumers: proxies that a session may have.
  explicit FixedProperties(CORBA::Long maxConsumers) : maxConsumers_(maxConsumers) {}

  // The caller owns the result.
  CosNotification::AdminProperties* get() const;
  // Throws UnsupportedAdmin with an entry for each that would be a change,
  // CORBA::BAD_PARAM for far more than there are.
  void check(const CosNotification::AdminProperties& properties) const;

 private:
  const CORBA::Long maxConsumers_;
};

// For an event's own quality of service: no event has one. Throws UnsupportedQoS
// unless nothing is asked for, CORBA::BAD_PARAM for a list that is too long; gives an empty list,
// which the caller owns.
CosNotification::NamedPropertyRangeSeq* validateEventQos(
    const CosNotification::QoSProperties& properties);

}  // namespace zk::agent

#endif
