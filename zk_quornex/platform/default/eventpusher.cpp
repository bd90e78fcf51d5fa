#include <memory>

#include "zk_quornex/platform/default/eventsinks.h"
#include "zk_quornex/platform/default/immortal.h"
#include "zk_quornex/platform/default/replaceable.h"
#include "zk_quornex/platform/default/sinklist.h"
#include "zk_quornex/platform/events.h"

namespace zk::platform {
namespace {

// Copies the event once for all sinks, and not at all without any.
class QueueingPusher : public EventPusher {
 public:
  void push(CosNotification::StructuredEvent& event) override {
    const auto sinks = immortal<SinkList>().current();
    if (sinks->empty()) return;
    const SharedEvent copy = std::make_shared<const CosNotification::StructuredEvent>(event);
    for (const auto& [name, queue] : *sinks) queue->add(copy);
  }
};

Replaceable<EventPusher>& pusher() {
  static Replaceable<EventPusher> current(&immortal<QueueingPusher>());
  return current;
}

}  // namespace

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
