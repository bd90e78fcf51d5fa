// The event types that the EMS sends. No state.
#ifndef ZK_AGENT_CHANNEL_OFFEREDTYPES_H
#define ZK_AGENT_CHANNEL_OFFEREDTYPES_H

#include "zk_quornex/idl/channel.h"
#include "zk_quornex/idl/events.h"

namespace zk::agent {

// All of them, or an empty list for a mode that asks for none now. The caller
// owns the result.
CosNotification::EventTypeSeq* offeredTypes(CosNotifyChannelAdmin::ObtainInfoMode mode);

}  // namespace zk::agent

#endif
