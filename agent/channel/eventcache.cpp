#include "agent/channel/eventcache.h"

#include <string>

#include "agent/base/log.h"
#include "agent/channel/events.h"
#include "zk_quornex/messages/messagecach.h"
#include "zk_quornex/notify/exceptions.h"

namespace zk::agent {

namespace {

using CosNotification::StructuredEvent;
using notifications::EventList_T;
using NS_QUORCORBA::NXListSignal;
using NS_QUORCORBA::NXMessageMgr;

struct Release {
  void operator()(NXMessageMgr::Event* holder) const { holder->release(); }
};

}  // namespace

// The gates read the event before any client's thread sees it: reading may change
// how the ORB stores a property, and those threads copy it all at once.
void EventCache::push(const StructuredEvent& event) {
  ++turn_;
  const Gates gates = wanting(event.header.fixed_header.event_type);
  if (blocked_ || gates.empty()) {
    return;
  }
  auto own = std::make_unique<StructuredEvent>(event);
  const std::size_t bytes = estimatedBytes(*own);
  AdmittedClients admitted;
  admitted.reserve(gates.size());
  for (const auto& [client, gate] : gates) {
    if (gate->accept(*own, bytes)) {
      admitted.push_back(client);
    }
  }
  if (!admitted.empty()) {
    offer(std::move(own), admitted);
  }
}

EventCache::Gates EventCache::wanting(const CosNotification::EventType& type) const {
  Gates gates;
  const MutexLock guard(mutex_);
  for (const auto& [client, gate] : gates_) {
    if (gate->wants(type)) {
      gates.emplace_back(client, gate);
    }
  }
  return gates;
}

void EventCache::offer(std::unique_ptr<StructuredEvent> event, const AdmittedClients& admitted) {
  const std::unique_ptr<NXMessageMgr::Event, Release> holder(new NXMessageMgr::Event(event.get()));
  static_cast<void>(event.release());
  try {
    NXMessageMgr::Instance()->pushMessage(MESSAGE_CLASS, holder.get(), &admitted);
  } catch (const InterfaceNotExistException&) {
    blocked_ = true;
    logFailure("no validity service: message class " + std::to_string(MESSAGE_CLASS) +
               " of the event cache is out of use");
  }
}

std::shared_ptr<NXListSignal> EventCache::subscribe(long client,
                                                    const std::shared_ptr<Gate>& gate) {
  auto signal = std::make_shared<NXListSignal>();
  if (blocked_) {
    return signal;
  }
  {
    const MutexLock guard(mutex_);
    gates_[client] = gate;
  }
  NXMessageMgr* const manager = NXMessageMgr::Instance();
  try {
    auto filter = std::make_unique<GateFilter>(client, gate);
    manager->subscribeMsg(MESSAGE_CLASS, client, filter.get(), nullptr);
    static_cast<void>(filter.release());
    manager->setReportStatus(MESSAGE_CLASS, client, true);
    if (auto own = manager->listSignal(MESSAGE_CLASS, client)) {
      signal = std::move(own);
    }
  } catch (...) {
    unsubscribe(client);
    throw;
  }
  if (signal->wait({}) == NXListSignal::State::OVER) {
    unsubscribe(client);
    throw CORBA::NO_RESOURCES();
  }
  return signal;
}

void EventCache::unsubscribe(long client) {
  {
    const MutexLock guard(mutex_);
    gates_.erase(client);
  }
  if (!blocked_) {
    NXMessageMgr::Instance()->unSubscribeMsg(MESSAGE_CLASS, client);
  }
}

std::unique_ptr<EventList_T> EventCache::takeList(long client) {
  EventList_T* list = nullptr;
  if (!blocked_) {
    NXMessageMgr::Instance()->getMsgList(MESSAGE_CLASS, client, list);
  }
  return std::unique_ptr<EventList_T>(list);
}

CacheClient::CacheClient(std::shared_ptr<EventCache> cache, long client,
                         const std::shared_ptr<Gate>& gate)
    : cache_(std::move(cache)), client_(client), signal_(cache_->subscribe(client, gate)) {}

CacheClient::~CacheClient() { end(); }

CacheClient::State CacheClient::wait(Gate::Clock::time_point until) { return signal_->wait(until); }

// What is listed in a class that is out of use stays there: nobody is to wait for
// it any more.
std::unique_ptr<EventList_T> CacheClient::takeList() {
  auto list = cache_->takeList(client_);
  if (!list) {
    signal_->end();
  }
  return list;
}

void CacheClient::end() {
  if (!ended_.exchange(true)) {
    signal_->end();
    cache_->unsubscribe(client_);
  }
}

}  // namespace zk::agent
