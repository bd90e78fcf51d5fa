// What bounds one session's use of the event channel, the patience of the push
// threads, and what the parts of a session's channel share. Read-only once the
// channel serves.
#ifndef ZK_AGENT_CHANNEL_SETTINGS_H
#define ZK_AGENT_CHANNEL_SETTINGS_H

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>

#include "agent/orb/servanthome.h"
#include "zk_quornex/idl/corba.h"

namespace zk::agent {

class ByteBudget;
class ConstraintPool;
class EventCache;
class FilterWork;
class Losses;
class SessionThreads;

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
  // In each list of one event that a client has judged.
  std::uint32_t properties = 1024;

  // What a session's filters and constraints keep, and what waits for all its
  // consumers, in bytes by estimate. More of the first is refused, the newest
  // event is lost to a consumer for the second.
  std::size_t keptBytes = std::size_t{8} * 1024 * 1024;
  std::size_t eventBytes = std::size_t{64} * 1024 * 1024;

  // Threads at a time that push to a session's consumers or tell them their end.
  // Those that end when a call does are among them.
  std::size_t threads = 32;

  // Units of work (see FilterWork) that judging events may cost: what a session
  // has at once, and what all sessions together get back in a second, of which
  // one gets a fifth at most. A unit takes up to 25 ns of the machine that this was
  // measured on, so that one session costs a tenth of a processor.
  std::int64_t filterWork = 2000000;
  std::int64_t filterWorkPerSecond = 20000000;
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
  std::shared_ptr<Losses> losses;
  std::shared_ptr<ServantHome> home;
  std::shared_ptr<ConstraintPool> constraints;
  std::shared_ptr<ByteBudget> kept;
  std::shared_ptr<ByteBudget> waiting;
  std::shared_ptr<FilterWork> filterWork;
  std::shared_ptr<SessionThreads> threads;
  std::shared_ptr<const void> counted;  // among the sessions that share the work
};

}  // namespace zk::agent

#endif
