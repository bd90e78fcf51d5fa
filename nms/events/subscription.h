// This program as one consumer of the agent's event channel, and the queue of what
// the agent tells.
#ifndef ZK_NMS_EVENTS_SUBSCRIPTION_H
#define ZK_NMS_EVENTS_SUBSCRIPTION_H

#include <chrono>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "nms/events/event.h"
#include "nms/wire/connection.h"
#include "zk_quornex/platform/threadsafety.h"

namespace zk::nms {

struct Told {
  enum Kind { EVENT, SESSION_ENDED, DISCONNECTED, LOSS_BEGAN, LOSS_ENDED };

  Kind kind;
  Event event;                 // of EVENT
  std::string time;            // of the losses, as sent
  std::string notificationId;  // of LOSS_BEGAN
};

// What the agent tells, on its way from the ORB's threads to the one that works on
// it. Locks internally.
//
// Holds at most as many events as its limit: who brings another waits, so that
// the agent keeps what this program is too slow for, and its bound holds. What
// is told besides events always fits.
class EventQueue : public SessionListener {
 public:
  explicit EventQueue(std::size_t limit = 10000) : limit_(limit) {}

  // False when the queue was closed, before or while waiting; then nothing is
  // kept of the event.
  bool put(Event event);

  // For the thread that takes as well: never waits, whatever the limit.
  void add(Event event);

  void disconnected();

  void sessionEnded() override;
  void eventLossOccurred(const std::string& startTime, const std::string& notificationId) override;
  void alarmLossOccurred(const std::string& startTime, const std::string& notificationId) override;
  void eventLossCleared(const std::string& endTime) override;

  // The oldest, in the order told; nothing when none came until then.
  std::optional<Told> take(std::chrono::steady_clock::time_point until);

  // Lets go whoever waits to put, and refuses further events until reopened.
  // What is in it stays.
  void close();
  void reopen();

 private:
  void tell(Told told);

  const std::size_t limit_;
  Mutex mutex_;
  Condition changed_;
  std::deque<Told> told_ ZK_GUARDED_BY(mutex_);
  bool closed_ ZK_GUARDED_BY(mutex_) = false;
};

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
