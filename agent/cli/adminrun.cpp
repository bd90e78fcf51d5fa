#include "agent/cli/adminrun.h"

#include <cstdio>
#include <fstream>

namespace zk::agent {

namespace {

int fail(AdminStatus status, const std::string& reason) {
  std::fprintf(stderr, "zk-agent: %s\n", reason.c_str());
  return status;
}

std::string referenceFor(const std::string& agent) {
  if (agent.rfind("IOR:", 0) == 0 || agent.rfind("corbaloc:", 0) == 0) {
    return agent;
  }
  std::string line;
  if (std::getline(std::ifstream(agent), line)) {
    return line;
  }
  return "corbaloc:iiop:" + agent + "/" + ADMIN_KEY;
}

// Ends the ORB however the request went.
class ClientOrb {
 public:
  ClientOrb() {
    int count = 0;
    orb_ = CORBA::ORB_init(count, nullptr);
  }
  ~ClientOrb() { orb_->destroy(); }
  ClientOrb(const ClientOrb&) = delete;
  ClientOrb& operator=(const ClientOrb&) = delete;

  emsAdmin::EmsAdmin_I_ptr adminOf(const std::string& agent) const {
    const CORBA::Object_var object = orb_->string_to_object(referenceFor(agent).c_str());
    return emsAdmin::EmsAdmin_I::_unchecked_narrow(object.in());
  }

 private:
  CORBA::ORB_var orb_;
};

void ask(const AdminCommand& command) {
  const ClientOrb orb;
  const emsAdmin::EmsAdmin_I_var admin = orb.adminOf(command.agent);
  const std::string answer = command.request(admin.in());
  if (!answer.empty()) {
    std::printf("%s\n", answer.c_str());
  }
}

}  // namespace

int runAdmin(const AdminCommand& command) {
  try {
    ask(command);
    return ADMIN_DONE;
  } catch (const globaldefs::ProcessingFailureException& refused) {
    return fail(ADMIN_REFUSED, std::string("refused: ") + refused.errorReason.in());
  } catch (const CORBA::BAD_PARAM&) {
    return fail(ADMIN_NOT_REACHED,
                "not HOST:PORT, a reference, or a file with one: '" + command.agent + "'");
  } catch (const CORBA::OBJECT_NOT_EXIST&) {
    return fail(ADMIN_NOT_REACHED, "the agent at " + command.agent +
                                       " offers no administration; start it with --admin");
  } catch (const CORBA::SystemException& failure) {
    return fail(ADMIN_NOT_REACHED,
                "no agent answers at " + command.agent + " (" + failure._name() + ")");
  }
}

}  // namespace zk::agent
