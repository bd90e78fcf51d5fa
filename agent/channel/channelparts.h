// What the parts of one session's channel share. Read-only.
#ifndef ZK_AGENT_CHANNEL_CHANNELPARTS_H
#define ZK_AGENT_CHANNEL_CHANNELPARTS_H

#include <memory>

#include "agent/channel/eventcache.h"
#include "agent/channel/losses.h"
#include "agent/channel/settings.h"
#include "agent/channel/workers.h"
#include "agent/filter/constraint.h"
#include "agent/servanthome.h"
#include "idl/tmf814.h"

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
