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
  // Sessions at a time; a further login is refused.
  std::size_t sessions = 64;
};

// One session's part of the agent. Its servants share it; it is closed once and
// for all when the session ends.
class Session {
 public:
  Session(long number, std::string userName, nmsSession::NmsSession_I_ptr nms,
          PortableServer::POA_ptr poa, const ListLimits& limits, const SteadyClock& clock);

  const long id;  // never used twice
  const std::string user;
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
  Sessions(PortableServer::POA_ptr poa, const SessionLimits& limits, SteadyClock clock);

  // Begins a session. Throws Refusal, capacity exceeded, when there are as many
  // as there may be or the agent is stopping.
  std::shared_ptr<Session> begin(const std::string& user, nmsSession::NmsSession_I_ptr client);

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
  const PortableServer::POA_var poa_;
  const SessionLimits limits_;
  const SteadyClock clock_;
  mutable Mutex mutex_;  // never held while a session is closed
  std::map<long, std::shared_ptr<Session>> sessions_ ZK_GUARDED_BY(mutex_);
  long lastId_ ZK_GUARDED_BY(mutex_) = 0;
  bool stopping_ ZK_GUARDED_BY(mutex_) = false;
};

}  // namespace zk::agent

#endif
