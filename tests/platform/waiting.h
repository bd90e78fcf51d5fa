// What tests of threads wait with: for a condition, never for a time.
#ifndef ZK_TESTS_PLATFORM_WAITING_H
#define ZK_TESTS_PLATFORM_WAITING_H

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace zk::test {

constexpr std::chrono::seconds DEADLINE{20};

// Whether the condition came true before the deadline.
template <class Condition>
bool becomesTrue(Condition condition) {
  const auto end = std::chrono::steady_clock::now() + DEADLINE;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) {
      return false;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return true;
}

// Holds back whoever passes until it is opened; then it stays open. Safe on any
// thread.
class Gate {
 public:
  void pass() {
    std::unique_lock<std::mutex> lock(mutex_);
    entered_ = true;
    changed_.wait_for(lock, DEADLINE, [this] { return open_; });
  }

  // Whether anybody came to pass.
  bool entered() {
    const std::lock_guard<std::mutex> guard(mutex_);
    return entered_;
  }

  void open() {
    const std::lock_guard<std::mutex> guard(mutex_);
    open_ = true;
    changed_.notify_all();
  }

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  bool entered_ = false;
  bool open_ = false;
};

}  // namespace zk::test

#endif
