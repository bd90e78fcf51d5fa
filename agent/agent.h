// The agent as a whole: set up in the order of its members, taken down in
// reverse.
#ifndef ZK_AGENT_AGENT_H
#define ZK_AGENT_AGENT_H

#include <memory>
#include <string>

#include "agent/base/files.h"
#include "agent/base/repeating.h"
#include "agent/channel/eventservice.h"
#include "agent/cli/options.h"
#include "agent/ems/inventory.h"
#include "agent/ems/inventorybackend.h"
#include "agent/ems/traffic/traffic.h"
#include "agent/orb/orb.h"
#include "agent/sessions/heartbeat.h"
#include "agent/sessions/logins.h"
#include "agent/sessions/sessions.h"
#include "agent/sessions/users.h"
#include "agent/tmf/changenotifier.h"

namespace zk::agent {

// The embedded EMS, behind the platform's services for as long as it is here.
class EmbeddedEms {
 public:
  explicit EmbeddedEms(const std::string& path);
  ~EmbeddedEms();
  EmbeddedEms(const EmbeddedEms&) = delete;
  EmbeddedEms& operator=(const EmbeddedEms&) = delete;

  Inventory& inventory() { return *inventory_; }

 private:
  const std::unique_ptr<Inventory> inventory_;
  InventoryBackend backend_;
};

// Serving, from the first request to the last: what was begun in the constructor
// is over when the destructor returns.
class Serving {
 public:
  // All must outlive this object.
  Serving(const Options& options, Logins& logins, Inventory& inventory, Traffic& traffic,
          EventService& events, Sessions& sessions, Orb& orb);
  // Tells the NMSs that their sessions are over, and waits for requests in
  // progress.
  ~Serving();
  Serving(const Serving&) = delete;
  Serving& operator=(const Serving&) = delete;

  // The factory's stringified reference.
  const std::string& reference() const { return reference_; }
  // The administration's; empty when it is not served.
  const std::string& adminReference() const { return adminReference_; }

 private:
  EventService& events_;
  Sessions& sessions_;
  Orb& orb_;
  std::string reference_;
  std::string adminReference_;
};

class Agent {
 public:
  // Serves requests when this returns, and the IOR file is there. Throws
  // ListenError, InventoryError, UsersError, or std::runtime_error for a file
  // that cannot be written; nothing of the agent is left then.
  explicit Agent(const Options& options);
  Agent(const Agent&) = delete;
  Agent& operator=(const Agent&) = delete;

 private:
  // First the address: an agent that cannot have it makes no inventory.
  Orb orb_;
  EmbeddedEms ems_;
  const std::unique_ptr<Users> users_;
  Logins logins_;
  Sessions sessions_;
  EventService events_;
  const ChangeReporting reporting_;
  Traffic traffic_;
  const Serving serving_;
  Heartbeat heartbeat_;
  const Repeating housekeeping_;
  const std::unique_ptr<PublishedFile> adminIorFile_;
  const std::unique_ptr<PublishedFile> iorFile_;
};

}  // namespace zk::agent

#endif
