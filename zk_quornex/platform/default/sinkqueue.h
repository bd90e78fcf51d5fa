// One sink's bounded queue and the thread that empties it. Safe on any thread.
#ifndef ZK_PLATFORM_DEFAULT_SINKQUEUE_H
#define ZK_PLATFORM_DEFAULT_SINKQUEUE_H

#include <cstddef>
#include <deque>
#include <memory>
#include <string>
#include <thread>

#include "zk_quornex/platform/default/eventsinks.h"
#include "zk_quornex/platform/threadsafety.h"

namespace zk::platform {

class SinkQueue {
 public:
  SinkQueue(std::string name, std::shared_ptr<EventSink> sink, std::size_t capacity);

  // Starts the thread. Once.
  void start();

  // Queues the event, or drops it when `capacity` events wait already, there is no
  // memory, or finish was called; null is one that was dropped before. Never waits for the sink. A
  // drop is traced only when it is the first since the queue was last empty: a sink that stays too
  // slow is one line, not one for each event.
  void add(const SharedEvent& event);

  // Takes no more events, waits until the sink has taken those queued, and ends
  // the thread. Once, after start; not from the sink.
  void finish();

  SinkCounts counts() const;

  // One round of the thread: waits for an event and hands it to the sink.
  // Returns false, without one, when the queue is finished and empty.
  bool takeNext();

 private:
  enum class Added { QUEUED, DROPPED, FIRST_DROPPED };

  Added tryAdd(const SharedEvent& event);
  bool tryQueue(const SharedEvent& event) ZK_REQUIRES(mutex_);
  SharedEvent waitForNext();
  void handOver(const SharedEvent& event) const;

  const std::string name_;
  const std::shared_ptr<EventSink> sink_;
  const std::size_t capacity_;
  std::thread thread_;

  mutable Mutex mutex_;  // not held while the sink or the trace is called
  Condition changed_;
  std::deque<SharedEvent> waiting_ ZK_GUARDED_BY(mutex_);
  SinkCounts counts_ ZK_GUARDED_BY(mutex_);
  bool overflowing_ ZK_GUARDED_BY(mutex_) = false;
  bool finished_ ZK_GUARDED_BY(mutex_) = false;
};

}  // namespace zk::platform

#endif
