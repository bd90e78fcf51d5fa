#include "agent/sessions/farewell.h"

#include <thread>

#include "agent/sessions/nmscalls.h"

namespace zk::agent {

void endSessionsOf(const std::vector<nmsSession::NmsSession_I_var>& clients,
                   std::chrono::milliseconds limit) {
  std::vector<std::thread> calls;
  calls.reserve(clients.size());
  for (const nmsSession::NmsSession_I_var& client : clients) {
    calls.emplace_back([&client, limit] { NmsCalls(client.in(), limit).endSession(); });
  }
  for (std::thread& call : calls) {
    call.join();
  }
}

}  // namespace zk::agent
