// The event cache for clients that pull their notifications: the manager that
// is its entry, and what lies beneath it. The manager and the handles lock
// internally, in the order registry, class, list.
#ifndef ZK_MESSAGES_MESSAGECACH_H
#define ZK_MESSAGES_MESSAGECACH_H

#include "messages/filter.h"
#include "messages/messagecache.h"
#include "messages/messagehandle.h"
#include "messages/messagemgr.h"
#include "messages/msgagent.h"
#include "messages/refcount.h"

#endif
