#include "agent/base/stopdeadline.h"

#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdlib>
#include <cstring>

namespace zk::agent {

namespace {

std::atomic<const char*> doing{"stopping"};

void say(const char* text) {
  // Nobody is left to hear of a failure.
  [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, text, std::strlen(text));
}

void giveUp(int) {
  say("zk-agent: gave up ");
  say(doing.load(std::memory_order_relaxed));
  say("\n");
  _exit(EXIT_SUCCESS);
}

}  // namespace

void beginStopDeadline(unsigned seconds) {
  std::signal(SIGALRM, giveUp);
  alarm(seconds);
}

void enterStop(const char* what) { doing.store(what, std::memory_order_relaxed); }

}  // namespace zk::agent
