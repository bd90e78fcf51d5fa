// Threads that each do one piece of work and end on their own; nobody waits for
// one but stop. Safe on any thread.
#ifndef ZK_AGENT_BASE_WORKERS_H
#define ZK_AGENT_BASE_WORKERS_H

#include <atomic>
#include <functional>
#include <list>
#include <memory>
#include <thread>

#include "zk_quornex/platform/threadsafety.h"

namespace zk::agent {

// Work may hold the object itself: whoever made it calls stop before letting go.
class Workers {
 public:
  Workers() = default;
  ~Workers();
  Workers(const Workers&) = delete;
  Workers& operator=(const Workers&) = delete;

  // Runs work on a thread of its own; what it throws is logged. Returns false,
  // running nothing, after stop and when no thread can be had.
  bool start(std::function<void()> work);

  // Waits for the threads to end; none begins afterwards. Not to be called from
  // one of them.
  void stop();

 private:
  struct Worker {
    std::thread thread;
    std::shared_ptr<std::atomic<bool>> over;
  };

  void reap() ZK_REQUIRES(mutex_);

  Mutex mutex_;
  std::list<Worker> workers_ ZK_GUARDED_BY(mutex_);
  bool stopped_ ZK_GUARDED_BY(mutex_) = false;
};

}  // namespace zk::agent

#endif
