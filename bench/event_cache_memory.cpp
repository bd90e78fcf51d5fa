// How much memory a client of the cache takes: idle, or with events queued.
// Measured as growth of the process's resident memory, so that stacks and the
// allocator's overhead count; one measurement a process.
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <thread>

#include "bench/eventshape.h"
#include "zk_quornex/messages/messagemgr.h"
#include "zk_quornex/platform/default/logs.h"

namespace zk::bench {
namespace {

using NS_QUORCORBA::NXMessageMgr;

constexpr long CLASS = 10;

long residentBytes() {
  std::ifstream file("/proc/self/statm");
  long total = 0;
  long resident = 0;
  file >> total >> resident;
  return resident * sysconf(_SC_PAGESIZE);
}

// Resident memory once it has stopped growing: threads that start touch their
// stacks at a time of their own.
long settledBytes() {
  long before = 0;
  long now = residentBytes();
  do {
    before = now;
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    now = residentBytes();
  } while (now != before);
  return now;
}

void subscribe(long clients) {
  for (long client = 0; client < clients; ++client) {
    NXMessageMgr::Instance()->subscribeMsg(CLASS, client, nullptr, nullptr);
    NXMessageMgr::Instance()->setReportStatus(CLASS, client, true);
  }
}

void push(const HeldEvent& event, long times) {
  for (long time = 0; time < times; ++time) {
    NXMessageMgr::Instance()->pushMessage(CLASS, event.get(), nullptr);
  }
}

void printIdle() {
  constexpr long CLIENTS = 200;
  constexpr long LISTSIZE = 500;
  configureCache(10000, LISTSIZE);
  NXMessageMgr::Instance();
  const long before = settledBytes();
  subscribe(CLIENTS);
  const long grown = settledBytes() - before;
  std::printf("idle client: %.1f KiB (%ld clients, list size %ld; target 120)\n",
              static_cast<double>(grown) / CLIENTS / 1024, CLIENTS, LISTSIZE);
}

// With a list of one, a client's thread stops after two events; what follows
// stays queued. One event stands in all queues: its own memory does not count.
void printQueued() {
  constexpr long CLIENTS = 20;
  constexpr long QUEUED = 10000;
  constexpr long TAKEN = 2;
  configureCache(10000, 1);
  subscribe(CLIENTS);
  const HeldEvent event = makeHeldEvent(1);
  push(event, TAKEN);
  const long before = settledBytes();
  push(event, QUEUED);
  const long grown = settledBytes() - before;
  std::printf(
      "queued event: %.1f bytes per client (%ld clients with %ld queued each; target 200)\n",
      static_cast<double>(grown) / CLIENTS / QUEUED, CLIENTS, QUEUED);
}

}  // namespace
}  // namespace zk::bench

int main(int argc, char** argv) {
  CORBA::ORB_var orb = CORBA::ORB_init(argc, argv);
  zk::platform::setTraceLevel(0);
  if (argc == 2 && std::strcmp(argv[1], "idle") == 0) {
    zk::bench::printIdle();
  } else if (argc == 2 && std::strcmp(argv[1], "queued") == 0) {
    zk::bench::printQueued();
  } else {
    std::fprintf(stderr, "usage: %s idle|queued\n", argv[0]);
    return 2;
  }
  // The clients are of no more use: end without taking them down one by one.
  std::fflush(stdout);
  _exit(0);
}
