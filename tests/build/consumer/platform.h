// The smallest platform that an agent can bring: all in memory, for one thread
// but for what the event cache does on threads of its own, which is to trace.
#ifndef ZK_TESTS_BUILD_CONSUMER_PLATFORM_H
#define ZK_TESTS_BUILD_CONSUMER_PLATFORM_H

#include <string>
#include <vector>

#include "zk_quornex/idl/events.h"

namespace consumer {

// What the library did through the platform, for main to look at; at the traces
// only before the event cache has a client.
struct Seen {
  std::vector<std::string> calls;   // of the EMS's services
  std::vector<std::string> traces;  // "level file: text"
  std::vector<std::string> log;     // of the debug log
  std::vector<CosNotification::StructuredEvent> events;
};

Seen& seen();

// Whether the bundle manager knows the log service.
void offerLogService(bool offered);

}  // namespace consumer

#endif
