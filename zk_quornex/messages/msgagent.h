// One client's queue of events and the thread that serves it.
#ifndef ZK_MESSAGES_MSGAGENT_H
#define ZK_MESSAGES_MSGAGENT_H

#include <ace/Task.h>

#include <atomic>
#include <condition_variable>
#include <mutex>

#include "zk_quornex/idl/events.h"
#include "zk_quornex/messages/queueblocks.h"
#include "zk_quornex/messages/refcount.h"

namespace NS_QUORCORBA {

class NXMessageCache;

using NXEventHolder = NXRefCountType<CosNotification::StructuredEvent>;

// The pushing thread queues a pointer; the agent's thread copies events into
// the client's list and waits when the list is over its nominal size until the
// client has fetched it. A slow client thus stalls only its own queue.
//
// The first event wakes the thread at once. When it has emptied the queue it
// lingers for a moment before it blocks, so that events in steady flow gather
// and are taken together: waking a thread costs several times as much as
// copying an event.
//
// The queue holds at most cachesize_ events; the newest is refused. The
// destructor stops the thread, waits for it, and releases what is still queued:
// an event being copied then is still delivered to the list, queued ones are
// not, and pushmsg must not be called any more.
class Nex_MsgAgent : public ACE_Task<ACE_MT_SYNCH> {
 public:
  // cache must outlive this object. The thread is started by activate().
  explicit Nex_MsgAgent(NXMessageCache* cache);
  ~Nex_MsgAgent() override;
  Nex_MsgAgent(const Nex_MsgAgent&) = delete;
  Nex_MsgAgent& operator=(const Nex_MsgAgent&) = delete;

  // The thread's body.
  int svc() override;

  // Queues the event, taking a reference of its own. Returns 0, or -1 when the
  // event is null, there is no room, or the queue refuses it. Called by one
  // thread at a time.
  int pushmsg(NXEventHolder* event);

  // Events queued and not yet taken: a soft count, since both threads change it
  // without a common lock, and one too high after each refusal of the queue.
  std::atomic<long> num_{0};
  long cachesize_;

 private:
  enum class Step { CONTINUE, WAIT, STOP };

  Step takeOne();
  bool isListOver() const;
  bool waitForRoom();
  void linger();
  void endLingering();
  void drain();

  NXMessageCache* cache_;
  std::atomic<bool> stop_{false};

  const long enough_;  // this many queued events end the lingering
  std::mutex lingering_;
  std::condition_variable lingerEnded_;
  bool isEnough_ = false;  // guarded by lingering_

  QueueBlocks blocks_;
};

}  // namespace NS_QUORCORBA

#endif
