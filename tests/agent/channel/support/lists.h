// Stands in for the event cache: lists that the test fills.
#ifndef ZK_TESTS_AGENT_CHANNEL_SUPPORT_LISTS_H
#define ZK_TESTS_AGENT_CHANNEL_SUPPORT_LISTS_H

#include <array>
#include <memory>
#include <mutex>

#include "agent/channel/eventcache.h"
#include "tests/agent/channel/support/events.h"

namespace zk::test {

class FakeLists : public zk::agent::ListSource {
 public:
  std::unique_ptr<notifications::EventList_T> takeList(zk::agent::EventKind kind) override {
    const std::lock_guard<std::mutex> guard(mutex_);
    ++takes;
    auto list = std::move(lists_[zk::agent::indexOf(kind)]);
    return list ? std::move(list) : std::make_unique<notifications::EventList_T>();
  }

  void add(const CosNotification::StructuredEvent& event) {
    const std::lock_guard<std::mutex> guard(mutex_);
    auto& list = lists_[zk::agent::indexOf(zk::agent::kindOf(event))];
    if (!list) {
      list = std::make_unique<notifications::EventList_T>();
    }
    const CORBA::ULong last = list->length();
    list->length(last + 1);
    (*list)[last] = event;
  }

  // The list must not be empty.
  const CosNotification::StructuredEvent* firstOf(zk::agent::EventKind kind) {
    return &(*lists_[zk::agent::indexOf(kind)])[0];
  }

  int takes = 0;

 private:
  std::mutex mutex_;
  std::array<std::unique_ptr<notifications::EventList_T>, zk::agent::EVENT_KINDS> lists_;
};

// A gate that lets in whatever is offered, up to a limit that the test sets.
struct OpenGate {
  explicit OpenGate(long most = 1000, std::shared_ptr<zk::agent::Losses> losses = nullptr)
      : limit(most),
        gate(std::make_shared<zk::agent::Gate>(
            1, [this](const CosNotification::StructuredEvent&) { return admits; },
            [this] { return limit; }, std::move(losses))) {}

  bool offer(const CosNotification::StructuredEvent& event) {
    return gate->accept(zk::agent::kindOf(event), event);
  }

  long limit;
  bool admits = true;
  std::shared_ptr<zk::agent::Gate> gate;
};

}  // namespace zk::test

#endif
