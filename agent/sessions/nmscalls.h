// What the agent tells an NMS through its half of the session. Each call takes
// no longer than the given limit. Safe on any thread.
#ifndef ZK_AGENT_SESSIONS_NMSCALLS_H
#define ZK_AGENT_SESSIONS_NMSCALLS_H

#include <chrono>
#include <string>
#include <vector>

#include "agent/channel/losses.h"
#include "zk_quornex/idl/sessions.h"

namespace zk::agent {

class NmsCalls : public LossListener {
 public:
  NmsCalls(nmsSession::NmsSession_I_ptr client, std::chrono::milliseconds limit);

  // Whether the NMS answered.
  bool ping() const;

  // An NMS that cannot be reached is passed over: its session ends by itself.
  void endSession() const;
  void lossOccurred(const std::string& startTime, const std::string& notificationId) override;
  void lossCleared(const std::string& endTime) override;

 private:
  const nmsSession::NmsSession_I_var client_;
};

// How long an NMS may take to hear that its session is over.
inline constexpr std::chrono::milliseconds FAREWELL_LIMIT{2000};

// Tells every client that its session is over, all at once, each for no longer
// than FAREWELL_LIMIT. Whoever cannot be reached is passed over.
void endSessionsOf(const std::vector<nmsSession::NmsSession_I_var>& clients);

}  // namespace zk::agent

#endif
