#include "agent/run.h"

#include <csignal>
#include <cstdio>
#include <iostream>
#include <new>
#include <stdexcept>
#include <string>
#include <system_error>

#include "agent/agent.h"
#include "agent/base/log.h"
#include "agent/base/stopdeadline.h"
#include "agent/needs.h"
#include "zk_quornex/platform/default/configuration.h"
#include "zk_quornex/platform/default/logs.h"

namespace zk::agent {

namespace {

constexpr unsigned STOP_SECONDS = 4;

int fail(ExitStatus status, const char* reason) {
  std::fprintf(stderr, "zk-agent: %s\n", reason);
  return status;
}

sigset_t awaitedSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGHUP);
  sigaddset(&signals, SIGTERM);
  sigaddset(&signals, SIGINT);
  return signals;
}

// From here on the signals wait until somebody asks for them, on every thread. A
// connection that is gone and a file that may not grow are failures of one call.
void holdSignals() {
  const sigset_t signals = awaitedSignals();
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
}

// A terminal or a supervisor that goes away is no reason to stop serving.
void awaitStopSignal() {
  const sigset_t signals = awaitedSignals();
  int signal = SIGHUP;
  while (sigwait(&signals, &signal) != 0 || signal == SIGHUP) {
    logCourse("SIGHUP received, which changes nothing");
  }
}

// Without users, strangers are kept out by where the agent listens.
void refuseStrangers(const Options& options) {
  if (options.usersFile.empty() && !options.allowAnyone && !isLoopback(options.listen)) {
    throw CannotStart(EXIT_USAGE,
                      "whoever reaches " + textOf(options.listen) +
                          " could log in: give --users, or --allow-anyone if that is wanted");
  }
}

// A thread that the system does not give, for want of any or of memory for it.
ExitStatus statusOf(const std::system_error& failure) {
  return failure.code() == std::errc::resource_unavailable_try_again ? EXIT_NO_THREADS
                                                                     : EXIT_CANNOT_WRITE;
}

void setUpPlatform(const Options& options) {
  zk::platform::LogSettings logs;
  logs.file = options.logFile;
  zk::platform::openLogs(logs);
  setLogLevel(options.logLevel);
  zk::platform::Configuration configuration;
  configuration.emsName = options.emsName;
  configuration.emsVersion = options.emsVersion;
  zk::platform::configure(configuration);
}

}  // namespace

int runAgent(const Options& options) {
  holdSignals();
  try {
    refuseStrangers(options);
    demandNeeds();
    setUpPlatform(options);
    const Agent agent(options);
    awaitStopSignal();
    beginStopDeadline(STOP_SECONDS);
    return EXIT_STOPPED;
  } catch (const CannotStart& failure) {
    return fail(failure.status, failure.what());
  } catch (const ListenError& failure) {
    return fail(EXIT_CANNOT_LISTEN, failure.what());
  } catch (const InventoryError& failure) {
    return fail(EXIT_NO_INVENTORY, failure.what());
  } catch (const UsersError& failure) {
    return fail(EXIT_USERS_FILE, failure.what());
  } catch (const std::system_error& failure) {
    return fail(statusOf(failure), failure.what());
  } catch (const std::runtime_error& failure) {
    return fail(EXIT_CANNOT_WRITE, failure.what());
  } catch (const std::bad_alloc&) {
    return fail(EXIT_NO_MEMORY, "out of memory");
  } catch (const std::exception& failure) {
    return fail(EXIT_INTERNAL, failure.what());
  } catch (const CORBA::NO_MEMORY&) {
    return fail(EXIT_NO_MEMORY, "out of memory");
  } catch (const CORBA::Exception& failure) {
    return fail(EXIT_INTERNAL, failure._name());
  }
}

int runPasswd(const PasswordChange& change) {
  std::string password;
  std::getline(std::cin, password);
  try {
    setPassword(change.usersFile, change.user, password);
    return EXIT_STOPPED;
  } catch (const UsersError& failure) {
    return fail(EXIT_USERS_FILE, failure.what());
  } catch (const std::bad_alloc&) {
    return fail(EXIT_NO_MEMORY, "out of memory for the hash of a password");
  }
}

}  // namespace zk::agent
