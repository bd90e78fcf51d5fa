// One client of one message class: its filter, its report switch, and the list
// of events waiting to be fetched.
#ifndef ZK_MESSAGES_MESSAGECACHE_H
#define ZK_MESSAGES_MESSAGECACHE_H

#include <ace/Event.h>
#include <ace/Mutex.h>

#include <atomic>
#include <map>
#include <memory>
#include <utility>

#include "zk_quornex/idl/events.h"
#include "zk_quornex/messages/filter.h"
#include "zk_quornex/messages/listsignal.h"
#include "zk_quornex/messages/msgagent.h"
#include "zk_quornex/platform/threadsafety.h"

namespace NS_QUORCORBA {

// An ACE_Mutex that clang can follow. One that cannot be taken is not noticed:
// the guard then goes on without it, and leaves it alone in the end.
class ZK_CAPABILITY("mutex") NXLock {
 public:
  NXLock() : mutex_(USYNC_THREAD, nullptr, nullptr, MODE) {}
  int acquire() ZK_ACQUIRE() { return mutex_.acquire(); }
  void release() ZK_RELEASE() { mutex_.release(); }

 private:
  static constexpr mode_t MODE = 0644;

  ACE_Mutex mutex_;
};

class ZK_SCOPED_CAPABILITY NXGuard {
 public:
  explicit NXGuard(NXLock& lock) ZK_ACQUIRE(lock) : lock_(lock), held_(lock.acquire() == 0) {}
  ~NXGuard() ZK_RELEASE() {
    if (held_) {
      lock_.release();
    }
  }
  NXGuard(const NXGuard&) = delete;
  NXGuard& operator=(const NXGuard&) = delete;

 private:
  NXLock& lock_;
  const bool held_;
};

using NXLayerFilter = std::map<std::pair<long, long>, bool>;

// Locks, taken in this order: registry (NXMessageMgr), class (NXMessageHandle),
// list (here). The agent's thread takes none of them but the list lock.
class NXMessageCache {
 public:
  // Makes the list and starts the client's thread; without a thread, the signal
  // tells the client's end. Throws std::bad_alloc when there is no memory for a
  // list of the configured size.
  NXMessageCache();

  // Ends all waits for the list, then the thread, and waits for that; events
  // still queued or listed are freed.
  ~NXMessageCache();

  NXMessageCache(const NXMessageCache&) = delete;
  NXMessageCache& operator=(const NXMessageCache&) = delete;

  // Everything up to the list is called under the class lock.

  // Adopts filter in place of the one before; the same pointer changes nothing.
  void setFilter(NXMessageFilter* filter);
  void setHandler(NXMsgExceptionHanle* handler);

  // Lets go, without deleting, of what a successor was given too.
  void handOverTo(const NXMessageCache& successor);

  void setReportStatus(bool report) { reportStatus_ = report; }
  void mergeLayerFilter(const NXLayerFilter& layers);
  const NXLayerFilter& layerFilter() const { return layers_; }
  NXMessageFilter* filter() const { return filter_.get(); }

  // Queues the event if reporting is on and the filter lets it pass. One that finds
  // no room or no memory is lost, which the signal tells.
  void offer(NXEventHolder* event, const void* context);

  // Gives the client's whole list away and starts a new one. Returns 0. Throws
  // std::bad_alloc, with the list kept and the argument untouched, when there is
  // no memory for the new one.
  int getMsgList(notifications::EventList_T*& list);

  // Appends the event to the list, taking over the reference that comes with
  // it whatever happens. Returns 0, or -1 for a null event. Throws what copying
  // throws, with the list as it was. Called by the agent's thread.
  int assembleMsg(NXEventHolder* event);
  // Has the signal tell that the event is lost.
  void miss() { signal_->miss(); }

  // What to wait by for the list to hold events. Never null; any thread.
  const std::shared_ptr<NXListSignal>& listSignal() const { return signal_; }

  // The rest is what the agent's thread watches, without the list lock.

  bool isOver() const;
  // Blocks until the list is fetched or the cache is being destroyed; not at all
  // when it was fetched since the last wait: any number of fetches that nobody
  // waited for end one wait.
  void waitForFetch();

  std::atomic<long> index_{0};  // events in the list; changed under the list lock

 private:
  bool passes(const void* context) const;
  void endWait();

  // Guarded by the class lock.
  std::unique_ptr<NXMsgExceptionHanle> handler_;
  std::unique_ptr<NXMessageFilter> filter_;
  bool reportStatus_ = false;
  NXLayerFilter layers_;

  const long eventlistsize_;
  NXLock listLock_;
  std::unique_ptr<notifications::EventList_T> events_ ZK_GUARDED_BY(listLock_);

  const std::shared_ptr<NXListSignal> signal_ = std::make_shared<NXListSignal>();
  // The event wakes; the flag says whether there was a fetch. An auto-reset event
  // signalled while nobody waits may end one wait or two, as ACE's version has it.
  ACE_Event notFull_;
  std::atomic<bool> fetched_{false};
  std::atomic<bool> stopping_{false};
  std::unique_ptr<Nex_MsgAgent> agent_;
};

}  // namespace NS_QUORCORBA

#endif
