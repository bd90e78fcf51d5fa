#include "agent/farewell.h"

#include <string>
#include <thread>

#include "agent/log.h"
#include "agent/orb.h"

namespace zk::agent {

namespace {

// Narrowing without asking: the client's type was checked when it logged in, and
// asking again would be a call of its own.
void endSessionOf(nmsSession::NmsSession_I_ptr client, std::chrono::milliseconds limit) {
  try {
    const CORBA::Object_var limited = withCallLimit(client, limit);
    const nmsSession::NmsSession_I_var session =
        nmsSession::NmsSession_I::_unchecked_narrow(limited.in());
    session->endSession();
  } catch (const CORBA::Exception& failure) {
    logFailure(std::string("an NMS was not told that its session ended: ") + failure._name());
  }
}

}  // namespace

void endSessionsOf(const std::vector<nmsSession::NmsSession_I_var>& clients,
                   std::chrono::milliseconds limit) {
  std::vector<std::thread> calls;
  for (const nmsSession::NmsSession_I_var& client : clients) {
    calls.emplace_back([&client, limit] { endSessionOf(client.in(), limit); });
  }
  for (std::thread& call : calls) {
    call.join();
  }
}

}  // namespace zk::agent
