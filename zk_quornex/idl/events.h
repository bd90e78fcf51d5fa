// Structured events, and what TMF 814 puts into them.
#ifndef ZK_IDL_EVENTS_H
#define ZK_IDL_EVENTS_H

#include "zk_quornex/idl/corba.h"

#include ZK_STUBS(CosNotification)
#include ZK_STUBS(notifications)

#endif
