#include "nms/commands/watch.h"

#include <algorithm>
#include <ostream>
#include <thread>

namespace zk::nms {
namespace {

constexpr std::chrono::milliseconds kBetweenFetches{100};
constexpr std::chrono::milliseconds kFirstWait{200};
constexpr std::chrono::milliseconds kLongestWait{10000};

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

// A session with its subscription. The queue closes before the connection ends,
// which waits for calls of the agent that wait for room in the queue.
class Watch::Login {
 public:
  explicit Login(const Watch& watch)
      : connection(watch.context_.options, watch.context_.interrupts, &watch.queue_),
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
        return End::kEnough;
      }
      login = rejoin(lost);
      if (login == nullptr) {
        return End::kTimeIsUp;
      }
    }
  }
}

// Of what the calls may throw, makes the loss of the agent what it is here.
void Watch::guarded(const std::function<void()>& calls) const {
  try {
    calls();
  } catch (const CORBA::SystemException& failure) {
    if (isRefusal(failure)) {
      throw;
    }
    throw SessionLost{describe(failure, context_.options.agent)};
  } catch (const CosEventComm::Disconnected&) {
    throw SessionLost{"the agent has disconnected this consumer"};
  }
}

void Watch::catchUp(Login& login) {
  guarded([&] { lossy_ = !handler_.catchUp(login.connection) && lossy_; });
}

Watch::End Watch::follow(Login& login) {
  nextCheck_ = Steady::now() + std::chrono::seconds(settings_.ping);
  while (!handler_.satisfied()) {
    if (Steady::now() >= end_) {
      return End::kTimeIsUp;
    }
    const std::optional<Told> told = queue_.take(wakeUp());
    if (told) {
      handle(*told, login);
    }
    if (!told || Steady::now() >= nextCheck_) {
      guarded([&] { look(login); });
    }
  }
  return End::kEnough;
}

Watch::Steady::time_point Watch::wakeUp() const {
  Steady::time_point result = std::min(end_, nextCheck_);
  if (settings_.wishes.delivery == Delivery::kPull) {
    const auto pause = moreWaits_ ? Steady::duration::zero() : Steady::duration(kBetweenFetches);
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
  lastWell_ = settings_.wishes.delivery == Delivery::kPull ? Clock::now() : lastWell_;
}

void Watch::handle(const Told& told, Login& login) {
  switch (told.kind) {
    case Told::kEvent:
      lastWell_ = Clock::now();
      handler_.take(told.event);
      break;
    case Told::kSessionEnded:
      throw SessionLost{"the agent has ended the session"};
    case Told::kDisconnected:
      throw SessionLost{"the agent has disconnected this consumer"};
    case Told::kLossBegan:
      noteLoss(told);
      break;
    case Told::kLossEnded:
      say("the EMS has lost no events since " + isoTime(told.time));
      catchUp(login);
      break;
  }
}

// What came before the end of a session still counts.
void Watch::handleRest() {
  while (const std::optional<Told> told = queue_.take(Steady::now())) {
    if (told->kind == Told::kEvent && !handler_.satisfied()) {
      handler_.take(told->event);
    }
    if (told->kind == Told::kLossBegan) {
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
  for (auto wait = kFirstWait;; wait = std::min(2 * wait, kLongestWait)) {
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

}  // namespace zk::nms
