// What the parts of one session's channel share. Read-only.
#ifndef ZK_AGENT_CHANNEL_CHANNELPARTS_H
#define ZK_AGENT_CHANNEL_CHANNELPARTS_H

#include <memory>

#include "agent/base/workers.h"
#include "agent/channel/eventcache.h"
#include "agent/channel/losses.h"
#include "agent/channel/settings.h"
#include "agent/constraint/constraint.h"
#include "agent/orb/servanthome.h"
#include "zk_quornex/idl/corba.h"

namespace zk::agent {

struct ChannelParts {
  long session = 0;
  ChannelSettings settings;  // with the number of events resolved
  std::shared_ptr<EventCache> cache;
  std::shared_ptr<Workers> workers;
  std::shared_ptr<Losses> losses;
  std::shared_ptr<ServantHome> home;
  DynamicAny::DynAnyFactory_var dynAnys;
};

}  // namespace zk::agent

#endif
