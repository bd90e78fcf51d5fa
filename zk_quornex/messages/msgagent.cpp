#include "zk_quornex/messages/msgagent.h"

#include <ace/Malloc_Allocator.h>

#include <cerrno>
#include <cstddef>
#include <new>

#include "zk_quornex/messages/messagecache.h"
#include "zk_quornex/messages/traceorigin.h"
#include "zk_quornex/platform/config.h"

namespace NS_QUORCORBA {

namespace {

constexpr long MOST_QUEUED = 10000;

long configuredCachesize() {
  const long configured = CorbaAgentConfig::Instance()->GetCachesize();
  return configured > 0 && configured <= MOST_QUEUED ? configured : MOST_QUEUED;
}

// A message block and its data block share one piece of memory, since each
// would be made and freed apart. Releasing a message block ends it first and its
// data block last; so the data block, which comes first in the piece, frees it.
struct Piece {
  alignas(ACE_Data_Block) std::byte data[sizeof(ACE_Data_Block)];
  alignas(ACE_Message_Block) std::byte message[sizeof(ACE_Message_Block)];
};

class WholePiece : public ACE_New_Allocator {
 public:
  void free(void* piece) override { delete static_cast<Piece*>(piece); }
};

class PartOfPiece : public ACE_New_Allocator {
 public:
  void free(void*) override {}
};

// A block over the event, which it does not own: size 1, priority 0. Null when
// there is no memory.
ACE_Message_Block* makeBlock(NXEventHolder* event) {
  // Never destroyed: blocks may be released while the process ends.
  static auto& wholePiece = *new WholePiece;
  static auto& partOfPiece = *new PartOfPiece;

  auto* piece = new (std::nothrow) Piece;
  if (piece == nullptr) {
    return nullptr;
  }
  auto* data = new (piece->data)
      ACE_Data_Block(1, ACE_Message_Block::MB_DATA, reinterpret_cast<char*>(event), nullptr,
                     nullptr, ACE_Message_Block::DONT_DELETE, &wholePiece);
  return new (piece->message) ACE_Message_Block(data, 0, &partOfPiece);
}

NXEventHolder* eventOf(const ACE_Message_Block& block) {
  return reinterpret_cast<NXEventHolder*>(block.base());
}

}  // namespace

Nex_MsgAgent::Nex_MsgAgent(NXMessageCache* cache)
    : cachesize_(configuredCachesize()), cache_(cache) {}

Nex_MsgAgent::~Nex_MsgAgent() {
  stop_ = true;
  auto* wakeUp = new (std::nothrow) ACE_Message_Block;
  if (wakeUp == nullptr) {
    errno = ENOMEM;
    msg_queue()->deactivate();
  } else if (putq(wakeUp) == -1) {
    wakeUp->release();
  }
  wait();
  drain();
}

bool Nex_MsgAgent::start() {
  if (activate(THR_NEW_LWP | THR_JOINABLE | THR_INHERIT_SCHED) != 0) {
    return false;
  }
  started_.wait();
  return true;
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

  ACE_Message_Block* block = makeBlock(event);
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
  traceOrigin();
  NS_CORBA::TaDebugWithPara(3, "[Nex_MsgAgent::pushmsg]Exist.pushmsg num_=%d.",
                            shown(num_.load(std::memory_order_relaxed)));
  return 0;
}

// After a wait for room one more event is taken before the list is looked at
// again. A fetch made while the thread did not wait ends its next wait at once, so
// the list can then grow to eventlistsize + 2.
int Nex_MsgAgent::svc() {
  started_.signal();
  Step step = nextStep();
  while (step != Step::STOP) {
    const bool goesOn = step == Step::WAIT ? waitForRoom() : !stop_;
    step = goesOn ? takeOne() : Step::STOP;
  }
  return 0;
}

// Takes one event from the queue into the list and says what comes next.
Nex_MsgAgent::Step Nex_MsgAgent::takeOne() {
  ACE_Message_Block* block = nullptr;
  if (getq(block) == -1) {
    traceOrigin();
    NS_CORBA::TaDebug(3, "Alarm Notification getq failed in MsgAgent svc pull alarm.");
    return nextStep();
  }
  num_.fetch_sub(1, std::memory_order_relaxed);
  NXEventHolder* event = eventOf(*block);
  block->release();
  if (event == nullptr) {
    return Step::STOP;
  }
  try {
    cache_->assembleMsg(event);
  } catch (...) {
    // One event less for one client, as when its queue is full.
    cache_->miss();
  }
  return nextStep();
}

Nex_MsgAgent::Step Nex_MsgAgent::nextStep() const {
  return cache_->isOver() ? Step::WAIT : Step::CONTINUE;
}

// Says whether to go on.
bool Nex_MsgAgent::waitForRoom() {
  traceOrigin();
  NS_CORBA::TaDebug(3, "Alarm Notification MessageCache waitnotFull pull alarm");
  cache_->waitForFetch();
  return !stop_;
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
