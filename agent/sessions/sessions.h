// The NMS sessions: who is logged in, and what ends with each of them. Safe on
// any thread.
#ifndef ZK_AGENT_SESSIONS_SESSIONS_H
#define ZK_AGENT_SESSIONS_SESSIONS_H

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "agent/managers/iterators.h"
#include "agent/orb/servanthome.h"
#include "zk_quornex/idl/sessions.h"
#include "zk_quornex/platform/threadsafety.h"

namespace zk::agent {

class EventService;
class SessionChannel;

// What bounds the clients' use of the agent.
struct SessionLimits : ListLimits {
  // Sessions at a time; a further login is refused. No user and no peer can take
  // them all: a host may run the 64 clients of an operations centre and more, and
  // leaves a quarter to others.
  std::size_t sessions = 128;
  std::size_t peerSessions = 96;
  std::size_t userSessions = 16;
};

// Who logs in, and from where.
struct Caller {
  std::string user;
  std::string peer;
};

// One session's part of the agent. Its servants share it; it is closed once and
// for all when the session ends.
class Session {
 public:
  Session(long number, Caller caller, nmsSession::NmsSession_I_ptr nms, SessionAdapter& adapter,
          const ListLimits& limits, const SteadyClock& clock);

  const long id;  // never used twice
  const std::string user;
  const std::string peer;  // as callingPeer() tells it; the session's objects answer it alone
  const nmsSession::NmsSession_I_var client;
  const std::shared_ptr<ServantHome> servants;
  const Paging paging;

  // The session's event channel, opened on first use. Throws OBJECT_NOT_EXIST
  // once the session is closed.
  std::shared_ptr<SessionChannel> channel(EventService& events);

  // Takes the channel and the servants away; requests in progress finish.
  void close();

 private:
  Mutex mutex_;
  std::shared_ptr<SessionChannel> channel_ ZK_GUARDED_BY(mutex_);
  bool closed_ ZK_GUARDED_BY(mutex_) = false;
};

class Sessions {
 public:
  // adapter must outlive this object.
  Sessions(SessionAdapter& adapter, const SessionLimits& limits, SteadyClock clock);

  // Begins a session. Throws Refusal, capacity exceeded, when there are as many
  // as there may be, at all or of this user or peer, or the agent is stopping.
  std::shared_ptr<Session> begin(const Caller& caller, nmsSession::NmsSession_I_ptr client);

  // Ends a session: its servants are gone when this returns, and requests in
  // progress finish. why is for the log. Returns its client, nil for an unknown
  // id.
  nmsSession::NmsSession_I_var end(long id, const std::string& why);

  // Ends all sessions, refuses further ones, and returns the clients to tell.
  std::vector<nmsSession::NmsSession_I_var> endAll(const std::string& why);

  // Destroys the iterators that nobody used for too long; returns how many.
  std::size_t reapIterators();

  std::size_t count() const;
  std::vector<std::shared_ptr<Session>> all() const;

  // Whether there is a session of this id. Quick: called for every client on
  // every event.
  bool isAlive(long id) const;

 private:
  void refuseBeyondLimits(const Caller& caller) const ZK_REQUIRES(mutex_);

  SessionAdapter& adapter_;
  const SessionLimits limits_;
  const SteadyClock clock_;
  mutable Mutex mutex_;  // never held while a session is closed
  std::map<long, std::shared_ptr<Session>> sessions_ ZK_GUARDED_BY(mutex_);
  long lastId_ ZK_GUARDED_BY(mutex_) = 0;
  bool stopping_ ZK_GUARDED_BY(mutex_) = false;
};

}  // namespace zk::agent

#endif
