// What bounds one session's use of the event channel, and the patience of the
// push threads. Read-only once the channel serves.
#ifndef ZK_AGENT_CHANNEL_SETTINGS_H
#define ZK_AGENT_CHANNEL_SETTINGS_H

#include <chrono>
#include <cstddef>
#include <cstdint>

namespace zk::agent {

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

}  // namespace zk::agent

#endif
