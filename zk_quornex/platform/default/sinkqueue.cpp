#include "zk_quornex/platform/default/sinkqueue.h"

#include <exception>
#include <new>
#include <utility>

#include "zk_quornex/platform/trace.h"

namespace zk::platform {
namespace {

void traceThrown(const std::string& name, const char* what) {
  NS_CORBA::SetTraceOrigin("sinkqueue.cpp", __LINE__, "handOver");
  NS_CORBA::TaDebugWithPara(1, "event sink '%s' failed.%s", name.c_str(), what);
}

}  // namespace

SinkQueue::SinkQueue(std::string name, std::shared_ptr<EventSink> sink, std::size_t capacity)
    : name_(std::move(name)), sink_(std::move(sink)), capacity_(capacity) {}

void SinkQueue::start() {
  thread_ = std::thread([this] {
    while (takeNext()) {
    }
  });
}

void SinkQueue::add(const SharedEvent& event) {
  if (tryAdd(event) != Added::FIRST_DROPPED) {
    return;
  }
  NS_CORBA::SetTraceOrigin("sinkqueue.cpp", __LINE__, "add");
  NS_CORBA::TaDebugWithPara(1, "event sink '%s' is full, events are dropped.capacity=%zu",
                            name_.c_str(), capacity_);
}

SinkQueue::Added SinkQueue::tryAdd(const SharedEvent& event) {
  const MutexLock guard(mutex_);
  if (finished_) {
    return Added::DROPPED;
  }
  if (event != nullptr && waiting_.size() < capacity_ && tryQueue(event)) {
    changed_.notifyOne();
    return Added::QUEUED;
  }
  ++counts_.dropped;
  return std::exchange(overflowing_, true) ? Added::DROPPED : Added::FIRST_DROPPED;
}

// False without memory.
bool SinkQueue::tryQueue(const SharedEvent& event) {
  try {
    waiting_.push_back(event);
    return true;
  } catch (const std::bad_alloc&) {
    return false;
  }
}

bool SinkQueue::takeNext() {
  const SharedEvent event = waitForNext();
  if (event == nullptr) {
    return false;
  }
  handOver(event);
  const MutexLock guard(mutex_);
  ++counts_.taken;
  return true;
}

// Null when the queue is finished and empty.
SharedEvent SinkQueue::waitForNext() {
  const MutexLock lock(mutex_);
  while (!finished_ && waiting_.empty()) {
    changed_.wait(mutex_);
  }
  if (waiting_.empty()) {
    return nullptr;
  }
  SharedEvent event = std::move(waiting_.front());
  waiting_.pop_front();
  if (waiting_.empty()) {
    overflowing_ = false;
  }
  return event;
}

void SinkQueue::handOver(const SharedEvent& event) const {
  try {
    sink_->take(event);
  } catch (const CORBA::Exception& failure) {
    traceThrown(name_, failure._name());
  } catch (const std::exception& failure) {
    traceThrown(name_, failure.what());
  } catch (...) {
    traceThrown(name_, "unknown exception");
  }
}

void SinkQueue::finish() {
  {
    const MutexLock guard(mutex_);
    finished_ = true;
    changed_.notifyOne();
  }
  thread_.join();
}

SinkCounts SinkQueue::counts() const {
  const MutexLock guard(mutex_);
  return counts_;
}

}  // namespace zk::platform
