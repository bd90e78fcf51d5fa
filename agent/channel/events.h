// Structured events in the channel's hands: what it reads of them, how they pass
// on without a copy, and which types there are. No state.
//
// Reading a property out of an Any may change how the ORB stores it: the event
// must belong to the calling thread then. Copying an event only reads it.
#ifndef ZK_AGENT_CHANNEL_EVENTS_H
#define ZK_AGENT_CHANNEL_EVENTS_H

#include <string>

#include "zk_quornex/idl/channel.h"
#include "zk_quornex/idl/events.h"

namespace zk::agent {

// The filterable property as text; "" when it is not there or not a text.
std::string textOf(const CosNotification::StructuredEvent& event, const char* name);

// emsTime, or the present time for an event without.
std::string timeOf(const CosNotification::StructuredEvent& event);

// Makes to what from was, and leaves from with next to nothing in it. What belongs
// to from changes hands; what it only refers to is copied. The sequences may be of
// different types with the same elements.
template <class From, class To>
void moveSequence(From& from, To& to) {
  const CORBA::ULong maximum = from.maximum();
  const CORBA::ULong length = from.length();
  auto* const buffer = length != 0 ? from.get_buffer(true) : nullptr;
  if (buffer != nullptr) {
    to.replace(maximum, length, buffer, true);
    return;
  }
  to.length(length);
  for (CORBA::ULong i = 0; i < length; ++i) {
    to[i] = from[i];
  }
}

// The same for an event: its texts and properties change hands; the body, which
// most events have none of, is copied.
void moveEvent(CosNotification::StructuredEvent& from, CosNotification::StructuredEvent& to);

// The event types that the EMS sends, or an empty list for a mode that asks for
// none now. The caller owns the result.
CosNotification::EventTypeSeq* offeredTypes(CosNotifyChannelAdmin::ObtainInfoMode mode);

}  // namespace zk::agent

#endif
