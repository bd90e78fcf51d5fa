// Where PushEvent hands events on to: any number of sinks, each with its own
// bounded queue and thread, so that none blocks or breaks another or the
// pushing thread. Safe on any thread.
//
// A sink ends by removeEventSink: what is queued is still taken, what is being
// taken is waited for, what is pushed later does not reach it. Sinks that are
// still there when the process exits are not waited for: what they have queued
// is lost, what they are taking is cut off. Remove them before leaving main.
#ifndef ZK_PLATFORM_DEFAULT_EVENTSINKS_H
#define ZK_PLATFORM_DEFAULT_EVENTSINKS_H

#include <cstddef>
#include <memory>
#include <string>

#include "zk_quornex/idl/events.h"

namespace zk::platform {

// An event that several sinks share; never changed.
using SharedEvent = std::shared_ptr<const CosNotification::StructuredEvent>;

class EventSink {
 public:
  virtual ~EventSink() = default;
  // Called on the sink's own thread, one event at a time, in the order pushed.
  // What it throws is traced at level 1 and the next event follows.
  virtual void take(const SharedEvent& event) = 0;
};

struct SinkCounts {
  unsigned long taken = 0;    // handed to the sink, whatever it threw
  unsigned long dropped = 0;  // refused because the sink's queue was full
};

// Adds a sink under a name, with room for `capacity` waiting events; the newest
// is dropped when there is none left. The first drop since the queue was last
// empty is traced at level 1. Returns false, adding nothing, when the name is
// taken. Throws std::invalid_argument for a null sink, std::system_error when no
// thread can be started; nothing is added then.
bool addEventSink(const std::string& name, std::shared_ptr<EventSink> sink,
                  std::size_t capacity = 10000);

// Removes the sink after it has taken every event already queued, and returns
// what it was given. Unknown names give zeros. Waits as long as the sink takes.
// Not to be called from the sink.
SinkCounts removeEventSink(const std::string& name);

// Zeros for unknown names.
SinkCounts eventSinkCounts(const std::string& name);

// What PushEvent and fillFixedHeader do. The standard pusher serves the sinks
// above, copying the event once for all of them and not at all when there are
// none. It writes the header "tmf_mtnm", the type, "".
class EventPusher {
 public:
  virtual ~EventPusher() = default;
  virtual void fillFixedHeader(const std::string& type, CosNotification::StructuredEvent& event);
  virtual void push(CosNotification::StructuredEvent& event) = 0;
};

// Puts another pusher in place; null puts the standard one back. See
// Replaceable.
EventPusher* install(EventPusher* replacement);

}  // namespace zk::platform

#endif
