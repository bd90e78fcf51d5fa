// What bounds one session's use of the event channel, the patience of the push
// threads, and what the parts of a session's channel share. Read-only once the
// channel serves.
#ifndef ZK_AGENT_CHANNEL_SETTINGS_H
#define ZK_AGENT_CHANNEL_SETTINGS_H

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>

#include "agent/base/workers.h"
#include "agent/orb/servanthome.h"
#include "zk_quornex/idl/corba.h"

namespace zk::agent {

class EventCache;
class Losses;

struct ChannelSettings {
  // Events waiting for one consumer, at most; the newest is refused. 0, and
  // anything above what the event cache holds for a client, mean as many as that.
  long eventsPerConsumer = 0;
  // Of one session, each.
  std::size_t proxies = 16;
  std::size_t admins = 16;
  std::size_t filters = 64;
  // Of one filter.
  std::size_t constraints = 64;
  // Of one subscription, and of one constraint.
  std::size_t eventTypes = 128;
  // The most events in one call, whatever is asked for. An alarm takes some 2.8 KB
  // on the wire, and more with long texts; ORBs accept messages of 2 MiB by
  // default.
  std::uint32_t eventsPerCall = 500;

  // A call to a consumer fails when it takes longer.
  std::chrono::milliseconds callLimit{5000};
  // A failed push is repeated after firstRetry, then after twice that and so on
  // up to longestRetry; when it has failed for retryFor, the consumer is given up.
  std::chrono::milliseconds firstRetry{100};
  std::chrono::milliseconds longestRetry{5000};
  std::chrono::milliseconds retryFor{60000};
};

struct ChannelParts {
  long session = 0;
  ChannelSettings settings;  // with the number of events resolved
  std::shared_ptr<EventCache> cache;
  std::shared_ptr<Workers> workers;
  std::shared_ptr<Losses> losses;
  std::shared_ptr<ServantHome> home;
  DynamicAny::DynAnyFactory_var dynAnys;
};

}  // namespace zk::agent

#endif
