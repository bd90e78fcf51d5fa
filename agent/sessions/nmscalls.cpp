#include "agent/sessions/nmscalls.h"

#include <system_error>
#include <thread>

#include "agent/base/log.h"
#include "agent/orb/orb.h"

namespace zk::agent {

namespace {

// Narrowing without asking: the client's type was checked when it logged in, and
// asking again would be a call of its own.
nmsSession::NmsSession_I_ptr limited(nmsSession::NmsSession_I_ptr client,
                                     std::chrono::milliseconds limit) {
  const CORBA::Object_var object = withCallLimit(client, limit);
  return nmsSession::NmsSession_I::_unchecked_narrow(object.in());
}

template <class Call>
bool reaches(const char* what, Call call) {
  try {
    call();
    return true;
  } catch (const CORBA::Exception& failure) {
    logFailure(std::string("an NMS was not told ") + what + ": " + failure._name());
    return false;
  }
}

}  // namespace

NmsCalls::NmsCalls(nmsSession::NmsSession_I_ptr client, std::chrono::milliseconds limit)
    : client_(limited(client, limit)) {}

bool NmsCalls::ping() const {
  try {
    client_->ping();
    return true;
  } catch (const CORBA::Exception&) {
    return false;
  }
}

void NmsCalls::endSession() const {
  reaches("that its session ended", [this] { client_->endSession(); });
}

void NmsCalls::lossOccurred(const std::string& startTime, const std::string& notificationId) {
  reaches("that events were lost",
          [&] { client_->eventLossOccurred(startTime.c_str(), notificationId.c_str()); });
}

void NmsCalls::lossCleared(const std::string& endTime) {
  reaches("that the loss of events is over", [&] { client_->eventLossCleared(endTime.c_str()); });
}

void endSessionsOf(const std::vector<nmsSession::NmsSession_I_var>& clients) {
  std::vector<std::thread> calls;
  calls.reserve(clients.size());
  for (const nmsSession::NmsSession_I_var& client : clients) {
    try {
      calls.emplace_back([&client] { NmsCalls(client.in(), FAREWELL_LIMIT).endSession(); });
    } catch (const std::system_error& failure) {
      logFailure(std::string("an NMS was not told that its session ended: ") + failure.what());
    }
  }
  for (std::thread& call : calls) {
    call.join();
  }
}

}  // namespace zk::agent
