#include "zk_quornex/platform/default/eventsinks.h"

#include <map>
#include <new>
#include <stdexcept>
#include <utility>

#include "zk_quornex/platform/default/replaceable.h"
#include "zk_quornex/platform/default/sinkqueue.h"
#include "zk_quornex/platform/events.h"
#include "zk_quornex/platform/threadsafety.h"

namespace zk::platform {
namespace {

// The sinks that the standard pusher serves. Safe on any thread.
class SinkList {
 public:
  using ByName = std::map<std::string, std::shared_ptr<SinkQueue>>;

  // The sinks as they are now; never null. What is added or removed later does
  // not show in it.
  std::shared_ptr<const ByName> current() const;

  // False, changing nothing, when the name is taken.
  bool add(const std::string& name, std::shared_ptr<EventSink> sink, std::size_t capacity);

  // Takes the sink off the list; null when there is none of this name.
  std::shared_ptr<SinkQueue> remove(const std::string& name);

 private:
  mutable Mutex mutex_;
  // The map behind it is replaced, never changed.
  std::shared_ptr<const ByName> sinks_ ZK_GUARDED_BY(mutex_) = std::make_shared<ByName>();
};

std::shared_ptr<const SinkList::ByName> SinkList::current() const {
  const MutexLock guard(mutex_);
  return sinks_;
}

bool SinkList::add(const std::string& name, std::shared_ptr<EventSink> sink, std::size_t capacity) {
  const MutexLock guard(mutex_);
  if (sinks_->count(name) != 0) {
    return false;
  }
  auto changed = std::make_shared<ByName>(*sinks_);
  auto queue = std::make_shared<SinkQueue>(name, std::move(sink), capacity);
  changed->emplace(name, queue);
  queue->start();
  sinks_ = std::move(changed);
  return true;
}

std::shared_ptr<SinkQueue> SinkList::remove(const std::string& name) {
  const MutexLock guard(mutex_);
  const auto found = sinks_->find(name);
  if (found == sinks_->end()) {
    return nullptr;
  }
  std::shared_ptr<SinkQueue> queue = found->second;
  auto changed = std::make_shared<ByName>(*sinks_);
  changed->erase(name);
  sinks_ = std::move(changed);
  return queue;
}

// Copies the event once for all sinks, and not at all without any.
class QueueingPusher : public EventPusher {
 public:
  void push(CosNotification::StructuredEvent& event) override {
    const auto sinks = immortal<SinkList>().current();
    if (sinks->empty()) {
      return;
    }
    const SharedEvent copy = copyOf(event);
    for (const auto& [name, queue] : *sinks) {
      queue->add(copy);
    }
  }

 private:
  // Null without memory.
  static SharedEvent copyOf(const CosNotification::StructuredEvent& event) {
    try {
      return std::make_shared<const CosNotification::StructuredEvent>(event);
    } catch (const std::bad_alloc&) {
      return nullptr;
    }
  }
};

Replaceable<EventPusher>& pusher() { return replaceable<EventPusher, QueueingPusher>(); }

}  // namespace

bool addEventSink(const std::string& name, std::shared_ptr<EventSink> sink, std::size_t capacity) {
  if (sink == nullptr) {
    throw std::invalid_argument("event sink '" + name + "' is null");
  }
  return immortal<SinkList>().add(name, std::move(sink), capacity);
}

SinkCounts removeEventSink(const std::string& name) {
  const std::shared_ptr<SinkQueue> queue = immortal<SinkList>().remove(name);
  if (queue == nullptr) {
    return {};
  }
  queue->finish();
  return queue->counts();
}

SinkCounts eventSinkCounts(const std::string& name) {
  const auto sinks = immortal<SinkList>().current();
  const auto found = sinks->find(name);
  return found != sinks->end() ? found->second->counts() : SinkCounts{};
}

void EventPusher::fillFixedHeader(const std::string& type,
                                  CosNotification::StructuredEvent& event) {
  CosNotification::FixedEventHeader& header = event.header.fixed_header;
  header.event_type.domain_name = CORBA::string_dup("tmf_mtnm");
  header.event_type.type_name = CORBA::string_dup(type.c_str());
  header.event_name = CORBA::string_dup("");
}

EventPusher* install(EventPusher* replacement) { return pusher().install(replacement); }

}  // namespace zk::platform

namespace NS_CORBA {

// type comes by value: that is the contract.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
void fillFixedHeader(std::string type, CosNotification::StructuredEvent& event) {
  zk::platform::pusher().get()->fillFixedHeader(type, event);
}

}  // namespace NS_CORBA

namespace NS_QUORCORBA {

void PushEvent(CosNotification::StructuredEvent& event) {
  zk::platform::pusher().get()->push(event);
}

}  // namespace NS_QUORCORBA
