// What the channel itself reads of an event. No state.
//
// Reading a property out of an Any may change how the ORB stores it: the event
// must belong to the calling thread.
#ifndef ZK_AGENT_CHANNEL_EVENTFIELDS_H
#define ZK_AGENT_CHANNEL_EVENTFIELDS_H

#include <cstddef>
#include <string>

#include "zk_quornex/idl/events.h"

namespace zk::agent {

// The message classes of the event cache.
enum class EventKind : unsigned char { Alarm, Object };
constexpr std::size_t EVENT_KINDS = 2;

constexpr long messageClassOf(EventKind kind) { return kind == EventKind::Alarm ? 8 : 10; }
constexpr std::size_t indexOf(EventKind kind) { return static_cast<std::size_t>(kind); }

// NT_ALARM is an alarm, everything else is about objects.
EventKind kindOf(const CosNotification::StructuredEvent& event);

// The filterable property of this name; null when there is none.
const CORBA::Any* propertyOf(const CosNotification::StructuredEvent& event, const char* name);

// The property as text; "" when it is not there or not a text.
std::string textOf(const CosNotification::StructuredEvent& event, const char* name);

// emsTime, or the present time for an event without.
std::string timeOf(const CosNotification::StructuredEvent& event);

}  // namespace zk::agent

#endif
