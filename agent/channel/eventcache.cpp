#include "agent/channel/eventcache.h"

#include <utility>

#include "agent/base/log.h"
#include "agent/channel/gatefilter.h"
#include "zk_quornex/messages/messagecach.h"
#include "zk_quornex/notify/exceptions.h"

namespace zk::agent {

namespace {

using CosNotification::StructuredEvent;
using notifications::EventList_T;
using NS_QUORCORBA::NXMessageMgr;

struct Release {
  void operator()(NXMessageMgr::Event* holder) const { holder->release(); }
};

constexpr std::array<EventKind, EVENT_KINDS> kinds = {EventKind::Alarm, EventKind::Object};

}  // namespace

// Two copies: filters read one, which may change how the ORB stores it, while
// the clients' threads already copy the other.
void EventCache::push(const StructuredEvent& event) {
  const EventKind kind = kindOf(event);
  if (!isUsable(kind)) {
    return;
  }
  const StructuredEvent seen(event);
  const std::unique_ptr<NXMessageMgr::Event, Release> holder(
      new NXMessageMgr::Event(new StructuredEvent(event)));
  try {
    NXMessageMgr::Instance()->pushMessage(messageClassOf(kind), holder.get(), &seen);
  } catch (const InterfaceNotExistException&) {
    blocked_[indexOf(kind)] = true;
    logFailure("no validity service: message class " + std::to_string(messageClassOf(kind)) +
               " of the event cache is out of use");
  }
}

void EventCache::subscribe(long client, const std::shared_ptr<Gate>& gate) {
  NXMessageMgr* const manager = NXMessageMgr::Instance();
  for (const EventKind kind : kinds) {
    if (isUsable(kind)) {
      manager->subscribeMsg(messageClassOf(kind), client, new GateFilter(kind, gate), nullptr);
      manager->setReportStatus(messageClassOf(kind), client, true);
    }
  }
}

void EventCache::unsubscribe(long client) {
  for (const EventKind kind : kinds) {
    if (isUsable(kind)) {
      NXMessageMgr::Instance()->unSubscribeMsg(messageClassOf(kind), client);
    }
  }
}

std::unique_ptr<EventList_T> EventCache::takeList(EventKind kind, long client) {
  EventList_T* list = nullptr;
  if (isUsable(kind)) {
    NXMessageMgr::Instance()->getMsgList(messageClassOf(kind), client, list);
  }
  return list != nullptr ? std::unique_ptr<EventList_T>(list) : std::make_unique<EventList_T>();
}

CacheClient::CacheClient(std::shared_ptr<EventCache> cache, long client,
                         const std::shared_ptr<Gate>& gate)
    : cache_(std::move(cache)), client_(client) {
  cache_->subscribe(client_, gate);
}

CacheClient::~CacheClient() { end(); }

std::unique_ptr<EventList_T> CacheClient::takeList(EventKind kind) {
  return cache_->takeList(kind, client_);
}

void CacheClient::end() { cache_->unsubscribe(client_); }

}  // namespace zk::agent
