#include "agent/ems/traffic/traffic.h"

namespace zk::agent {

Traffic::Traffic(Inventory& inventory, const TrafficOptions& options)
    : inventory_(inventory), seed_(options.seed), paced_(options.rate, [this] { step(); }) {}

void Traffic::step() {
  if (!changer_) {
    changer_.emplace(inventory_, seed_);
  }
  changer_->step();
}

}  // namespace zk::agent
