// The properties of the channel's administration. Immutable.
#ifndef ZK_AGENT_CHANNEL_ADMINVALUES_H
#define ZK_AGENT_CHANNEL_ADMINVALUES_H

#include "zk_quornex/idl/events.h"

namespace zk::agent {

// Told, and accepted only as they are. A consumer's own queue is bounded by its
// quality of service; there is no other, hence a MaxQueueLength of 0. Nobody
// supplies but the EMS.
class AdminValues {
 public:
  // maxConsumers: proxies that a session may have.
  explicit AdminValues(CORBA::Long maxConsumers) : maxConsumers_(maxConsumers) {}

  // The caller owns the result.
  CosNotification::AdminProperties* get() const;
  // Throws UnsupportedAdmin with an entry for each that would be a change.
  void check(const CosNotification::AdminProperties& properties) const;

 private:
  const CORBA::Long maxConsumers_;
};

}  // namespace zk::agent

#endif
