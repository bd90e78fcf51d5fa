// Who is logged in, as the administration sees it.
#ifndef ZK_AGENT_ADMIN_LOGINS_H
#define ZK_AGENT_ADMIN_LOGINS_H

#include <string>
#include <vector>

namespace zk::agent {

struct Login {
  long session = 0;
  std::string user;
};

// Safe on any thread.
class Logins {
 public:
  virtual ~Logins() = default;
  // Oldest first.
  virtual std::vector<Login> all() = 0;
  // Ends the session and tells its NMS, for a bounded time. Returns false when
  // there is none of this id.
  virtual bool end(long session) = 0;
};

}  // namespace zk::agent

#endif
