// The servants of sessions: made reachable by their session's peer alone, and
// taken away again one by one or all at once. Safe on any thread.
#ifndef ZK_AGENT_ORB_SERVANTHOME_H
#define ZK_AGENT_ORB_SERVANTHOME_H

#include <map>
#include <string>

#include "agent/orb/objectkeys.h"
#include "zk_quornex/idl/corba.h"
#include "zk_quornex/platform/threadsafety.h"

namespace zk::agent {

// Where the servants of all sessions are, and the ids of their objects. One at a
// time in a process.
class SessionAdapter {
 public:
  static constexpr char NAME[] = "sessions";

  // Makes an adapter that is active when root is.
  explicit SessionAdapter(PortableServer::POA_ptr root);
  // Waits for requests in progress, unless the ORB has been shut down.
  ~SessionAdapter();
  SessionAdapter(const SessionAdapter&) = delete;
  SessionAdapter& operator=(const SessionAdapter&) = delete;

  const ObjectKeys& keys() const { return keys_; }

  // The reference to the servant under a new id, which belongs to owner. The
  // adapter keeps a reference to the servant until its last request is done.
  CORBA::Object_ptr activate(PortableServer::Servant servant, const std::string& owner,
                             std::string& id);
  // Further requests get OBJECT_NOT_EXIST.
  void deactivate(const std::string& id);

 private:
  ObjectKeys keys_;
  PortableServer::POA_var poa_;
};

class ServantHome {
 public:
  using Ticket = unsigned long;

  // adapter must outlive this object, and the owner's requests alone be admitted.
  ServantHome(SessionAdapter& adapter, std::string owner);

  // Makes the servant reachable and stores its ticket, which is never 0. The
  // caller keeps its own reference to the servant and owns the result. Throws
  // CORBA::OBJECT_NOT_EXIST once the home is closed.
  CORBA::Object_ptr open(PortableServer::Servant servant, Ticket& ticket);

  // Further requests get OBJECT_NOT_EXIST; those in progress finish. An unknown
  // ticket is fine.
  void close(Ticket ticket);
  void closeAll();

 private:
  SessionAdapter& adapter_;
  const std::string owner_;
  Mutex mutex_;  // never held during a call into the adapter that may end a servant
  std::map<Ticket, std::string> open_ ZK_GUARDED_BY(mutex_);
  Ticket last_ ZK_GUARDED_BY(mutex_) = 0;
  bool closed_ ZK_GUARDED_BY(mutex_) = false;
};

}  // namespace zk::agent

#endif
