// Tells whoever serves a client of the event cache that its list holds events,
// so that nobody has to poll it.
#ifndef ZK_MESSAGES_LISTSIGNAL_H
#define ZK_MESSAGES_LISTSIGNAL_H

#include <atomic>
#include <chrono>

#include "zk_quornex/platform/threadsafety.h"

namespace NS_QUORCORBA {

// Shared by one client's cache and those who wait for its events; it outlives
// the cache for as long as somebody keeps it. Any number of threads may wait at
// once, and waiting holds no lock of the cache.
class __attribute__((visibility("default"))) NXListSignal {
 public:
  enum class State {
    EVENTS,   // the list holds at least one event
    OVER,     // the client is gone: unsubscribed, replaced or found invalid
    MISSED,   // events for the list were lost, and nobody has asked how many
    TIME_OUT  // neither has come to pass in time
  };

  NXListSignal() = default;
  NXListSignal(const NXListSignal&) = delete;
  NXListSignal& operator=(const NXListSignal&) = delete;

  // Blocks until the list holds an event, events were lost, the client is gone, or
  // it is time. A loss comes before what is listed.
  // Returns at once while events are listed, until somebody fetches them; and
  // from the client's end on always OVER, whatever was listed then. A time that
  // has passed asks without waiting.
  State wait(std::chrono::steady_clock::time_point until);

  // Calls the client over, for all who wait now or later: for whoever lets go of
  // it and cannot count on the cache, whose class may be blocked. The client
  // itself stays until it is unsubscribed.
  void end();

  // How many events the client's filter let pass that are lost to it, for lack of
  // memory or of room in its queue, since this was asked last.
  unsigned long takeMissed();

 private:
  friend class NXMessageCache;

  enum class Filling { EMPTY, FILLED, ENDED };

  // The cache's: fill and empty under its list lock, fill after each event. An
  // event that is not the first of its list costs a load.
  void fill() { become(Filling::FILLED); }
  void empty() { become(Filling::EMPTY); }
  void miss();

  void become(Filling filling);

  zk::Mutex mutex_;
  zk::Condition changed_;
  std::atomic<Filling> filling_{Filling::EMPTY};  // changed under mutex_
  unsigned long missed_ ZK_GUARDED_BY(mutex_) = 0;
};

}  // namespace NS_QUORCORBA

#endif
