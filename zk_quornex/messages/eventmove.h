// Handing events on without a copy, in what all ORBs offer. No state.
#ifndef ZK_MESSAGES_EVENTMOVE_H
#define ZK_MESSAGES_EVENTMOVE_H

#include "zk_quornex/idl/events.h"

namespace NS_QUORCORBA {

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

// The same for an event that nobody else reads: its texts and properties change
// hands; the body, which most events have none of, is copied.
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
