#include "agent/base/workers.h"

#include <string>
#include <system_error>
#include <utility>

#include "agent/base/log.h"

namespace zk::agent {

Workers::~Workers() { stop(); }

bool Workers::start(std::function<void()> work) {
  const MutexLock lock(mutex_);
  reap();
  if (stopped_) {
    return false;
  }
  auto over = std::make_shared<std::atomic<bool>>(false);
  try {
    std::thread thread([over, kept = std::move(work)]() mutable {
      runLogged("a thread's work", kept);
      kept = nullptr;  // what it holds goes before the thread counts as over
      over->store(true);
    });
    workers_.push_back({std::move(thread), over});
  } catch (const std::system_error& failure) {
    logFailure(std::string("no thread can be started: ") + failure.what());
    return false;
  }
  return true;
}

void Workers::reap() {
  for (auto next = workers_.begin(); next != workers_.end();) {
    if (next->over->load()) {
      next->thread.join();
      next = workers_.erase(next);
    } else {
      ++next;
    }
  }
}

void Workers::stop() {
  std::list<Worker> ending;
  {
    const MutexLock lock(mutex_);
    stopped_ = true;
    ending.swap(workers_);
  }
  for (Worker& worker : ending) {
    worker.thread.join();
  }
}

}  // namespace zk::agent
