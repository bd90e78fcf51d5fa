// Whether an event is of a type that a client asked for. No shared state.
#ifndef ZK_AGENT_CONSTRAINT_EVENTTYPES_H
#define ZK_AGENT_CONSTRAINT_EVENTTYPES_H

#include <string_view>

#include "zk_quornex/idl/events.h"

namespace zk::agent {

// pattern: * stands for any characters, none included; "" and "%ALL" for any text.
bool matchesTypePattern(std::string_view pattern, std::string_view text);

// Both the domain and the type match.
bool matchesEventType(const CosNotification::EventType& pattern,
                      const CosNotification::EventType& type);

// Any of the patterns does; an empty list stands for every type.
bool matchesEventTypes(const CosNotification::EventTypeSeq& patterns,
                       const CosNotification::EventType& type);

}  // namespace zk::agent

#endif
