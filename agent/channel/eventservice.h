// The agent's side of the event cache: every notification goes into it, and every
// session gets a channel that is served from it. One at a time in a process. Safe
// on any thread.
#ifndef ZK_AGENT_CHANNEL_EVENTSERVICE_H
#define ZK_AGENT_CHANNEL_EVENTSERVICE_H

#include <atomic>
#include <functional>
#include <memory>
#include <vector>

#include "agent/base/loglimit.h"
#include "agent/base/workers.h"
#include "agent/channel/eventcache.h"
#include "agent/channel/losses.h"
#include "agent/channel/sessionchannel.h"
#include "agent/channel/settings.h"
#include "agent/orb/servanthome.h"
#include "zk_quornex/platform/bundle.h"
#include "zk_quornex/platform/threadsafety.h"

namespace zk::agent {

class EventService {
 public:
  // From now on the event cache is fed, and it asks isAlive which sessions are to
  // be served: for every client on every event, under its locks. The ORB and the
  // configuration are up. Throws std::system_error when no thread can be started.
  EventService(const ChannelSettings& settings, std::function<bool(long session)> isAlive);
  // As stop().
  ~EventService();
  EventService(const EventService&) = delete;
  EventService& operator=(const EventService&) = delete;

  // The channel of a session, which closes it when it ends; servants go into its
  // home. listener is told what is lost to the session.
  std::shared_ptr<SessionChannel> open(long session, std::shared_ptr<ServantHome> home,
                                       std::shared_ptr<LossListener> listener);

  // Closes the channels that are still open, feeds the cache no more, and waits
  // for the channel's threads: as long as a call to a consumer may take. Calls to
  // consumers must still be possible.
  void stop();

 private:
  void missed();  // called by the sink
  class Sink;

  const ChannelSettings settings_;
  const DynamicAny::DynAnyFactory_var dynAnys_;
  const std::shared_ptr<EventCache> cache_ = std::make_shared<EventCache>();
  const std::shared_ptr<Workers> workers_ = std::make_shared<Workers>();
  // Those open, and those whose last servant is still busy.
  const std::shared_ptr<std::atomic<long>> sessions_ = std::make_shared<std::atomic<long>>(0);
  std::shared_ptr<NS_BUNDLEMGR1::ServiceInterface> validityBefore_;
  Mutex mutex_;
  std::vector<std::weak_ptr<SessionChannel>> channels_ ZK_GUARDED_BY(mutex_);
  bool stopped_ ZK_GUARDED_BY(mutex_) = false;
  LogLimit log_{std::chrono::seconds(10), 1};  // of an overload, which lasts
};

}  // namespace zk::agent

#endif
