// The filter objects of one session, which clients call. Safe on any thread.
#ifndef ZK_AGENT_CHANNEL_FILTERS_H
#define ZK_AGENT_CHANNEL_FILTERS_H

#include <map>
#include <memory>

#include "agent/channel/constraintlist.h"
#include "agent/channel/settings.h"
#include "agent/orb/servanthome.h"
#include "zk_quornex/idl/channel.h"
#include "zk_quornex/idl/events.h"
#include "zk_quornex/platform/threadsafety.h"

namespace zk::agent {

class SessionChannel;

// A filter object: what clients call, and what events are held against. It goes
// on filtering where it was added when the object itself is destroyed.
struct FilterObject {
  CosNotifyFilter::Filter_var reference;
  std::shared_ptr<ConstraintList> constraints;
};

class Filters {
 public:
  explicit Filters(std::shared_ptr<const ChannelParts> parts) : parts_(std::move(parts)) {}

  // Makes a filter object without constraints. Throws CORBA::IMP_LIMIT when the
  // session has as many as it may. The caller owns the result.
  CosNotifyFilter::Filter_ptr make(const std::shared_ptr<SessionChannel>& channel);

  // Throws BAD_PARAM for anything but a living filter of this session: what runs
  // in another process cannot be asked for every event.
  FilterObject find(CosNotifyFilter::Filter_ptr reference) const;

  // The object's end; an unknown ticket is fine.
  void close(ServantHome::Ticket ticket);
  void closeAll();

 private:
  const std::shared_ptr<const ChannelParts> parts_;
  mutable Mutex mutex_;
  std::map<ServantHome::Ticket, FilterObject> filters_ ZK_GUARDED_BY(mutex_);
};

// What clients make filter objects with. The caller owns a reference to the result.
PortableServer::Servant makeFilterFactory(std::shared_ptr<SessionChannel> channel);

}  // namespace zk::agent

#endif
