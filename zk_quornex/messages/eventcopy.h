// How an event gets from its holder into a client's list, and from there on.
#ifndef ZK_MESSAGES_EVENTCOPY_H
#define ZK_MESSAGES_EVENTCOPY_H

#include "zk_quornex/idl/events.h"

namespace NS_QUORCORBA {

// Makes to equal to from. Threads may copy the same event at once.
void copyEvent(const CosNotification::StructuredEvent& from, CosNotification::StructuredEvent& to);

// Makes to what from was, and leaves from with next to nothing in it. What belongs
// to from changes hands; what it only refers to is copied.
template <class Sequence>
void moveSequence(Sequence& from, Sequence& to) {
  const CORBA::ULong maximum = from.maximum();
  const CORBA::ULong length = from.length();
  if (length == 0) {
    to.length(0);
  } else if (auto* buffer = from.get_buffer(true)) {
    to.replace(maximum, length, buffer, true);
  } else {
    to = from;
  }
}

// The same for an event: its texts and properties change hands; the body, which
// most events have none of, is copied.
inline void moveEvent(CosNotification::StructuredEvent& from,
                      CosNotification::StructuredEvent& to) {
  CosNotification::FixedEventHeader& source = from.header.fixed_header;
  CosNotification::FixedEventHeader& target = to.header.fixed_header;
  target.event_type.domain_name = source.event_type.domain_name._retn();
  target.event_type.type_name = source.event_type.type_name._retn();
  target.event_name = source.event_name._retn();
  moveSequence(from.header.variable_header, to.header.variable_header);
  moveSequence(from.filterable_data, to.filterable_data);
  to.remainder_of_body = from.remainder_of_body;
}

}  // namespace NS_QUORCORBA

#endif
