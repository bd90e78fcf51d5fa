// What the proxies of one consumer admin share, and what they start with.
#ifndef ZK_AGENT_CHANNEL_ADMIN_H
#define ZK_AGENT_CHANNEL_ADMIN_H

#include <memory>

#include "agent/channel/qos.h"
#include "agent/channel/selection.h"
#include "zk_quornex/idl/channel.h"

namespace zk::agent {

struct Admin {
  Admin(CosNotifyChannelAdmin::AdminID number,
        CosNotifyChannelAdmin::InterFilterGroupOperator filters, const ChannelSettings& settings,
        const QosValues& initial)
      : id(number),
        combination(filters),
        selection(std::make_shared<Selection>(settings)),
        qos(initial, mostOf(settings)) {}

  static Qos::Most mostOf(const ChannelSettings& settings) {
    return {static_cast<CORBA::Long>(settings.eventsPerCall),
            static_cast<CORBA::Long>(settings.eventsPerConsumer)};
  }

  const CosNotifyChannelAdmin::AdminID id;
  const CosNotifyChannelAdmin::InterFilterGroupOperator combination;
  const std::shared_ptr<Selection> selection;
  Qos qos;
};

}  // namespace zk::agent

#endif
