// A proxy's gate as the event cache's filter. The cache owns one for each message
// class and calls it by one thread at a time.
#ifndef ZK_AGENT_CHANNEL_GATEFILTER_H
#define ZK_AGENT_CHANNEL_GATEFILTER_H

#include <memory>
#include <string>
#include <vector>

#include "agent/channel/gate.h"
#include "agent/channel/withheld.h"
#include "zk_quornex/messages/filter.h"

namespace zk::agent {

// The context of a push is the event itself, a const StructuredEvent*, in a copy
// that nobody else reads meanwhile; without one nobody gets the event.
//
// The criteria of the manager's calls, by place: perceived severities; (not
// used; in GetFilter, where these are texts, too); layer rates; object types;
// start and end of the EMS's time; event types. What they name is withheld: see
// Withheld. GetFilter reports what is in force, and the beginning of time as the
// start where there is no other, so that the filter is always asked.
class GateFilter : public NS_QUORCORBA::NXMessageFilter {
 public:
  using Numbers = std::vector<long>;
  using Texts = std::vector<std::string>;
  using Time = NS_QUORCORBA::stDateTimeType;

  GateFilter(EventKind kind, std::shared_ptr<Gate> gate);
  // The cache lets go of the client: the gate is closed.
  ~GateFilter() override;

  bool isFiltered(const void* context) override;
  int GetFilter(Numbers& severities, Texts&, Numbers& layers, Numbers& objectTypes, Time& start,
                Time& end, Texts& types) override;
  int suspendFilter(Numbers& severities, Numbers&, Numbers& layers, Numbers& objectTypes,
                    Time& start, Time& end, Texts& types) override;
  int resumeFilter(Numbers& severities, Numbers&, Numbers& layers, Numbers& objectTypes,
                   Time& start, Time& end, Texts& types) override;
  int cancelFilter(Numbers& severities, Numbers&, Numbers& layers, Numbers& objectTypes,
                   Time& start, Time& end, Texts& types) override;

 private:
  const EventKind kind_;
  const std::shared_ptr<Gate> gate_;
  Withheld withheld_;
};

}  // namespace zk::agent

#endif
