// The embedded EMS's made-up traffic: so many changes a second. Safe on any
// thread.
#ifndef ZK_AGENT_EMS_TRAFFIC_TRAFFIC_H
#define ZK_AGENT_EMS_TRAFFIC_TRAFFIC_H

#include <optional>

#include "agent/ems/traffic/changer.h"
#include "agent/ems/traffic/paced.h"

namespace zk::agent {

struct TrafficOptions {
  double rate = 0;  // changes a second, 0 to HIGHEST_RATE; 0: none
  unsigned seed = 1;
};

class Traffic {
 public:
  // inventory must outlive this object. It is looked through with the first
  // change. Throws std::invalid_argument for a rate out of range.
  Traffic(Inventory& inventory, const TrafficOptions& options);

  // Throws std::invalid_argument for a rate out of range.
  void setRate(double perSecond) { paced_.setRate(perSecond); }
  double rate() const { return paced_.rate(); }

 private:
  void step();

  Inventory& inventory_;
  const unsigned seed_;
  std::optional<Changer> changer_;
  Paced paced_;  // last: its thread uses the others
};

}  // namespace zk::agent

#endif
