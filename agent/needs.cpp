#include "agent/needs.h"

#include <sys/eventfd.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <future>
#include <system_error>
#include <thread>
#include <vector>

namespace zk::agent {

namespace {

void throwShortage(ExitStatus what, const char* of, const std::string& amount, int reason) {
  throw CannotStart(what, std::string("out of ") + of + ": a start takes " + amount + " (" +
                              std::strerror(reason) + ")");
}

void demandDescriptors() {
  std::vector<int> taken;
  int reason = 0;
  while (taken.size() < Needs::DESCRIPTORS && reason == 0) {
    const int descriptor = eventfd(0, EFD_CLOEXEC);
    if (descriptor < 0) {
      reason = errno;
    } else {
      taken.push_back(descriptor);
    }
  }
  for (const int descriptor : taken) {
    close(descriptor);
  }
  if (reason != 0) {
    throwShortage(EXIT_NO_DESCRIPTORS, "file descriptors", std::to_string(Needs::DESCRIPTORS),
                  reason);
  }
}

void demandMemory() {
  constexpr std::size_t SIZE = std::size_t{Needs::MEBIBYTES} << 20U;
  void* const taken =
      mmap(nullptr, SIZE, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (taken == MAP_FAILED) {
    throwShortage(EXIT_NO_MEMORY, "memory", std::to_string(Needs::MEBIBYTES) + " MiB", errno);
  }
  munmap(taken, SIZE);
}

void demandThreads() {
  std::promise<void> over;
  const std::shared_future<void> end = over.get_future().share();
  std::vector<std::thread> taken;
  taken.reserve(Needs::THREADS);
  int reason = 0;
  while (taken.size() < Needs::THREADS && reason == 0) {
    try {
      taken.emplace_back([end] { end.wait(); });
    } catch (const std::system_error& failure) {
      reason = failure.code().value();
    }
  }
  over.set_value();
  for (std::thread& thread : taken) {
    thread.join();
  }
  if (reason != 0) {
    throwShortage(EXIT_NO_THREADS, "threads", std::to_string(Needs::THREADS), reason);
  }
}

}  // namespace

void demandNeeds() {
  demandDescriptors();
  demandMemory();
  demandThreads();
}

}  // namespace zk::agent
