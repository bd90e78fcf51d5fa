#include "nms/commands/watch.h"

#include <algorithm>
#include <ostream>
#include <thread>

namespace zk::nms {
namespace {

constexpr std::chrono::milliseconds BETWEEN_FETCHES{100};
constexpr std::chrono::milliseconds FIRST_WAIT{200};
constexpr std::chrono::milliseconds LONGEST_WAIT{10000};

class OpenQueue {
 public:
  explicit OpenQueue(EventQueue& queue) : queue_(queue) { queue_.reopen(); }
  ~OpenQueue() { queue_.close(); }
  OpenQueue(const OpenQueue&) = delete;
  OpenQueue& operator=(const OpenQueue&) = delete;

 private:
  EventQueue& queue_;
};

}  // namespace

void declareWatch(options::Command& command, WatchSettings& settings) {
  command
      .add("--timeout", settings.seconds,
           "Seconds to watch; for ever without it. (Before the command's name, --timeout is "
           "the limit for one call to the agent)")
      .range(0.001, 31536000.0)
      .formOnly("SECONDS");
  command.add("--ping", settings.ping, "Seconds between checks that the agent still serves")
      .range(1U, 86400U)
      .form("SECONDS")
      .showDefault();
  command.flag(
      "--no-reconnect", [&settings] { settings.reconnect = false; },
      "End with 2 when the session is lost, instead of logging in again");
}

void declareTypes(options::Command& command, Wishes& wishes) {
  command
      .add("--type", wishes.types,
           "Events of this type only, as in NT_ALARM; repeat it for more types")
      .formOnly("TYPE")
      .check(
          [](const std::string& type) { return type.empty() ? "an empty text is no type" : ""; });
}

void declareDelivery(options::Command& command, Wishes& wishes) {
  const auto pull = command.flag(
      "--pull", [&wishes] { wishes.delivery = Delivery::PULL; },
      "Fetch the events instead of having the agent call back");
  command
      .flag(
          "--structured", [&wishes] { wishes.delivery = Delivery::PUSH_ONE_BY_ONE; },
          "Have the agent bring events one by one instead of several at a time")
      .excludes(pull);
}

void declareCount(options::Command& command, unsigned& count, const std::string& help) {
  command.add("--count", count, help).range(1U, 4000000000U).formOnly("N");
}

// A session with its subscription. The queue closes before the connection ends,
// which waits for calls of the agent that wait for room in the queue.
class Watch::Login {
 public:
  explicit Login(const Watch& watch)
      : connection(watch.context_.options.access, watch.context_.interrupts, &watch.queue_),
        open_(watch.queue_),
        subscription(subscribe(connection, watch.settings_.wishes, watch.queue_)) {}

  void check() {
    connection.session()->ping();
    subscription->check();
  }

  Connection connection;

 private:
  const OpenQueue open_;

