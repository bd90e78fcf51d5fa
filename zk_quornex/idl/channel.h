// The standard notification channel: its administration, filters and proxies.
#ifndef ZK_IDL_CHANNEL_H
#define ZK_IDL_CHANNEL_H

#include "zk_quornex/idl/corba.h"

#include ZK_STUBS(CosNotification)
#include ZK_STUBS(CosNotifyChannelAdmin)

#endif
