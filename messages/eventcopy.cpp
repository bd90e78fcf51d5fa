#include "messages/eventcopy.h"

namespace NS_QUORCORBA {

namespace {

using CosNotification::PropertySeq;
using CosNotification::StructuredEvent;

void copyNames(const PropertySeq& from, PropertySeq& to) {
  const CORBA::ULong length = from.length();
  to.length(length);
  for (CORBA::ULong position = 0; position < length; ++position) {
    to[position].name = from[position].name;
  }
}

void copyValues(const PropertySeq& from, PropertySeq& to) {
  for (CORBA::ULong position = 0; position < from.length(); ++position) {
    to[position].value = from[position].value;
  }
}

template <class Sequence>
void moveSequence(Sequence& from, Sequence& to) {
  const CORBA::ULong maximum = from.maximum();
  const CORBA::ULong length = from.length();
  if (auto* buffer = from.get_buffer(true)) {
    to.replace(maximum, length, buffer, true);
  } else {
    to = from;
  }
}

}  // namespace

// The values last and in one go: an ORB may count the users of every type under
// one mutex of the process, which it takes for each value. Threads that copy at
// the same time meet there less often when they do not return to it all along.
void copyEvent(const StructuredEvent& from, StructuredEvent& to) {
  to.header.fixed_header = from.header.fixed_header;
  copyNames(from.header.variable_header, to.header.variable_header);
  copyNames(from.filterable_data, to.filterable_data);
  copyValues(from.header.variable_header, to.header.variable_header);
  copyValues(from.filterable_data, to.filterable_data);
  to.remainder_of_body = from.remainder_of_body;
}

void moveEvent(StructuredEvent& from, StructuredEvent& to) {
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
