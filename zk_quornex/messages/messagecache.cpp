#include "zk_quornex/messages/messagecache.h"

#include <limits>
#include <new>

#include "zk_quornex/messages/eventmove.h"
#include "zk_quornex/messages/traceorigin.h"
#include "zk_quornex/platform/config.h"

namespace NS_QUORCORBA {

namespace {

constexpr long DEFAULT_EVENTLISTSIZE = 500;

long configuredEventlistsize() {
  const long configured = CorbaAgentConfig::Instance()->GetEventlistsize();
  return configured != 0 ? configured : DEFAULT_EVENTLISTSIZE;
}

CORBA::ULong lengthFor(long count) { return count > 0 ? static_cast<CORBA::ULong>(count) : 0; }

// The agent's thread lets the list grow by two entries at most. Room for them is
// there from the start: growing a full buffer would copy every event in it.
std::unique_ptr<notifications::EventList_T> makeList(long size) {
  constexpr CORBA::ULong GROWTH = 2;
  if (size > static_cast<long>(std::numeric_limits<CORBA::ULong>::max() - GROWTH)) {
    throw std::bad_alloc();  // no sequence is that long
  }
  const CORBA::ULong length = lengthFor(size);
  auto list = std::make_unique<notifications::EventList_T>(length + GROWTH);
  list->length(length);
  return list;
}

using CosNotification::StructuredEvent;

struct Release {
  void operator()(NXEventHolder* event) const { event->release(); }
};

// A reference that is given back whatever happens to the copy.
using OwnReference = std::unique_ptr<NXEventHolder, Release>;

}  // namespace

NXMessageCache::NXMessageCache()
    : eventlistsize_(configuredEventlistsize()),
      events_(makeList(eventlistsize_)),
      agent_(std::make_unique<Nex_MsgAgent>(this)) {
  if (!agent_->start()) {
    signal_->end();
  }
}

NXMessageCache::~NXMessageCache() {
  stopping_ = true;
  signal_->end();
  endWait();
  agent_.reset();
  filter_.reset();
  handler_.reset();
}

void NXMessageCache::setFilter(NXMessageFilter* filter) {
  if (filter != filter_.get()) {
    filter_.reset(filter);
  }
}

void NXMessageCache::setHandler(NXMsgExceptionHanle* handler) { handler_.reset(handler); }

void NXMessageCache::handOverTo(const NXMessageCache& successor) {
  if (filter_ == successor.filter_) {
    static_cast<void>(filter_.release());
  }
  if (handler_ == successor.handler_) {
    static_cast<void>(handler_.release());
  }
}

void NXMessageCache::mergeLayerFilter(const NXLayerFilter& layers) {
  for (const auto& [layer, value] : layers) {
    layers_[layer] = value;
  }
}

void NXMessageCache::offer(NXEventHolder* event, const void* context) {
  if (reportStatus_ && passes(context) && agent_->pushmsg(event) != 0) {
    signal_->miss();
  }
}

// A filter without criteria is not asked.
bool NXMessageCache::passes(const void* context) const {
  if (!filter_) {
    return true;
  }
  std::vector<long> first;
  std::vector<std::string> second;
  std::vector<long> third;
  std::vector<long> fourth;
  std::vector<std::string> fifth;
  stDateTimeType start;
  stDateTimeType end;
  filter_->GetFilter(first, second, third, fourth, start, end, fifth);
  const bool hasStart = TimeChange::checkDateTimeValid(start);
  const bool hasEnd = TimeChange::checkDateTimeValid(end);
  const bool empty = first.empty() && second.empty() && third.empty() && fourth.empty() &&
                     fifth.empty() && !hasStart && !hasEnd;
  return empty || !filter_->isFiltered(context);
}

int NXMessageCache::getMsgList(notifications::EventList_T*& list) {
  auto fresh = makeList(eventlistsize_);
  const NXGuard guard(listLock_);
  const long count = index_.load(std::memory_order_relaxed);
  traceOrigin();
  NS_CORBA::TaDebugWithPara(3, "[NXMessageCache::getMsgList]index=%d.", shown(count));
  events_->length(lengthFor(count));
  list = events_.release();
  events_ = std::move(fresh);
  index_.store(0, std::memory_order_relaxed);
  signal_->empty();
  endWait();
  return 0;
}

int NXMessageCache::assembleMsg(NXEventHolder* event) {
  if (event == nullptr) {
    return -1;
  }
  OwnReference reference(event);
  const NXGuard guard(listLock_);
  const long index = index_.load(std::memory_order_relaxed);
  if (index >= eventlistsize_) {
    events_->length(lengthFor(index + 1));
  }
  if (events_->length() <= lengthFor(index)) {
    throw CORBA::BAD_PARAM();
  }
  StructuredEvent& entry = (*events_)[lengthFor(index)];
  if (event->isLast()) {
    moveEvent(*event->get(), entry);
  } else {
    entry = *event->get();
  }
  index_.store(index + 1, std::memory_order_relaxed);
  signal_->fill();
  reference.reset();
  traceOrigin();
  NS_CORBA::TaDebugWithPara(3, "[NXMessageCache::assembleMsg]pEvents length =%d, index_=%d.",
                            shown(events_->length()), shown(index + 1));
  return 0;
}

bool NXMessageCache::isOver() const {
  return !stopping_ && index_.load(std::memory_order_relaxed) > eventlistsize_;
}

void NXMessageCache::waitForFetch() {
  while (!fetched_.exchange(false) && notFull_.wait() == 0) {
  }
}

void NXMessageCache::endWait() {
  fetched_ = true;
  notFull_.signal();
}

}  // namespace NS_QUORCORBA
