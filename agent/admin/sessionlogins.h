// The sessions as the administration sees them. Safe on any thread.
#ifndef ZK_AGENT_ADMIN_SESSIONLOGINS_H
#define ZK_AGENT_ADMIN_SESSIONLOGINS_H

#include "agent/admin/logins.h"
#include "agent/sessions/sessions.h"

namespace zk::agent {

class SessionLogins : public Logins {
 public:
  // sessions must outlive this object.
  explicit SessionLogins(Sessions& sessions) : sessions_(sessions) {}

  std::vector<Login> all() override;
  bool end(long session) override;

 private:
  Sessions& sessions_;
};

}  // namespace zk::agent

#endif
