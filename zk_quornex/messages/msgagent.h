// One client's queue of events and the thread that serves it.
#ifndef ZK_MESSAGES_MSGAGENT_H
#define ZK_MESSAGES_MSGAGENT_H

#include <ace/Event.h>
#include <ace/Task.h>

#include <atomic>

#include "zk_quornex/idl/events.h"
#include "zk_quornex/messages/refcount.h"

namespace NS_QUORCORBA {

class NXMessageCache;

using NXEventHolder = NXRefCountType<CosNotification::StructuredEvent>;

// The pushing thread queues a pointer; the agent's thread copies events into
// the client's list and waits when the list is over its nominal size until the
// client has fetched it. A slow client thus stalls only its own queue.
//
// The queue holds at most cachesize_ events; the newest is refused. The
// destructor stops the thread, waits for it, and releases what is still queued:
// an event being copied then is still delivered to the list, queued ones are
// not, and pushmsg must not be called any more.
class Nex_MsgAgent : public ACE_Task<ACE_MT_SYNCH> {
 public:
  // cache must outlive this object.
  explicit Nex_MsgAgent(NXMessageCache* cache);
  ~Nex_MsgAgent() override;
  Nex_MsgAgent(const Nex_MsgAgent&) = delete;
  Nex_MsgAgent& operator=(const Nex_MsgAgent&) = delete;

  // Starts the one thread and returns when it is under way: a thread that ACE is
  // still preparing crashes when the process ends meanwhile. Returns whether there
  // is a thread.
  bool start();

  // The thread's body. An event that cannot be copied, for lack of memory, is
  // lost to the client, whose signal tells it; the thread goes on with the next.
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
  Step nextStep() const;
  bool waitForRoom();
  void drain();

  NXMessageCache* cache_;
  std::atomic<bool> stop_{false};
  ACE_Event started_{1};  // stays signalled
};

}  // namespace NS_QUORCORBA

#endif
