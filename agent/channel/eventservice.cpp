#include "agent/channel/eventservice.h"

#include <algorithm>
#include <utility>

#include "agent/base/log.h"
#include "zk_quornex/platform/config.h"
#include "zk_quornex/platform/default/bundles.h"
#include "zk_quornex/platform/default/eventsinks.h"
#include "zk_quornex/platform/timechange.h"

namespace zk::agent {

namespace {

constexpr const char* SINK = "event-cache";
constexpr const char* VALIDITY = "SecurityIF";
constexpr long MOST_CACHED = 10000;
constexpr long LEAST_SHARES = 5;  // of the work that comes back

DynamicAny::DynAnyFactory_ptr dynAnys() {
  int count = 0;
  const CORBA::ORB_var orb = CORBA::ORB_init(count, nullptr);
  return dynAnyFactoryOf(orb.in());
}

// What a client's queue in the cache holds is what it can be given at all.
ChannelSettings resolved(ChannelSettings settings) {
  const long configured = NS_QUORCORBA::CorbaAgentConfig::Instance()->GetCachesize();
  const long most = configured > 0 && configured <= MOST_CACHED ? configured : MOST_CACHED;
  const long wanted = settings.eventsPerConsumer;
  settings.eventsPerConsumer = wanted > 0 && wanted < most ? wanted : most;
  return settings;
}

}  // namespace

// Feeds the cache, on the sink's thread.
class EventService::Sink : public zk::platform::EventSink {
 public:
  explicit Sink(EventService& service) : service_(service) {}

  void take(const zk::platform::SharedEvent& event) override {
    const unsigned long dropped = zk::platform::eventSinkCounts(SINK).dropped;
    untold_ = dropped != std::exchange(dropped_, dropped) || untold_;
    untold_ =
        !runLogged("feeding the event cache", [&] { service_.cache_->push(*event); }) || untold_;
    // What cannot be told for lack of memory is told with a later event.
    untold_ = untold_ && !runLogged("telling a loss", [this] { service_.missed(); });
  }

 private:
  EventService& service_;
  unsigned long dropped_ = 0;
  bool untold_ = false;
};

EventService::EventService(const ChannelSettings& settings,
                           std::function<bool(long session)> isAlive)
    : settings_(resolved(settings)), dynAnys_(dynAnys()) {
  if (!zk::platform::addEventSink(SINK, std::make_shared<Sink>(*this))) {
    throw std::logic_error("the event cache is fed already");
  }
  validityBefore_ =
      zk::platform::registerService(VALIDITY, std::make_shared<ClientValidity>(std::move(isAlive)));
}

EventService::~EventService() { stop(); }

std::shared_ptr<SessionChannel> EventService::open(long session, std::shared_ptr<ServantHome> home,
                                                   std::shared_ptr<LossListener> listener) {
  auto parts = std::make_shared<ChannelParts>();
  parts->session = session;
  parts->settings = settings_;
  parts->cache = cache_;
  parts->losses = std::make_shared<Losses>(std::move(listener), workers_);
  parts->home = std::move(home);
  parts->kept = std::make_shared<ByteBudget>(settings_.keptBytes);
  parts->waiting = std::make_shared<ByteBudget>(settings_.eventBytes);
  parts->constraints = std::make_shared<ConstraintPool>(dynAnys_.in(), parts->kept);
  parts->filterWork = std::make_shared<FilterWork>(
      settings_.filterWork,
      [all = settings_.filterWorkPerSecond, sessions = sessions_] {
        return all / std::max<long>(LEAST_SHARES, *sessions);
      },
      Gate::Clock::now);
  ++*sessions_;
  parts->counted = {nullptr, [sessions = sessions_](const void*) { --*sessions; }};
  parts->threads = std::make_shared<SessionThreads>(workers_, settings_.threads);
  auto channel = SessionChannel::open(std::move(parts));
  const MutexLock guard(mutex_);
  if (stopped_) {
    channel->close();
    throw CORBA::OBJECT_NOT_EXIST();
  }
  channels_.erase(std::remove_if(channels_.begin(), channels_.end(),
                                 [](const auto& one) { return one.expired(); }),
                  channels_.end());
  channels_.push_back(channel);
  return channel;
}

void EventService::missed() {
  log_.logFailure("", "more events than the event cache could be fed: some are lost to every NMS");
  const std::string time = NS_QUORCORBA::TimeChange::getUTCTime();
  const MutexLock guard(mutex_);
  for (const auto& weak : channels_) {
    if (const auto channel = weak.lock()) {
      channel->miss(time);
    }
  }
}

void EventService::stop() {
  std::vector<std::weak_ptr<SessionChannel>> closing;
  {
    const MutexLock guard(mutex_);
    if (std::exchange(stopped_, true)) {
      return;
    }
    closing.swap(channels_);
  }
  zk::platform::removeEventSink(SINK);
  for (const auto& weak : closing) {
    if (const auto channel = weak.lock()) {
      channel->close();
    }
  }
  workers_->stop();
  zk::platform::registerService(VALIDITY, validityBefore_);
}

}  // namespace zk::agent
