// How long an event takes from the push until its client has it, and what a slow
// flow costs the processor: 1,000 events a second, each of which finds the
// clients' threads asleep.
#include <sys/resource.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <thread>
#include <vector>

#include "bench/eventshape.h"
#include "zk_quornex/messages/messagemgr.h"
#include "zk_quornex/platform/default/logs.h"

namespace zk::bench {
namespace {

using Clock = std::chrono::steady_clock;
using NS_QUORCORBA::NXMessageMgr;

constexpr long CLASS = 10;
constexpr int ROUNDS = 5000;
constexpr int FLOWING = 5000;
constexpr std::chrono::microseconds BETWEEN{1000};
constexpr std::chrono::milliseconds POLLING{100};

void subscribe(int clients) {
  for (long client = 0; client < clients; ++client) {
    NXMessageMgr::Instance()->subscribeMsg(CLASS, client, nullptr, nullptr);
    NXMessageMgr::Instance()->setReportStatus(CLASS, client, true);
  }
}

void unsubscribe(int clients) {
  for (long client = 0; client < clients; ++client) {
    NXMessageMgr::Instance()->unSubscribeMsg(CLASS, client);
  }
}

// The events that came.
CORBA::ULong fetch(long client) {
  notifications::EventList_T* list = nullptr;
  NXMessageMgr::Instance()->getMsgList(CLASS, client, list);
  const std::unique_ptr<notifications::EventList_T> owned(list);
  return list->length();
}

double microsecondsSince(Clock::time_point start) {
  return std::chrono::duration<double, std::micro>(Clock::now() - start).count();
}

double usedMicroseconds() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  const auto sum = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) * 1e6 + static_cast<double>(time.tv_usec);
  };
  return sum(usage.ru_utime) + sum(usage.ru_stime);
}

void measurePingPong() {
  subscribe(1);
  const HeldEvent event = makeHeldEvent(1);
  const auto signal = NXMessageMgr::Instance()->listSignal(CLASS, 0);
  std::vector<double> taken;
  for (int round = 0; round < ROUNDS; ++round) {
    const auto start = Clock::now();
    NXMessageMgr::Instance()->pushMessage(CLASS, event.get(), nullptr);
    signal->wait(start + std::chrono::seconds(10));
    fetch(0);
    taken.push_back(microsecondsSince(start));
  }
  unsubscribe(1);
  std::sort(taken.begin(), taken.end());
  std::printf("push to fetch: median %.0f us, 99 of 100 below %.0f us (%d events)\n",
              taken[ROUNDS / 2], taken[ROUNDS * 99 / 100], ROUNDS);
}

// One thread serves the clients until all have everything: each time the first
// has events, or ten times a second.
void serve(int clients, bool polls) {
  const auto signal = NXMessageMgr::Instance()->listSignal(CLASS, 0);
  for (long missing = static_cast<long>(clients) * FLOWING; missing > 0;) {
    if (polls) {
      std::this_thread::sleep_for(POLLING);
    } else {
      signal->wait(Clock::now() + POLLING);
    }
    for (long client = 0; client < clients; ++client) {
      missing -= static_cast<long>(fetch(client));
    }
  }
}

void measureFlow(int clients, bool polls) {
  subscribe(clients);
  const HeldEvent event = makeHeldEvent(1);
  const double before = usedMicroseconds();
  std::thread server([&] { serve(clients, polls); });
  auto next = Clock::now();
  for (int number = 0; number < FLOWING; ++number) {
    std::this_thread::sleep_until(next += BETWEEN);
    NXMessageMgr::Instance()->pushMessage(CLASS, event.get(), nullptr);
  }
  server.join();
  const double used = usedMicroseconds() - before;
  unsubscribe(clients);
  std::printf("1,000 events a second, %3d clients, %s: %.1f us of a core an event and client\n",
              clients, polls ? "fetched every 100 ms    " : "fetched when events come",
              used / FLOWING / clients);
}

}  // namespace
}  // namespace zk::bench

int main(int argc, char** argv) {
  CORBA::ORB_var orb = CORBA::ORB_init(argc, argv);
  zk::platform::setTraceLevel(0);
  zk::bench::configureCache(10000, 500);
  std::printf("event cache: latency, and the cost of a slow flow\n");
  zk::bench::printConditions();
  zk::bench::measurePingPong();
  for (const int clients : {1, 8, 64}) {
    zk::bench::measureFlow(clients, true);
  }
  zk::bench::measureFlow(1, false);
  zk::bench::measureFlow(8, false);
  orb->destroy();
  return 0;
}
