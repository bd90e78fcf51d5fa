#include "zk_quornex/platform/default/eventsinks.h"

#include <stdexcept>
#include <utility>

#include "zk_quornex/platform/default/immortal.h"
#include "zk_quornex/platform/default/sinklist.h"

namespace zk::platform {

std::shared_ptr<const SinkList::ByName> SinkList::current() const {
  const std::lock_guard<std::mutex> guard(mutex_);
  return sinks_;
}

bool SinkList::add(const std::string& name, std::shared_ptr<EventSink> sink, std::size_t capacity) {
  const std::lock_guard<std::mutex> guard(mutex_);
  if (sinks_->count(name) != 0) return false;
  auto changed = std::make_shared<ByName>(*sinks_);
  auto queue = std::make_shared<SinkQueue>(name, std::move(sink), capacity);
  changed->emplace(name, queue);
  queue->start();
  sinks_ = std::move(changed);
  return true;
}

std::shared_ptr<SinkQueue> SinkList::remove(const std::string& name) {
  const std::lock_guard<std::mutex> guard(mutex_);
  const auto found = sinks_->find(name);
  if (found == sinks_->end()) return nullptr;
  std::shared_ptr<SinkQueue> queue = found->second;
  auto changed = std::make_shared<ByName>(*sinks_);
  changed->erase(name);
  sinks_ = std::move(changed);
  return queue;
}

bool addEventSink(const std::string& name, std::shared_ptr<EventSink> sink, std::size_t capacity) {
  if (sink == nullptr) throw std::invalid_argument("event sink '" + name + "' is null");
  return immortal<SinkList>().add(name, std::move(sink), capacity);
}

SinkCounts removeEventSink(const std::string& name) {
  const std::shared_ptr<SinkQueue> queue = immortal<SinkList>().remove(name);
  if (queue == nullptr) return {};
  queue->finish();
  return queue->counts();
}

SinkCounts eventSinkCounts(const std::string& name) {
  const auto sinks = immortal<SinkList>().current();
  const auto found = sinks->find(name);
  return found != sinks->end() ? found->second->counts() : SinkCounts{};
}

}  // namespace zk::platform
