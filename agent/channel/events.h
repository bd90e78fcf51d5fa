// Structured events in the channel's hands: what it reads of them, and which
// types there are. No state.
//
// Reading a property out of an Any may change how the ORB stores it: the event
// must belong to the calling thread then. Copying an event only reads it.
#ifndef ZK_AGENT_CHANNEL_EVENTS_H
#define ZK_AGENT_CHANNEL_EVENTS_H

#include <cstddef>
#include <string>

#include "zk_quornex/idl/channel.h"
#include "zk_quornex/idl/events.h"

namespace zk::agent {

// The filterable property as text; "" when it is not there or not a text.
std::string textOf(const CosNotification::StructuredEvent& event, const char* name);

// emsTime, or the present time for an event without.
std::string timeOf(const CosNotification::StructuredEvent& event);

// What the event takes of the memory, by estimate.
std::size_t estimatedBytes(const CosNotification::StructuredEvent& event);

// The event types that the EMS sends, or an empty list for a mode that asks for
// none now. The caller owns the result.
CosNotification::EventTypeSeq* offeredTypes(CosNotifyChannelAdmin::ObtainInfoMode mode);

}  // namespace zk::agent

#endif
