#include "agent/run.h"

#include <csignal>
#include <cstdio>
#include <iostream>
#include <stdexcept>
#include <string>

#include "agent/agent.h"
#include "agent/base/log.h"
#include "zk_quornex/platform/default/configuration.h"
#include "zk_quornex/platform/default/logs.h"

namespace zk::agent {

namespace {

int fail(ExitStatus status, const char* reason) {
  std::fprintf(stderr, "zk-agent: %s\n", reason);
  return status;
}

sigset_t stopSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGTERM);
  sigaddset(&signals, SIGINT);
  return signals;
}

// From here on the signals wait until somebody asks for them, on every thread.
void holdStopSignals() {
  const sigset_t signals = stopSignals();
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);
  std::signal(SIGPIPE, SIG_IGN);
}

void awaitStopSignal() {
  const sigset_t signals = stopSignals();
  int signal = 0;
  while (sigwait(&signals, &signal) != 0) {
  }
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
  holdStopSignals();
  try {
    setUpPlatform(options);
    const Agent agent(options);
    awaitStopSignal();
    return EXIT_STOPPED;
  } catch (const ListenError& failure) {
    return fail(EXIT_CANNOT_LISTEN, failure.what());
  } catch (const InventoryError& failure) {
    return fail(EXIT_NO_INVENTORY, failure.what());
  } catch (const UsersError& failure) {
    return fail(EXIT_USERS_FILE, failure.what());
  } catch (const std::runtime_error& failure) {
    return fail(EXIT_CANNOT_WRITE, failure.what());
  } catch (const std::exception& failure) {
    return fail(EXIT_INTERNAL, failure.what());
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
  }
}

}  // namespace zk::agent
