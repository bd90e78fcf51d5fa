#include "agent/base/workers.h"

#include <exception>
#include <string>
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
  // Its place comes first: a thread that runs cannot be let go of.
  std::list<Worker> added;
  try {
    auto over = std::make_shared<std::atomic<bool>>(false);
    added.push_back({std::thread(), over});
    added.back().thread = std::thread([over, kept = std::move(work)]() mutable {
      runLogged("a thread's work", kept);
      kept = nullptr;  // what it holds goes before the thread counts as over
      over->store(true);
    });
  } catch (const std::exception& failure) {
    runLogged("a log line",
              [&] { logFailure(std::string("no thread can be started: ") + failure.what()); });
    return false;
  }
  workers_.splice(workers_.end(), added);
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
