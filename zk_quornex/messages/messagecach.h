// The event cache for clients that pull their notifications: the manager that
// is its entry, and what lies beneath it. The manager and the handles lock
// internally, in the order registry, class, list.
#ifndef ZK_MESSAGES_MESSAGECACH_H
#define ZK_MESSAGES_MESSAGECACH_H

#include "zk_quornex/messages/eventmove.h"
#include "zk_quornex/messages/filter.h"
#include "zk_quornex/messages/listsignal.h"
#include "zk_quornex/messages/messagecache.h"
#include "zk_quornex/messages/messagehandle.h"
#include "zk_quornex/messages/messagemgr.h"
#include "zk_quornex/messages/msgagent.h"
#include "zk_quornex/messages/refcount.h"

#endif
