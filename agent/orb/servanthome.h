// The servants of one session: made reachable here, and taken away again one by
// one or all at once. Safe on any thread.
#ifndef ZK_AGENT_ORB_SERVANTHOME_H
#define ZK_AGENT_ORB_SERVANTHOME_H

#include <map>

#include "zk_quornex/idl/corba.h"
#include "zk_quornex/platform/threadsafety.h"

namespace zk::agent {

class ServantHome {
 public:
  using Ticket = unsigned long;

  // The adapter gives out system ids and retains servants; it keeps one
  // reference to each until the servant's last request is done.
  explicit ServantHome(PortableServer::POA_ptr poa);

  // Makes the servant reachable and stores its ticket, which is never 0. The
  // caller keeps its own reference to the servant and owns the result. Throws
  // CORBA::OBJECT_NOT_EXIST once the home is closed.
  CORBA::Object_ptr open(PortableServer::Servant servant, Ticket& ticket);

  // Further requests get OBJECT_NOT_EXIST; those in progress finish. An unknown
  // ticket is fine.
  void close(Ticket ticket);
  void closeAll();

 private:
  void deactivate(const PortableServer::ObjectId& id);

  const PortableServer::POA_var poa_;
  Mutex mutex_;  // never held during a call into the adapter that may end a servant
  std::map<Ticket, PortableServer::ObjectId> open_ ZK_GUARDED_BY(mutex_);
  Ticket last_ ZK_GUARDED_BY(mutex_) = 0;
  bool closed_ ZK_GUARDED_BY(mutex_) = false;
};

}  // namespace zk::agent

#endif
