// How a finished notification leaves the process. Safe on any thread.
#ifndef ZK_PLATFORM_EVENTS_H
#define ZK_PLATFORM_EVENTS_H

#include <string>

#include "zk_quornex/idl/events.h"

namespace NS_CORBA {

// Writes domain name, type name and event name of the fixed header for a
// notification of this type, such as "NT_OBJECT_CREATION".
void fillFixedHeader(std::string type, CosNotification::StructuredEvent& event);

}  // namespace NS_CORBA

namespace NS_QUORCORBA {

// Sends or queues the event. It is the caller's again afterwards: whoever
// wants to keep it copies it.
void PushEvent(CosNotification::StructuredEvent& event);

}  // namespace NS_QUORCORBA

#endif
