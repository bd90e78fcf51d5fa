// Event sinks for tests, and events to tell apart.
#ifndef ZK_TESTS_PLATFORM_SINKDOUBLES_H
#define ZK_TESTS_PLATFORM_SINKDOUBLES_H

#include <atomic>
#include <mutex>
#include <string>
#include <vector>

#include "tests/platform/waiting.h"
#include "zk_quornex/platform/default/eventsinks.h"

namespace zk::test {

inline CosNotification::StructuredEvent makeEvent(const std::string& name) {
  CosNotification::StructuredEvent event;
  event.header.fixed_header.event_name = CORBA::string_dup(name.c_str());
  event.remainder_of_body <<= static_cast<CORBA::Long>(7);
  return event;
}

inline std::string nameOf(const zk::platform::SharedEvent& event) {
  return event->header.fixed_header.event_name.in();
}

// Keeps what it takes. Safe on any thread.
class KeepingSink : public zk::platform::EventSink {
 public:
  void take(const zk::platform::SharedEvent& event) override {
    const std::lock_guard<std::mutex> guard(mutex_);
    events_.push_back(event);
  }

  std::vector<zk::platform::SharedEvent> events() const {
    const std::lock_guard<std::mutex> guard(mutex_);
    return events_;
  }

  std::vector<std::string> names() const {
    std::vector<std::string> result;
    for (const auto& event : events()) {
      result.push_back(nameOf(event));
    }
    return result;
  }

 private:
  mutable std::mutex mutex_;
  std::vector<zk::platform::SharedEvent> events_;
};

// Keeps what it takes, once its gate is open.
class GatedSink : public KeepingSink {
 public:
  void take(const zk::platform::SharedEvent& event) override {
    entered = true;
    gate.pass();
    KeepingSink::take(event);
  }

  Gate gate;
  std::atomic<bool> entered{false};
};

}  // namespace zk::test

#endif
