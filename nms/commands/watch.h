// Stays with the agent's events: through the end of a session, the death of an
// agent and its return.
#ifndef ZK_NMS_COMMANDS_WATCH_H
#define ZK_NMS_COMMANDS_WATCH_H

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "nms/commands/program.h"
#include "nms/events/subscription.h"
#include "nms/wire/text.h"

namespace zk::nms {

struct WatchSettings {
  Wishes wishes;
  std::optional<double> seconds;  // how long to watch; for ever
  bool reconnect = true;
  unsigned ping = 5;  // seconds between checks that the agent still serves
};

// What the commands that watch have in common on the command line. settings must
// outlive the parsing.

// --timeout, --no-reconnect, --ping.
void declareWatch(options::Command& command, WatchSettings& settings);

// --type.
void declareTypes(options::Command& command, Wishes& wishes);

// --pull, --structured.
void declareDelivery(options::Command& command, Wishes& wishes);

// --count.
void declareCount(options::Command& command, unsigned& count, const std::string& help);

// What a command does with what comes. Called on the thread that runs the watch.
class WatchHandler {
 public:
  virtual ~WatchHandler() = default;

  // After every login, the events coming from now on; and when the agent says
  // that it drops no more of them. True when this makes good for all that was
  // missed before.
  virtual bool catchUp(Connection& /*connection*/) { return false; }

  virtual void take(const Event& event) = 0;

  // Whether all that it was after has come.
  virtual bool satisfied() const = 0;
};

class Watch {
 public:
  enum class End { ENOUGH, TIME_IS_UP };

  // All must outlive it.
  Watch(const Context& context, const WatchSettings& settings, WatchHandler& handler);

  // The time starts to run now. What goes wrong with the first login is thrown,
  // and when the settings want no other login, ConnectionError for the end of
  // it. What the handler throws is passed on, but for the loss of the agent.
  End run();

  // Whether events may be missing from what the handler was given.
  bool lossy() const { return lossy_; }

 private:
  using Steady = std::chrono::steady_clock;
  class Login;
  struct SessionLost {
    std::string why;
  };

  void noticeLoss(const std::function<void()>& calls) const;
  void catchUp(Login& login);
  End follow(Login& login);
  void handle(const Told& told, Login& login);
  void handleRest();
  void look(Login& login);
  void noteLoss(const Told& told);
  std::unique_ptr<Login> rejoin(const SessionLost& lost);
  std::unique_ptr<Login> tryToLogIn() const;
  std::unique_ptr<Login> logInInTime() const;
  Steady::time_point wakeUp() const;
  void say(const std::string& text) const;

  const Context& context_;
  const WatchSettings& settings_;
  WatchHandler& handler_;
  mutable EventQueue queue_;  // shared with the logins
  Steady::time_point end_ = Steady::time_point::max();
  Steady::time_point nextCheck_;
  Clock::time_point lastWell_;  // when the agent last showed that it served
  bool moreWaits_ = false;      // at the agent, of what is to be fetched
  bool lossy_ = false;
};

// The exit status of a watch for count things (0: for no number of them), of
// which this many came: throws TimedOutError or EventsLostError, or returns.
void conclude(const Watch& watch, Watch::End end, unsigned came, unsigned count);

}  // namespace zk::nms

#endif
