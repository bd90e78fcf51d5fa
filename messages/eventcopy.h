// How an event gets from its holder into a client's list.
#ifndef ZK_MESSAGES_EVENTCOPY_H
#define ZK_MESSAGES_EVENTCOPY_H

#include "idl/tmf814.h"

namespace NS_QUORCORBA {

// Makes to equal to from. Threads may copy the same event at once.
void copyEvent(const CosNotification::StructuredEvent& from, CosNotification::StructuredEvent& to);

// Makes to what from was, and leaves from with next to nothing. The texts and the
// properties, which are nearly all the weight of an event, change hands; the body
// is copied.
void moveEvent(CosNotification::StructuredEvent& from, CosNotification::StructuredEvent& to);

}  // namespace NS_QUORCORBA

#endif
