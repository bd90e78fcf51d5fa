// A lock that is had in the order of asking. Readers that ask again and again
// would keep a change waiting for long on a lock without order.
#ifndef ZK_AGENT_EMS_TURNLOCK_H
#define ZK_AGENT_EMS_TURNLOCK_H

#include <condition_variable>
#include <mutex>

namespace zk::agent {

// For std::lock_guard.
class TurnLock {
 public:
  void lock() {
    std::unique_lock<std::mutex> guard(mutex_);
    const unsigned long turn = last_++;
    moved_.wait(guard, [&] { return turn == current_; });
  }

  void unlock() {
    {
      const std::lock_guard<std::mutex> guard(mutex_);
      ++current_;
    }
    moved_.notify_all();
  }

 private:
  std::mutex mutex_;
  std::condition_variable moved_;
  unsigned long last_ = 0;     // the turn that the next one to ask gets
  unsigned long current_ = 0;  // whose turn it is
};

}  // namespace zk::agent

#endif
