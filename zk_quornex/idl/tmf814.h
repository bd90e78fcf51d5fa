// The stubs and servant base classes of every module in this folder.
#ifndef ZK_IDL_TMF814_H
#define ZK_IDL_TMF814_H

#include "zk_quornex/idl/admin.h"
#include "zk_quornex/idl/channel.h"
#include "zk_quornex/idl/events.h"
#include "zk_quornex/idl/managers.h"
#include "zk_quornex/idl/names.h"
#include "zk_quornex/idl/sessions.h"

#endif
