// This program as one consumer of the agent's event channel.
#ifndef ZK_NMS_EVENTS_SUBSCRIPTION_H
#define ZK_NMS_EVENTS_SUBSCRIPTION_H

#include <memory>
#include <string>
#include <vector>

#include "nms/events/queue.h"
#include "nms/wire/connection.h"

namespace zk::nms {

enum class Delivery { PUSH_SEQUENCES, PUSH_ONE_BY_ONE, PULL };

struct Wishes {
  Delivery delivery = Delivery::PUSH_SEQUENCES;
  std::vector<std::string> constraints;  // events that meet any of them; none: all
  std::vector<std::string> types;        // events of any of these types; none: all
};

class Subscription {
 public:
  virtual ~Subscription() = default;

  // Fetches what waits at the agent, into the queue, and says whether there may
  // be more; false at once where the agent brings the events itself. Passes on
  // what the call throws.
  virtual bool fetch() = 0;

  // Throws a CORBA exception when the agent serves it no longer.
  virtual void check() = 0;
};

// From when it returns, what the agent tells goes into the queue, which must
// outlive the connection. Throws RefusedError for a wish that is not granted,
// and passes on what the calls throw.
std::unique_ptr<Subscription> subscribe(Connection& connection, const Wishes& wishes,
                                        EventQueue& queue);

}  // namespace zk::nms

#endif
