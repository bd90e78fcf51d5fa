// A thread that repeats one short step until it is stopped.
#ifndef ZK_AGENT_BASE_REPEATING_H
#define ZK_AGENT_BASE_REPEATING_H

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace zk::agent {

class Repeating {
 public:
  // step is called on the thread's own time, never twice at once; what it throws
  // is logged and the next turn follows.
  Repeating(std::chrono::milliseconds period, std::function<void()> step);
  // Waits for a step in progress; none begins afterwards.
  ~Repeating();
  Repeating(const Repeating&) = delete;
  Repeating& operator=(const Repeating&) = delete;

 private:
  void run();

  const std::chrono::milliseconds period_;
  const std::function<void()> step_;
  std::mutex mutex_;
  std::condition_variable stopped_;
  bool stopping_ = false;
  std::thread thread_;  // last: it uses the others
};

}  // namespace zk::agent

#endif
