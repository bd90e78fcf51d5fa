// A mutex that clang can follow: members say which one guards them, functions
// which one they need, and a build with -Wthread-safety refuses what does not
// hold. Other compilers read the same code without the checks.
#ifndef ZK_PLATFORM_THREADSAFETY_H
#define ZK_PLATFORM_THREADSAFETY_H

#include <chrono>
#include <condition_variable>
#include <mutex>

#if defined(__clang__)
#define ZK_THREAD_ATTRIBUTE(attribute) __attribute__((attribute))
#else
#define ZK_THREAD_ATTRIBUTE(attribute)
#endif

#define ZK_CAPABILITY(name) ZK_THREAD_ATTRIBUTE(capability(name))
#define ZK_SCOPED_CAPABILITY ZK_THREAD_ATTRIBUTE(scoped_lockable)
#define ZK_GUARDED_BY(mutex) ZK_THREAD_ATTRIBUTE(guarded_by(mutex))
#define ZK_PT_GUARDED_BY(mutex) ZK_THREAD_ATTRIBUTE(pt_guarded_by(mutex))
#define ZK_REQUIRES(...) ZK_THREAD_ATTRIBUTE(requires_capability(__VA_ARGS__))
#define ZK_EXCLUDES(...) ZK_THREAD_ATTRIBUTE(locks_excluded(__VA_ARGS__))
#define ZK_ACQUIRE(...) ZK_THREAD_ATTRIBUTE(acquire_capability(__VA_ARGS__))
#define ZK_ACQUIRE_SHARED(...) ZK_THREAD_ATTRIBUTE(acquire_shared_capability(__VA_ARGS__))
#define ZK_RELEASE(...) ZK_THREAD_ATTRIBUTE(release_capability(__VA_ARGS__))
#define ZK_NO_THREAD_SAFETY_ANALYSIS ZK_THREAD_ATTRIBUTE(no_thread_safety_analysis)

namespace zk {

class ZK_CAPABILITY("mutex") Mutex {
 public:
  void lock() ZK_ACQUIRE() { mutex_.lock(); }
  void unlock() ZK_RELEASE() { mutex_.unlock(); }

 private:
  friend class Condition;
  std::mutex mutex_;
};

// Holds the mutex while it lives, but between unlock() and lock().
class ZK_SCOPED_CAPABILITY MutexLock {
 public:
  explicit MutexLock(Mutex& mutex) ZK_ACQUIRE(mutex) : mutex_(mutex) { mutex_.lock(); }
  ~MutexLock() ZK_RELEASE() {
    if (held_) {
      mutex_.unlock();
    }
  }
  MutexLock(const MutexLock&) = delete;
  MutexLock& operator=(const MutexLock&) = delete;

  void lock() ZK_ACQUIRE() {
    mutex_.lock();
    held_ = true;
  }
  void unlock() ZK_RELEASE() {
    held_ = false;
    mutex_.unlock();
  }

 private:
  Mutex& mutex_;
  bool held_ = true;
};

// Waits with the mutex held, which is free meanwhile. A wait may end without a
// notification: loop over what is waited for.
class Condition {
 public:
  void wait(Mutex& mutex) ZK_REQUIRES(mutex) {
    std::unique_lock<std::mutex> lock(mutex.mutex_, std::adopt_lock);
    condition_.wait(lock);
    static_cast<void>(lock.release());
  }

  // False when the time came first.
  template <class Clock, class Duration>
  bool waitUntil(Mutex& mutex, const std::chrono::time_point<Clock, Duration>& until)
      ZK_REQUIRES(mutex) {
    std::unique_lock<std::mutex> lock(mutex.mutex_, std::adopt_lock);
    const bool notified = condition_.wait_until(lock, until) == std::cv_status::no_timeout;
    static_cast<void>(lock.release());
    return notified;
  }

  void notifyOne() { condition_.notify_one(); }
  void notifyAll() { condition_.notify_all(); }

 private:
  std::condition_variable condition_;
};

}  // namespace zk

#endif
