#include "agent/managers/iterators.h"

#include <string>
#include <vector>

#include "agent/tmf/errors.h"

namespace zk::agent {

OpenIterators::OpenIterators(std::shared_ptr<ServantHome> home, const ListLimits& limits,
                             SteadyClock clock)
    : home_(std::move(home)),
      most_(limits.iterators),
      idle_(limits.iteratorIdle),
      clock_(std::move(clock)) {}

CORBA::Object_ptr OpenIterators::open(PortableServer::Servant iterator, Ticket& ticket) {
  const MutexLock lock(mutex_);
  if (lastUse_.size() >= most_) {
    throw refusal(globaldefs::EXCPT_TOO_MANY_OPEN_ITERATORS,
                  "the session has " + std::to_string(most_) +
                      " open iterators, the most it may have: destroy one");
  }
  CORBA::Object_var reference = home_->open(iterator, ticket);
  lastUse_.emplace(ticket, clock_());
  return reference._retn();
}

void OpenIterators::touch(Ticket ticket) {
  const MutexLock lock(mutex_);
  const auto found = lastUse_.find(ticket);
  if (found != lastUse_.end()) {
    found->second = clock_();
  }
}

void OpenIterators::close(Ticket ticket) {
  {
    const MutexLock lock(mutex_);
    lastUse_.erase(ticket);
  }
  home_->close(ticket);
}

std::size_t OpenIterators::reap() {
  std::vector<Ticket> idle;
  {
    const MutexLock lock(mutex_);
    const auto now = clock_();
    for (const auto& [ticket, lastUse] : lastUse_) {
      if (now - lastUse > idle_) {
        idle.push_back(ticket);
      }
    }
  }
  for (const Ticket ticket : idle) {
    close(ticket);
  }
  return idle.size();
}

}  // namespace zk::agent
