#include "agent/admin/sessionlogins.h"

#include "agent/sessions/farewell.h"

namespace zk::agent {

namespace {

constexpr std::chrono::milliseconds farewellLimit{2000};

}  // namespace

std::vector<Login> SessionLogins::all() {
  std::vector<Login> logins;
  for (const auto& session : sessions_.all()) {
    logins.push_back({session->id, session->user});
  }
  return logins;
}

bool SessionLogins::end(long session) {
  const nmsSession::NmsSession_I_var client = sessions_.end(session, "the administration ended it");
  if (CORBA::is_nil(client.in())) {
    return false;
  }
  endSessionsOf({client}, farewellLimit);
  return true;
}

}  // namespace zk::agent
