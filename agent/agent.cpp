#include "agent/agent.h"

#include "agent/admin/emsadminservant.h"
#include "agent/base/log.h"
#include "agent/base/stopdeadline.h"
#include "agent/sessions/nmscalls.h"
#include "agent/sessions/sessionservants.h"

namespace zk::agent {

namespace {

constexpr const char* FACTORY_KEY = "EmsSessionFactory";
constexpr std::chrono::milliseconds HOUSEKEEPING_PERIOD{1000};

std::unique_ptr<Users> usersFor(const Options& options) {
  if (options.usersFile.empty()) {
    logFailure("there are no --users: whoever reaches " + textOf(options.listen) + " may log in");
    return std::make_unique<Anyone>();
  }
  return std::make_unique<UsersOfFile>(options.usersFile);
}

// Of names that nobody checked, a client can have as many as it likes.
SessionLimits limitsFor(const Options& options) {
  SessionLimits limits = options.limits;
  if (options.usersFile.empty()) {
    limits.userSessions = limits.sessions;
  }
  return limits;
}

// Null without a file or a reference.
std::unique_ptr<PublishedFile> iorFileFor(const std::string& file, const std::string& reference) {
  if (file.empty() || reference.empty()) {
    return nullptr;
  }
  return std::make_unique<PublishedFile>(file, reference + "\n");
}

// Empty when the administration is not served.
std::string publishAdmin(const Options& options, Inventory& inventory, Traffic& traffic,
                         Sessions& sessions, Orb& orb) {
  if (!options.admin) {
    return {};
  }
  if (!isLoopback(options.listen)) {
    logFailure("administration of the EMS is not served: " + textOf(options.listen) +
               " is not a loopback address, and whoever reached it could use it");
    return {};
  }
  const PortableServer::ServantBase_var admin = new EmsAdminServant(inventory, traffic, sessions);
  logCourse("administration of the EMS is open to whoever reaches the agent");
  return orb.publish(ADMIN_KEY, admin.in());
}

std::chrono::steady_clock::time_point now() { return std::chrono::steady_clock::now(); }

}  // namespace

EmbeddedEms::EmbeddedEms(const std::string& path)
    : inventory_(Inventory::open(path)), backend_(*inventory_) {
  zk::platform::install(&backend_);
}

EmbeddedEms::~EmbeddedEms() {
  zk::platform::install(static_cast<zk::platform::EmsBackend*>(nullptr));
}

Serving::Serving(const Options& options, Logins& logins, Inventory& inventory, Traffic& traffic,
                 EventService& events, Sessions& sessions, Orb& orb)
    : events_(events), sessions_(sessions), orb_(orb) {
  const PortableServer::ServantBase_var factory =
      new FactoryServant(logins, sessions, inventory, events, options.interfaceVersion);
  reference_ = orb_.publish(FACTORY_KEY, factory.in());
  adminReference_ = publishAdmin(options, inventory, traffic, sessions, orb_);
  orb_.serve();
  logCourse("serving on " + textOf(options.listen) + ", EMS " + options.emsName + ", inventory " +
            options.inventory);
}

Serving::~Serving() {
  enterStop("telling NMSs that their sessions end");
  endSessionsOf(sessions_.endAll("the agent stops"));
  enterStop("waiting for events that are being pushed");
  events_.stop();
  enterStop("waiting for requests in progress");
  orb_.stop();
  enterStop("closing the inventory");
  logCourse("stopped serving");
}

Agent::Agent(const Options& options)
    : orb_(options.listen),
      ems_(options.inventory),
      users_(usersFor(options)),
      logins_(*users_, now),
      sessions_(orb_.sessionAdapter(), limitsFor(options), now),
      events_(options.channel, [this](long session) { return sessions_.isAlive(session); }),
      reporting_(ems_.inventory()),
      traffic_(ems_.inventory(), options.traffic),
      serving_(options, logins_, ems_.inventory(), traffic_, events_, sessions_, orb_),
      heartbeat_(options.pings, sessions_, now),
      housekeeping_(HOUSEKEEPING_PERIOD,
                    [this] {
                      sessions_.reapIterators();
                      heartbeat_.step();
                    }),
      adminIorFile_(iorFileFor(options.adminIorFile, serving_.adminReference())),
      iorFile_(iorFileFor(options.iorFile, serving_.reference())) {}

}  // namespace zk::agent
