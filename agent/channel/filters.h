// The filter objects of one session. Safe on any thread.
#ifndef ZK_AGENT_CHANNEL_FILTERS_H
#define ZK_AGENT_CHANNEL_FILTERS_H

#include <map>
#include <memory>
#include <mutex>

#include "agent/channel/channelparts.h"
#include "agent/channel/selection.h"

namespace zk::agent {

class SessionChannel;

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
  mutable std::mutex mutex_;
  std::map<ServantHome::Ticket, FilterObject> filters_;
};

}  // namespace zk::agent

#endif
