#include "zk_quornex/messages/msgagent.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <new>

#include "zk_quornex/messages/messagecache.h"
#include "zk_quornex/messages/traceorigin.h"
#include "zk_quornex/platform/config.h"

namespace NS_QUORCORBA {

namespace {

constexpr long MOST_QUEUED = 10000;

constexpr std::chrono::milliseconds LINGERING{10};
constexpr long MOST_GATHERED = 64;

long configuredCachesize() {
  const long configured = CorbaAgentConfig::Instance()->GetCachesize();
  return configured > 0 && configured <= MOST_QUEUED ? configured : MOST_QUEUED;
}

NXEventHolder* eventOf(const ACE_Message_Block& block) {
  return reinterpret_cast<NXEventHolder*>(block.base());
}

}  // namespace

Nex_MsgAgent::Nex_MsgAgent(NXMessageCache* cache)
    : cachesize_(configuredCachesize()),
      cache_(cache),
      enough_(std::clamp(cachesize_ / 2, 1L, MOST_GATHERED)) {}

Nex_MsgAgent::~Nex_MsgAgent() {
  stop_ = true;
  endLingering();
  auto* wakeUp = new (std::nothrow) ACE_Message_Block;
  if (wakeUp == nullptr) {
    errno = ENOMEM;
  }
  if (putq(wakeUp) == -1 && wakeUp != nullptr) {
    wakeUp->release();
  }
  wait();
  drain();
}

int Nex_MsgAgent::pushmsg(NXEventHolder* event) {
  if (event == nullptr) {
    return -1;
  }
  traceOrigin();
  NS_CORBA::TaDebug(3, "[Nex_MsgAgent::pushmsg]Received alarm in Pull Alarm Message agent.");

  const long queued = num_.fetch_add(1, std::memory_order_relaxed) + 1;
  if (queued > cachesize_) {
    traceOrigin();
    NS_CORBA::TaDebugWithPara(3, "[Nex_MsgAgent::pushmsg]pushmsg overload, num_=%d, cachesize_=%d",
                              shown(queued), shown(cachesize_));
    num_.fetch_sub(1, std::memory_order_relaxed);
    return -1;
  }

  ACE_Message_Block* block = blocks_.make(reinterpret_cast<char*>(event));
  event->addRef();
  if (block == nullptr || putq(block) == -1) {
    traceOrigin();
    NS_CORBA::TaDebug(3, "[Nex_MsgAgent::pushmsg]failed in pull alarm cache.");
    event->release();
    if (block != nullptr) {
      block->release();
    }
    // num_ keeps counting the event: the limit errs on the safe side of a queue
    // that does not take what it should.
    return -1;
  }
  if (queued == enough_) {
    endLingering();
  }
  traceOrigin();
  NS_CORBA::TaDebugWithPara(3, "[Nex_MsgAgent::pushmsg]Exist.pushmsg num_=%d.",
                            shown(num_.load(std::memory_order_relaxed)));
  return 0;
}

// After a wait for room one more event is taken before the list is looked at
// again. A fetch made while the thread did not wait ends its next wait at once, so
// the list can then grow to eventlistsize + 2.
int Nex_MsgAgent::svc() {
  Step step = isListOver() ? Step::WAIT : Step::CONTINUE;
  while (true) {
    if (step == Step::STOP) {
      return 0;
    }
    if (step == Step::WAIT && !waitForRoom()) {
      return 0;
    }
    if (step == Step::CONTINUE && stop_) {
      return 0;
    }
    step = takeOne();
  }
}

// Takes one event from the queue into the list and says what comes next.
Nex_MsgAgent::Step Nex_MsgAgent::takeOne() {
  ACE_Message_Block* block = nullptr;
  if (getq(block) == -1) {
    traceOrigin();
    NS_CORBA::TaDebug(3, "Alarm Notification getq failed in MsgAgent svc pull alarm.");
    return isListOver() ? Step::WAIT : Step::CONTINUE;
  }
  num_.fetch_sub(1, std::memory_order_relaxed);
  NXEventHolder* event = eventOf(*block);
  blocks_.giveBack(block);
  if (event == nullptr) {
    return Step::STOP;
  }
  cache_->assembleMsg(event);
  if (isListOver()) {
    return Step::WAIT;
  }
  if (num_.load(std::memory_order_relaxed) == 0) {
    linger();
  }
  return Step::CONTINUE;
}

bool Nex_MsgAgent::isListOver() const { return cache_->isOver(); }

// Says whether to go on.
bool Nex_MsgAgent::waitForRoom() {
  traceOrigin();
  NS_CORBA::TaDebug(3, "Alarm Notification MessageCache waitnotFull pull alarm");
  cache_->waitForFetch();
  return !stop_;
}

// Lets events gather. Until the time is up no push has to wake this thread,
// unless so many gather that they should not wait, or the queue may overflow.
void Nex_MsgAgent::linger() {
  std::unique_lock<std::mutex> lock(lingering_);
  lingerEnded_.wait_for(lock, LINGERING, [this] { return isEnough_; });
  isEnough_ = false;
}

void Nex_MsgAgent::endLingering() {
  const std::lock_guard<std::mutex> guard(lingering_);
  isEnough_ = true;
  lingerEnded_.notify_one();
}

// Also from a queue that was deactivated meanwhile.
void Nex_MsgAgent::drain() {
  msg_queue()->activate();
  while (!msg_queue()->is_empty()) {
    ACE_Message_Block* block = nullptr;
    if (getq(block) == -1) {
      return;
    }
    num_.fetch_sub(1, std::memory_order_relaxed);
    if (NXEventHolder* event = eventOf(*block)) {
      event->release();
    }
    block->release();
  }
}

}  // namespace NS_QUORCORBA
