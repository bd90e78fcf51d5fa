#include "agent/channel/proxies.h"

#include <utility>

#include "agent/base/log.h"
#include "agent/channel/eventcache.h"
#include "agent/channel/servants.h"
#include "agent/channel/sessionchannel.h"
#include "zk_quornex/platform/timechange.h"

namespace zk::agent {

namespace {

using namespace CosNotifyChannelAdmin;
using NS_QUORCORBA::TimeChange;

constexpr ProxyID MOST_ID = static_cast<ProxyID>(PROXIES_PER_SESSION - 1);

// The rules are called by the thread that feeds the cache.
std::shared_ptr<Gate> makeGate(const std::shared_ptr<const ChannelParts>& parts,
                               const ProxyGroup& group, long number,
                               const std::shared_ptr<Selection>& own, std::shared_ptr<Qos> qos) {
  const auto work = [parts]() -> FilterWork& {
    parts->filterWork->beginWith(parts->cache->turn());
    return *parts->filterWork;
  };
  Gate::Rules rules;
  rules.isSubscribed = [shared = group.selection, own, work](const CosNotification::EventType& t) {
    return shared->isSubscribed(t, work()) && own->isSubscribed(t, work());
  };
  rules.judge = [shared = group.selection, own, how = group.combination,
                 work](const CosNotification::StructuredEvent& event) {
    return judge(*shared, *own, how, event, work());
  };
  rules.limit = [kept = std::move(qos)] { return kept->limit(); };
  return std::make_shared<Gate>(number, std::move(rules), parts->waiting, parts->losses);
}

void tryFarewell(const std::function<void()>& farewell) {
  try {
    farewell();
  } catch (const CORBA::Exception&) {
    // It is gone already, which is as good.
  }
}

}  // namespace

Proxy::Proxy(std::shared_ptr<const ChannelParts> parts, std::shared_ptr<ProxyGroup> group,
             long number, ProxyType type, GivenUp givenUp)
    : parts_(std::move(parts)),
      group_(std::move(group)),
      number_(number),
      type_(type),
      givenUp_(std::move(givenUp)),
      selection_(std::make_shared<Selection>(parts_->settings)),
      qos_(std::make_shared<Qos>(group_->qos.values(), Qos::mostOf(parts_->settings))),
      gate_(makeGate(parts_, *group_, number_, selection_, qos_)) {}

bool Proxy::isPush() const { return type_ == PUSH_STRUCTURED || type_ == PUSH_SEQUENCE; }

void Proxy::connect(std::function<void()> farewell) {
  if (state_ == State::CONNECTED) {
    throw CosEventChannelAdmin::AlreadyConnected();
  }
  if (state_ == State::CLOSED) {
    throw CORBA::OBJECT_NOT_EXIST();
  }
  state_ = State::CLOSED;  // unless all goes well: the gate may be closed then
  client_ =
      std::make_shared<CacheClient>(parts_->cache, clientIdOf(parts_->session, number_), gate_);
  queue_ = std::make_shared<EventQueue>(gate_, client_);
  farewell_ = std::move(farewell);
  state_ = State::CONNECTED;
}

void Proxy::connectPush(const std::shared_ptr<PushTarget>& target) {
  const MutexLock guard(mutex_);
  connect(nullptr);
  if (!parts_->threads->start([self = shared_from_this(), target] { self->deliver(target); })) {
    client_->end();
    state_ = State::CLOSED;
    throw CORBA::NO_RESOURCES();
  }
  farewell_ = [target] { target->disconnect(); };
}

void Proxy::connectPull(std::function<void()> farewell) {
  const MutexLock guard(mutex_);
  connect(std::move(farewell));
}

// The push thread. What fails for lack of memory ends the proxy, whose events are
// lost, and not the agent.
void Proxy::deliver(const std::shared_ptr<PushTarget>& target) {
  std::string why = "an error here";
  if (!runLogged("a push thread", [&] { why = pushAll(target); })) {
    loseEvents();
  }
  if (!why.empty()) {
    giveUp(why);
  }
}

void Proxy::loseEvents() noexcept {
  runLogged("telling a loss", [this] { gate_->miss(TimeChange::getUTCTime(), ""); });
}

void Proxy::giveUp(const std::string& why) noexcept {
  runLogged("ending a proxy", [&] { givenUp_(number_, why); });
  gate_->close();
}

std::string Proxy::pushAll(const std::shared_ptr<PushTarget>& target) {
  std::shared_ptr<EventQueue> queue;
  {
    const MutexLock guard(mutex_);
    queue = queue_;
  }
  Pusher pusher(gate_, queue, qos_, target, parts_->settings);
  Pusher::Step step = Pusher::Step::AGAIN;
  while (step == Pusher::Step::AGAIN) {
    step = pusher.step();
  }
  return step == Pusher::Step::FAILED ? pusher.failure() : "";
}

void Proxy::checkConnected() const {
  if (state_ != State::CONNECTED) {
    throw NotConnected();
  }
}

void Proxy::suspend() {
  const MutexLock guard(mutex_);
  checkConnected();
  if (gate_->isSuspended()) {
    throw ConnectionAlreadyInactive();
  }
  gate_->suspend(true);
}

void Proxy::resume() {
  const MutexLock guard(mutex_);
  checkConnected();
  if (!gate_->isSuspended()) {
    throw ConnectionAlreadyActive();
  }
  gate_->suspend(false);
}

CORBA::ULong Proxy::pull(CORBA::ULong most, CosNotification::EventBatch& batch, bool wait) {
  std::shared_ptr<EventQueue> queue;
  {
    const MutexLock guard(mutex_);
    if (state_ != State::CONNECTED) {
      throw CosEventComm::Disconnected();
    }
    queue = queue_;
  }
  const auto until = wait ? EventQueue::never() : Gate::Clock::now();
  CORBA::ULong count = 0;
  const bool fetched =
      runLogged("fetching events", [&] { count = queue->fetch(most, batch, until); });
  if (!fetched) {
    loseEvents();
    giveUp("an error here");
    throw CORBA::NO_MEMORY();
  }
  if (count == 0 && gate_->isClosed()) {
    throw CosEventComm::Disconnected();
  }
  gate_->delivered(count);
  return count;
}

void Proxy::miss(const std::string& time) {
  const MutexLock guard(mutex_);
  if (state_ == State::CONNECTED) {
    gate_->miss(time, "");
  }
}

void Proxy::close(Ending ending) {
  std::function<void()> farewell;
  std::shared_ptr<CacheClient> client;
  {
    const MutexLock guard(mutex_);
    state_ = State::CLOSED;
    farewell.swap(farewell_);
    client.swap(client_);
  }
  gate_->close();
  if (client) {
    client->end();
  }
  if (farewell && ending == Ending::BY_AGENT) {
    parts_->threads->start([farewell] { tryFarewell(farewell); });
  }
}

ProxySupplier_ptr Proxies::open(const std::shared_ptr<SessionChannel>& channel,
                                const std::shared_ptr<ProxyGroup>& group, ProxyType type,
                                ProxyID& id) {
  const MutexLock guard(mutex_);
  if (closed_) {
    throw CORBA::OBJECT_NOT_EXIST();
  }
  if (entries_.size() >= parts_->settings.proxies) {
    AdminLimit limit;
    limit.name = CORBA::string_dup("MaxConsumers");
    limit.value <<= static_cast<CORBA::Long>(parts_->settings.proxies);
    throw AdminLimitExceeded(limit);
  }
  id = freeId();
  Entry entry;
  entry.proxy = std::make_shared<Proxy>(parts_, group, id, type, channel->whenGivenUp());
  const PortableServer::ServantBase_var servant = makeProxyServant(channel, entry.proxy);
  const CORBA::Object_var object = parts_->home->open(servant.in(), entry.ticket);
  entry.reference = ProxySupplier::_narrow(object.in());
  entries_.emplace(id, entry);
  return ProxySupplier::_duplicate(entry.reference.in());
}

// Not one that was used lately, as long as there are others: a late call by a
// client must not meet another proxy.
ProxyID Proxies::freeId() {
  do {
    lastId_ = lastId_ % MOST_ID + 1;
  } while (entries_.count(lastId_) != 0);
  return lastId_;
}

ProxySupplier_ptr Proxies::find(AdminID admin, ProxyID id) const {
  const MutexLock guard(mutex_);
  const auto found = entries_.find(id);
  if (found == entries_.end() || found->second.proxy->group().id != admin) {
    throw ProxyNotFound();
  }
  return ProxySupplier::_duplicate(found->second.reference.in());
}

ProxyIDSeq* Proxies::ids(AdminID admin, bool push) const {
  const MutexLock guard(mutex_);
  ProxyIDSeq_var list = new ProxyIDSeq;
  for (const auto& [id, entry] : entries_) {
    if (entry.proxy->group().id == admin && entry.proxy->isPush() == push) {
      const CORBA::ULong last = list->length();
      list->length(last + 1);
      list[last] = id;
    }
  }
  return list._retn();
}

std::size_t Proxies::count() const {
  const MutexLock guard(mutex_);
  return entries_.size();
}

void Proxies::forEach(const std::function<void(Proxy&)>& visit) const {
  const MutexLock guard(mutex_);
  for (const auto& [id, entry] : entries_) {
    visit(*entry.proxy);
  }
}

bool Proxies::close(ProxyID id, Proxy::Ending ending) {
  Entries::node_type closing;
  {
    const MutexLock guard(mutex_);
    closing = entries_.extract(id);
  }
  if (closing.empty()) {
    return false;
  }
  end(closing.mapped(), ending);
  return true;
}

void Proxies::closeOf(AdminID admin) {
  for (const bool push : {true, false}) {
    ProxyIDSeq_var closing = ids(admin, push);
    for (CORBA::ULong i = 0; i < closing->length(); ++i) {
      close(closing[i], Proxy::Ending::BY_AGENT);
    }
  }
}

void Proxies::closeAll() {
  Entries closing;
  {
    const MutexLock guard(mutex_);
    closed_ = true;
    closing.swap(entries_);
  }
  for (const auto& [id, entry] : closing) {
    end(entry, Proxy::Ending::BY_AGENT);
  }
}

// First the events: a call in progress ends then, too.
void Proxies::end(const Entry& entry, Proxy::Ending ending) {
  entry.proxy->close(ending);
  parts_->home->close(entry.ticket);
}

}  // namespace zk::agent
