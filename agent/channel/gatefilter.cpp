#include "agent/channel/gatefilter.h"

#include <utility>

namespace zk::agent {

GateFilter::GateFilter(EventKind kind, std::shared_ptr<Gate> gate)
    : kind_(kind), gate_(std::move(gate)) {}

GateFilter::~GateFilter() { gate_->close(); }

bool GateFilter::isFiltered(const void* context) {
  if (context == nullptr) {
    return true;
  }
  const auto& event = *static_cast<const CosNotification::StructuredEvent*>(context);
  return withheld_.isWithheld(event) || !gate_->accept(kind_, event);
}

int GateFilter::GetFilter(Numbers& severities, Texts&, Numbers& layers, Numbers& objectTypes,
                          Time& start, Time& end, Texts& types) {
  if (!withheld_.isEmpty()) {
    Criteria all = withheld_.inForce();
    severities = std::move(all.severities);
    layers = std::move(all.layers);
    objectTypes = std::move(all.objectTypes);
    types = std::move(all.types);
    start = all.start;
    end = all.end;
  }
  if (!NS_QUORCORBA::TimeChange::checkDateTimeValid(start)) {
    start = {1970, 1, 1, 0, 0, 0};
  }
  return 0;
}

int GateFilter::suspendFilter(Numbers& severities, Numbers&, Numbers& layers, Numbers& objectTypes,
                              Time& start, Time& end, Texts& types) {
  return withheld_.suspend({severities, layers, objectTypes, start, end, types});
}

int GateFilter::resumeFilter(Numbers& severities, Numbers&, Numbers& layers, Numbers& objectTypes,
                             Time& start, Time& end, Texts& types) {
  return withheld_.resume({severities, layers, objectTypes, start, end, types});
}

int GateFilter::cancelFilter(Numbers& severities, Numbers&, Numbers& layers, Numbers& objectTypes,
                             Time& start, Time& end, Texts& types) {
  return withheld_.cancel({severities, layers, objectTypes, start, end, types});
}

}  // namespace zk::agent
