// Being told to stop from outside.
#ifndef ZK_NMS_WIRE_INTERRUPTS_H
#define ZK_NMS_WIRE_INTERRUPTS_H

#include <signal.h>

#include <atomic>
#include <functional>
#include <thread>

#include "zk_quornex/platform/threadsafety.h"

namespace zk::nms {

// Holds what has to be done before the process may end early. Any thread may
// call.
class Interrupts {
 public:
  virtual ~Interrupts() = default;

  // Replaces what was to be done; null for nothing. Does not return while the
  // former is being done.
  void beforeExit(std::function<void()> cleanUp);

 protected:
  // Does it, and passes on what it throws.
  void cleanUp();

 private:
  Mutex mutex_;
  std::function<void()> cleanUp_ ZK_GUARDED_BY(mutex_);
};

// On SIGINT, SIGTERM or SIGHUP, unless the process was started with it
// ignored, cleans up and ends the process with 128 + the signal's number. A
// second one ends it at once. Make it before any other thread: threads must
// inherit that the signals are blocked.
class SignalInterrupts : public Interrupts {
 public:
  SignalInterrupts();
  ~SignalInterrupts() override;
  SignalInterrupts(const SignalInterrupts&) = delete;
  SignalInterrupts& operator=(const SignalInterrupts&) = delete;

 private:
  void watch();
  [[noreturn]] void end(int signal);

  sigset_t signals_;
  std::atomic<bool> stopping_{false};
  std::thread watcher_;
};

}  // namespace zk::nms

#endif
