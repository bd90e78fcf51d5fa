#include "agent/sessions/logins.h"

#include <algorithm>

#include "agent/base/log.h"
#include "agent/tmf/errors.h"

namespace zk::agent {

namespace {

constexpr std::size_t PLACES = 2;
constexpr std::chrono::hours MEMORY{1};

Refusal denied() { return refusal(globaldefs::EXCPT_ACCESS_DENIED, "wrong user or password"); }

// 1 s, 2 s, 4 s ...
std::chrono::seconds pauseAfter(unsigned failures) {
  const unsigned doublings = std::min(failures - 1, 16U);
  return std::min(Logins::SHORTEST_PAUSE * (1U << doublings), Logins::LONGEST_PAUSE);
}

}  // namespace

class Logins::Place {
 public:
  Place(Logins& logins, const std::string& peer) : logins_(logins) {
    const MutexLock lock(logins_.mutex_);
    own_ = logins_.waiting_.insert(logins_.waiting_.end(), peer);
    while (!logins_.mayGo(own_)) {
      logins_.moved_.wait(logins_.mutex_);
    }
    logins_.comparing_.splice(logins_.comparing_.end(), logins_.waiting_, own_);
    logins_.moved_.notifyAll();
  }
  ~Place() {
    const MutexLock lock(logins_.mutex_);
    logins_.comparing_.erase(own_);
    logins_.moved_.notifyAll();
  }
  Place(const Place&) = delete;
  Place& operator=(const Place&) = delete;

 private:
  Logins& logins_;
  std::list<std::string>::iterator own_;
};

Logins::Logins(Users& users, SteadyClock clock) : users_(users), clock_(std::move(clock)) {}

void Logins::check(const Caller& caller, const std::string& password) {
  if (caller.user.size() > LONGEST_WORD || password.size() > LONGEST_WORD) {
    throw refusal(globaldefs::EXCPT_INVALID_INPUT,
                  "a user name or a password has more than 256 bytes");
  }
  const Who who(caller.user, caller.peer);
  if (isPausing(who)) {
    throw denied();
  }
  const Place place(*this, caller.peer);
  if (isPausing(who)) {  // a try that was ahead failed
    throw denied();
  }
  if (!users_.mayLogIn(caller.user, password)) {
    const std::chrono::seconds pause = noteFailure(who);
    logFailure("login of '" + printable(caller.user.c_str()) + "' refused" +
               (caller.peer.empty() ? "" : " at " + caller.peer) + ", as is any other for " +
               std::to_string(pause.count()) + " s");
    throw denied();
  }
  forget(who);
}

std::size_t Logins::remembered() const {
  const MutexLock lock(mutex_);
  return failures_.size();
}

bool Logins::isPausing(const Who& who) const {
  const auto now = clock_();
  const MutexLock lock(mutex_);
  const auto found = failures_.find(who);
  return found != failures_.end() && now < found->second.until;
}

bool Logins::isComparing(const std::string& peer) const {
  return std::find(comparing_.begin(), comparing_.end(), peer) != comparing_.end();
}

// Of those whose peer has no place yet, the first.
bool Logins::mayGo(std::list<std::string>::const_iterator asking) const {
  auto first = waiting_.begin();
  while (first != asking && isComparing(*first)) {
    ++first;
  }
  return comparing_.size() < PLACES && first == asking && !isComparing(*asking);
}

std::chrono::seconds Logins::noteFailure(const Who& who) {
  const auto now = clock_();
  const MutexLock lock(mutex_);
  Failures& failures = failures_[who];
  failures.inRow = now - failures.last < MEMORY ? failures.inRow + 1 : 1;
  failures.last = now;
  const std::chrono::seconds pause = pauseAfter(failures.inRow);
  failures.until = now + pause;
  if (failures_.size() > MOST_REMEMBERED) {
    failures_.erase(std::min_element(
        failures_.begin(), failures_.end(),
        [](const auto& a, const auto& b) { return a.second.last < b.second.last; }));
  }
  return pause;
}

void Logins::forget(const Who& who) {
  const MutexLock lock(mutex_);
  failures_.erase(who);
}

}  // namespace zk::agent
