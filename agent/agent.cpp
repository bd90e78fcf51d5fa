#include "agent/agent.h"

#include <sys/stat.h>

#include <cstdio>

#include "agent/atomicfile.h"
#include "agent/factoryservant.h"
#include "agent/farewell.h"
#include "agent/log.h"

namespace zk::agent {

namespace {

constexpr const char* factoryKey = "EmsSessionFactory";
constexpr std::chrono::milliseconds farewellLimit{2000};
constexpr std::chrono::milliseconds housekeepingPeriod{1000};

std::unique_ptr<Users> usersFor(const Options& options) {
  if (options.usersFile.empty()) {
    return std::make_unique<Anyone>();
  }
  return std::make_unique<UsersOfFile>(options.usersFile);
}

std::unique_ptr<PublishedFile> iorFileFor(const Options& options, const std::string& reference) {
  if (options.iorFile.empty()) {
    return nullptr;
  }
  return std::make_unique<PublishedFile>(options.iorFile, reference + "\n");
}

std::chrono::steady_clock::time_point now() { return std::chrono::steady_clock::now(); }

}  // namespace

PublishedFile::PublishedFile(std::string path, const std::string& text) : path_(std::move(path)) {
  replaceFile(path_, text, S_IRUSR | S_IWUSR | S_IRGRP | S_IROTH);
}

PublishedFile::~PublishedFile() { std::remove(path_.c_str()); }

EmbeddedEms::EmbeddedEms(const std::string& path)
    : inventory_(Inventory::open(path)), backend_(*inventory_) {
  zk::platform::install(&backend_);
}

EmbeddedEms::~EmbeddedEms() {
  zk::platform::install(static_cast<zk::platform::EmsBackend*>(nullptr));
}

Serving::Serving(const Options& options, Users& users, Inventory& inventory, Sessions& sessions,
                 Orb& orb)
    : sessions_(sessions), orb_(orb) {
  const PortableServer::ServantBase_var factory =
      new FactoryServant(users, sessions, inventory, options.interfaceVersion);
  reference_ = orb_.publish(factoryKey, factory.in());
  orb_.serve();
  logCourse("serving on " + textOf(options.listen) + ", EMS " + options.emsName + ", inventory " +
            options.inventory);
}

Serving::~Serving() {
  endSessionsOf(sessions_.endAll("the agent stops"), farewellLimit);
  orb_.stop();
  logCourse("stopped serving");
}

Agent::Agent(const Options& options)
    : orb_(options.listen),
      ems_(options.inventory),
      users_(usersFor(options)),
      sessions_(orb_.sessionAdapter(), options.limits, now),
      serving_(options, *users_, ems_.inventory(), sessions_, orb_),
      housekeeping_(housekeepingPeriod, [this] { sessions_.reapIterators(); }),
      iorFile_(iorFileFor(options, serving_.reference())) {}

}  // namespace zk::agent
