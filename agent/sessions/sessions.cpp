#include "agent/sessions/sessions.h"

#include "agent/base/log.h"
#include "agent/channel/eventservice.h"
#include "agent/sessions/nmscalls.h"
#include "agent/tmf/errors.h"

namespace zk::agent {

namespace {

constexpr std::chrono::milliseconds LOSS_CALL_LIMIT{5000};

Paging pagingOf(const std::shared_ptr<ServantHome>& servants, const ListLimits& limits,
                const SteadyClock& clock) {
  return {std::make_shared<OpenIterators>(servants, limits, clock), limits.page};
}

std::string titleOf(const Session& session) {
  const std::string peer = session.peer.empty() ? "" : " at " + session.peer;
  return "session " + std::to_string(session.id) + " of '" + printable(session.user.c_str()) + "'" +
         peer;
}

void refuseBeyond(std::size_t limit, std::size_t count, const std::string& whom) {
  if (count >= limit) {
    throw refusal(globaldefs::EXCPT_CAPACITY_EXCEEDED,
                  whom + std::to_string(limit) + " sessions already, the most it may");
  }
}

void close(Session& session, const std::string& why) {
  session.close();
  logCourse(titleOf(session) + " ended: " + why);
}

}  // namespace

Session::Session(long number, Caller caller, nmsSession::NmsSession_I_ptr nms,
                 SessionAdapter& adapter, const ListLimits& limits, const SteadyClock& clock)
    : id(number),
      user(std::move(caller.user)),
      peer(std::move(caller.peer)),
      client(nmsSession::NmsSession_I::_duplicate(nms)),
      servants(std::make_shared<ServantHome>(adapter, peer)),
      paging(pagingOf(servants, limits, clock)) {}

std::shared_ptr<SessionChannel> Session::channel(EventService& events) {
  const MutexLock lock(mutex_);
  if (closed_) {
    throw CORBA::OBJECT_NOT_EXIST();
  }
  if (!channel_) {
    channel_ = events.open(id, servants, std::make_shared<NmsCalls>(client.in(), LOSS_CALL_LIMIT));
  }
  return channel_;
}

void Session::close() {
  std::shared_ptr<SessionChannel> closing;
  {
    const MutexLock lock(mutex_);
    closed_ = true;
    closing.swap(channel_);
  }
  if (closing) {
    closing->close();
  }
  servants->closeAll();
}

Sessions::Sessions(SessionAdapter& adapter, const SessionLimits& limits, SteadyClock clock)
    : adapter_(adapter), limits_(limits), clock_(std::move(clock)) {}

void Sessions::refuseBeyondLimits(const Caller& caller) const {
  if (stopping_) {
    throw refusal(globaldefs::EXCPT_CAPACITY_EXCEEDED, "the agent is stopping");
  }
  refuseBeyond(limits_.sessions, sessions_.size(), "the agent serves ");
  std::size_t ofPeer = 0;
  std::size_t ofUser = 0;
  for (const auto& [id, session] : sessions_) {
    ofPeer += session->peer == caller.peer ? 1 : 0;
    ofUser += session->user == caller.user ? 1 : 0;
  }
  refuseBeyond(limits_.peerSessions, ofPeer, "the agent serves your host ");
  refuseBeyond(limits_.userSessions, ofUser, "the agent serves this user ");
}

std::shared_ptr<Session> Sessions::begin(const Caller& caller,
                                         nmsSession::NmsSession_I_ptr client) {
  const MutexLock lock(mutex_);
  refuseBeyondLimits(caller);
  auto session = std::make_shared<Session>(++lastId_, caller, client, adapter_, limits_, clock_);
  sessions_.emplace(session->id, session);
  logCourse(titleOf(*session) + " began");
  return session;
}

nmsSession::NmsSession_I_var Sessions::end(long id, const std::string& why) {
  std::map<long, std::shared_ptr<Session>>::node_type ending;
  {
    const MutexLock lock(mutex_);
    ending = sessions_.extract(id);
  }
  if (ending.empty()) {
    return nmsSession::NmsSession_I::_nil();
  }
  close(*ending.mapped(), why);
  return ending.mapped()->client;
}

std::vector<nmsSession::NmsSession_I_var> Sessions::endAll(const std::string& why) {
  std::map<long, std::shared_ptr<Session>> ending;
  {
    const MutexLock lock(mutex_);
    stopping_ = true;
    ending.swap(sessions_);
  }
  std::vector<nmsSession::NmsSession_I_var> clients;
  for (const auto& [id, session] : ending) {
    close(*session, why);
    clients.push_back(session->client);
  }
  return clients;
}

std::size_t Sessions::reapIterators() {
  std::size_t reaped = 0;
  for (const auto& session : all()) {
    const std::size_t count = session->paging.iterators->reap();
    if (count != 0) {
      logCourse(titleOf(*session) + ": " + std::to_string(count) + " idle iterators destroyed");
    }
    reaped += count;
  }
  return reaped;
}

std::size_t Sessions::count() const {
  const MutexLock lock(mutex_);
  return sessions_.size();
}

bool Sessions::isAlive(long id) const {
  const MutexLock lock(mutex_);
  return sessions_.count(id) != 0;
}

std::vector<std::shared_ptr<Session>> Sessions::all() const {
  const MutexLock lock(mutex_);
  std::vector<std::shared_ptr<Session>> result;
  for (const auto& [id, session] : sessions_) {
    result.push_back(session);
  }
  return result;
}

}  // namespace zk::agent
