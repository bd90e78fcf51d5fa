#include "zk_quornex/messages/eventcopy.h"

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

}  // namespace NS_QUORCORBA
