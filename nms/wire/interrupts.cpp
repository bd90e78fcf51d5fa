#include "nms/wire/interrupts.h"

#include <unistd.h>

#include "zk_quornex/idl/corba.h"

namespace zk::nms {
namespace {

// Wakes the watcher when the program ends by itself; nobody else sends it.
constexpr int WAKE_UP = SIGUSR2;

bool isIgnored(int signal) {
  struct sigaction action {};
  return sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

}  // namespace

void Interrupts::beforeExit(std::function<void()> cleanUp) {
  const MutexLock guard(mutex_);
  cleanUp_ = std::move(cleanUp);
}

void Interrupts::cleanUp() {
  const MutexLock guard(mutex_);
  if (cleanUp_) {
    cleanUp_();
  }
}

SignalInterrupts::SignalInterrupts() {
  sigemptyset(&signals_);
  sigaddset(&signals_, WAKE_UP);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    if (!isIgnored(signal)) {
      sigaddset(&signals_, signal);
    }
  }
  pthread_sigmask(SIG_BLOCK, &signals_, nullptr);
  watcher_ = std::thread([this] { watch(); });
}

SignalInterrupts::~SignalInterrupts() {
  stopping_ = true;
  pthread_kill(watcher_.native_handle(), WAKE_UP);
  watcher_.join();
}

void SignalInterrupts::watch() {
  while (!stopping_) {
    int signal = 0;
    if (sigwait(&signals_, &signal) == 0 && signal != WAKE_UP) {
      end(signal);
    }
  }
}

void SignalInterrupts::end(int signal) {
  pthread_sigmask(SIG_UNBLOCK, &signals_, nullptr);  // a second one does not wait for us
  try {
    cleanUp();
  } catch (const CORBA::Exception&) {
    // The agent cannot be told; it finds out when it pings.
  } catch (const std::exception&) {
  }
  _exit(128 + signal);
}

}  // namespace zk::nms