 public:
  const std::unique_ptr<Subscription> subscription;
};

Watch::Watch(const Context& context, const WatchSettings& settings, WatchHandler& handler)
    : context_(context), settings_(settings), handler_(handler) {}

Watch::End Watch::run() {
  if (settings_.seconds) {
    end_ = Steady::now() + std::chrono::duration_cast<Steady::duration>(
                               std::chrono::duration<double>(*settings_.seconds));
  }
  auto login = std::make_unique<Login>(*this);
  lastWell_ = Clock::now();
  for (;;) {
    try {
      catchUp(*login);
      return follow(*login);
    } catch (const SessionLost& lost) {
      login.reset();
      handleRest();
      if (handler_.satisfied()) {
        return End::ENOUGH;
      }
      login = rejoin(lost);
      if (login == nullptr) {
        return End::TIME_IS_UP;
      }
    }
  }
}

// Of what the calls may throw, makes the loss of the agent what it is here.
void Watch::noticeLoss(const std::function<void()>& calls) const {
  try {
    calls();
  } catch (const CORBA::SystemException& failure) {
    if (isRefusal(failure)) {
      throw;
    }
    throw SessionLost{callText(failure, context_.options.access.agent)};
  } catch (const CosEventComm::Disconnected&) {
    throw SessionLost{"the agent has disconnected this consumer"};
  }
}

void Watch::catchUp(Login& login) {
  noticeLoss([&] { lossy_ = !handler_.catchUp(login.connection) && lossy_; });
}

Watch::End Watch::follow(Login& login) {
  nextCheck_ = Steady::now() + std::chrono::seconds(settings_.ping);
  while (!handler_.satisfied()) {
    if (Steady::now() >= end_) {
      return End::TIME_IS_UP;
    }
    const std::optional<Told> told = queue_.take(wakeUp());
    if (told) {
      handle(*told, login);
    }
    if (!told || Steady::now() >= nextCheck_) {
      noticeLoss([&] { look(login); });
    }
  }
  return End::ENOUGH;
}

Watch::Steady::time_point Watch::wakeUp() const {
  Steady::time_point result = std::min(end_, nextCheck_);
  if (settings_.wishes.delivery == Delivery::PULL) {
    const auto pause = moreWaits_ ? Steady::duration::zero() : Steady::duration(BETWEEN_FETCHES);
    result = std::min(result, Steady::now() + pause);
  }
  return result;
}

// Fetches what is to be fetched, and when it is time looks whether the agent is
// still there: when it dies while it brings events, nothing tells.
void Watch::look(Login& login) {
  moreWaits_ = login.subscription->fetch();
  if (Steady::now() >= nextCheck_) {
    login.check();
    nextCheck_ = Steady::now() + std::chrono::seconds(settings_.ping);
  }
  lastWell_ = settings_.wishes.delivery == Delivery::PULL ? Clock::now() : lastWell_;
}

void Watch::handle(const Told& told, Login& login) {
  switch (told.kind) {
    case Told::EVENT:
      lastWell_ = Clock::now();
      handler_.take(told.event);
      break;
    case Told::SESSION_ENDED:
      throw SessionLost{"the agent has ended the session"};
    case Told::DISCONNECTED:
      throw SessionLost{"the agent has disconnected this consumer"};
    case Told::LOSS_BEGAN:
      noteLoss(told);
      break;
    case Told::LOSS_ENDED:
      say("the EMS has lost no events since " + isoTime(told.time));
      catchUp(login);
      break;
  }
}

// What came before the end of a session still counts.
void Watch::handleRest() {
  while (const std::optional<Told> told = queue_.take(Steady::now())) {
    if (told->kind == Told::EVENT && !handler_.satisfied()) {
      handler_.take(told->event);
    }
    if (told->kind == Told::LOSS_BEGAN) {
      noteLoss(*told);
    }
  }
}

void Watch::noteLoss(const Told& told) {
  lossy_ = true;
  say("the EMS has lost events since " + isoTime(told.time) +
      (told.notificationId.empty() ? "" : ", from notification " + told.notificationId + " on"));
}

// Null when the time was up before; then events may be missing, and it is said.
std::unique_ptr<Watch::Login> Watch::rejoin(const SessionLost& lost) {
  const std::string from = timeText(lastWell_);
  if (!settings_.reconnect) {
    throw ConnectionError(lost.why + "; events since " + from + " may be missing");
  }
  say(lost.why + "; connecting again");
  auto login = logInInTime();
  lastWell_ = Clock::now();
  lossy_ = true;
  if (login == nullptr) {
    say("not connected again in time; events since " + from + " may be missing");
    return login;
  }
  say("connected again; events between " + from + " and " + timeText(lastWell_) +
      " may be missing");
  return login;
}

std::unique_ptr<Watch::Login> Watch::logInInTime() const {
  for (auto wait = FIRST_WAIT;; wait = std::min(2 * wait, LONGEST_WAIT)) {
    const auto now = Steady::now();
    std::this_thread::sleep_until(std::min(now + wait, end_));
    if (Steady::now() >= end_) {
      return nullptr;
    }
    if (auto login = tryToLogIn()) {
      return login;
    }
  }
}

// Null when trying again may help.
std::unique_ptr<Watch::Login> Watch::tryToLogIn() const {
  try {
    return std::make_unique<Login>(*this);
  } catch (const ConnectionError&) {
  } catch (const CORBA::SystemException& failure) {
    if (isRefusal(failure)) {
      throw;
    }
  } catch (const globaldefs::ProcessingFailureException& refusal) {
    // An agent that just comes up may refuse what it grants later.
    if (refusal.exceptionType == globaldefs::EXCPT_ACCESS_DENIED) {
      throw;
    }
  }
  return nullptr;
}

void Watch::say(const std::string& text) const { context_.err << "zk-nms: " << text << std::endl; }

void conclude(const Watch& watch, Watch::End end, unsigned came, unsigned count) {
  if (watch.lossy()) {
    throw EventsLostError("events were lost: what was written is not all that happened");
  }
  if (end == Watch::End::TIME_IS_UP && count > 0) {
    throw TimedOutError("the time is up: " + std::to_string(came) + " of " + std::to_string(count) +
                        " came");
  }
}

}  // namespace zk::nms
