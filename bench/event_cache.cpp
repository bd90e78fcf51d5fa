// How many events a second the cache takes and delivers, beside the limit: one
// thread that copies the same events into lists of the same size and does
// nothing else, times the cores that copying can use. An ORB that counts the
// users of its type codes under one mutex lets two threads copy little faster
// than one, so the cores are measured too, by copying on as many threads at once
// as the clients' threads can use.
//
// A round pushes a batch of events from one thread to all clients, while
// another fetches from the clients in turn, as polling clients do; it ends when
// every client has every event. Making the events before and freeing the
// fetched lists after it is not the cache's work and not timed; neither is it
// for the limit. Distribution, queues, wake-ups, the fresh list of each fetch
// and the polling itself are.
#include <malloc.h>
#include <sys/resource.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <thread>

#include "bench/eventshape.h"
#include "zk_quornex/messages/messagemgr.h"
#include "zk_quornex/platform/default/logs.h"

namespace zk::bench {
namespace {

using Clock = std::chrono::steady_clock;
using NS_QUORCORBA::NXMessageMgr;

constexpr long CLASS = 10;
constexpr long CACHESIZE = 10000;
constexpr long LISTSIZE = 500;
constexpr int COPIES = 128000;  // deliveries in a round, about
constexpr int LEAST_PUSHED = 1000;
constexpr int MOST_PUSHED = 9000;
constexpr int ROUNDS = 9;

double secondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

double seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

// What all threads of the process have used of the cores so far.
double usedSeconds() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

// How fast something went: a second of time, and a second of one core's work.
// The latter hardly depends on what else the machine is doing.
struct Rate {
  double timed;
  double worked;
};

class Stopwatch {
 public:
  Rate rate(double count) const {
    return {count / secondsSince(start_), count / (usedSeconds() - used_)};
  }

 private:
  Clock::time_point start_ = Clock::now();
  double used_ = usedSeconds();
};

double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

// What a round delivers: each event to every client.
struct Load {
  int clients;
  int count;
  Values values;

  int copies() const { return clients * count; }
};

std::vector<HeldEvent> makeEvents(const Load& load) {
  std::vector<HeldEvent> events;
  events.reserve(static_cast<std::size_t>(load.count));
  for (int number = 0; number < load.count; ++number) {
    events.push_back(makeHeldEvent(number, load.values));
  }
  return events;
}

Lists makeLists(int copies) {
  Lists lists(static_cast<std::size_t>((copies + LISTSIZE - 1) / LISTSIZE));
  for (auto& list : lists) {
    list = std::make_unique<notifications::EventList_T>();
    list->length(LISTSIZE);
  }
  return lists;
}

// Copies the events over and over into the lists.
Rate copyInto(Lists& lists, const std::vector<HeldEvent>& events, int copies) {
  const Stopwatch watch;
  for (int copy = 0; copy < copies; ++copy) {
    const auto& source = *events[static_cast<std::size_t>(copy) % events.size()]->get();
    (*lists[static_cast<std::size_t>(copy / LISTSIZE)])[static_cast<CORBA::ULong>(
        copy % LISTSIZE)] = source;
  }
  return watch.rate(copies);
}

// Copies on as many threads at once, each with events and lists of its own, and
// frees the lists afterwards on this thread, as happens to those of the cache:
// memory that another thread frees is slower to take again. All copies a second.
Rate measureCopying(unsigned int threads, const Load& load) {
  std::vector<std::vector<HeldEvent>> events(threads);
  std::vector<Lists> lists(threads);
  std::vector<Rate> rates(threads);
  std::vector<std::thread> copying;
  for (unsigned int thread = 0; thread < threads; ++thread) {
    events[thread] = makeEvents(load);
    lists[thread] = makeLists(load.copies());
  }
  for (unsigned int thread = 0; thread < threads; ++thread) {
    copying.emplace_back(
        [&, thread] { rates[thread] = copyInto(lists[thread], events[thread], load.copies()); });
  }
  Rate sum{0, 0};
  for (unsigned int thread = 0; thread < threads; ++thread) {
    copying[thread].join();
    sum.timed += rates[thread].timed;
    sum.worked += rates[thread].worked;
  }
  return sum;
}

// Polls the clients in turn. It pauses longer when lists come short, and less
// when they come full: a poller that spins would take the time it measures, each
// fetch costing a fresh list.
class Poller {
 public:
  // pause is kept from round to round.
  Poller(int clients, int count, std::chrono::microseconds& pause)
      : missing_(static_cast<std::size_t>(clients), count), pause_(pause) {}

  void run() {
    while (!missing_.empty()) {
      const std::size_t most = pollAll();
      adaptTo(most);
      if (!isDone()) {
        std::this_thread::sleep_for(pause_);
      } else {
        return;
      }
    }
  }

 private:
  bool isDone() const {
    return std::all_of(missing_.begin(), missing_.end(), [](int count) { return count == 0; });
  }

  // The longest list that came.
  std::size_t pollAll() {
    std::size_t most = 0;
    for (std::size_t client = 0; client < missing_.size(); ++client) {
      if (missing_[client] == 0) {
        continue;
      }
      notifications::EventList_T* list = nullptr;
      NXMessageMgr::Instance()->getMsgList(CLASS, static_cast<long>(client), list);
      most = std::max<std::size_t>(most, list->length());
      missing_[client] -= static_cast<int>(list->length());
      fetched_.emplace_back(list);
    }
    return most;
  }

  void adaptTo(std::size_t most) {
    if (most > LISTSIZE * 3 / 4) {
      pause_ = std::max(pause_ * 3 / 4, std::chrono::microseconds(100));
    } else if (most < LISTSIZE / 2) {
      pause_ = std::min(pause_ * 5 / 4, std::chrono::microseconds(100000));
    }
  }

  std::vector<int> missing_;  // events each client still lacks
  Lists fetched_;             // freed with the poller, after the round
  std::chrono::microseconds& pause_;
};

struct Round {
  double pushes;   // a second, while clients are served
  Rate delivered;  // all clients together
};

Round measureRound(const Load& load, std::chrono::microseconds& pause) {
  auto events = makeEvents(load);
  Poller poller(load.clients, load.count, pause);
  double pushing = 0;
  const Stopwatch watch;
  std::thread producer([&] {
    const auto start = Clock::now();
    for (HeldEvent& event : events) {
      NXMessageMgr::Instance()->pushMessage(CLASS, event.get(), nullptr);
      event.reset();
    }
    pushing = secondsSince(start);
  });
  poller.run();
  const Rate delivered = watch.rate(load.copies());
  producer.join();
  return {load.count / pushing, delivered};
}

template <class Member>
double medianOf(const std::vector<Rate>& rates, Member member) {
  std::vector<double> values;
  values.reserve(rates.size());
  for (const Rate& rate : rates) {
    values.push_back(rate.*member);
  }
  return median(std::move(values));
}

struct Results {
  std::vector<Rate> limits;
  std::vector<Rate> together;
  std::vector<double> pushes;
  std::vector<Rate> delivered;
};

void print(const Load& load, unsigned int threads, const Results& results) {
  const double delivered = medianOf(results.delivered, &Rate::timed);
  const double limit = medianOf(results.limits, &Rate::timed);
  const double together = medianOf(results.together, &Rate::timed);
  std::printf("%7d %7d %10.0f %12.0f %10.0f %8u %6.2f %7.2f %9.2f %7.2f\n", load.clients,
              load.count, median(results.pushes), delivered, limit, threads, together / limit,
              delivered / together, delivered / (limit * threads),
              medianOf(results.delivered, &Rate::worked) / medianOf(results.limits, &Rate::worked));
}

void measure(const Load& load) {
  const unsigned int threads =
      std::min(static_cast<unsigned int>(load.clients), std::thread::hardware_concurrency());
  for (long client = 0; client < load.clients; ++client) {
    NXMessageMgr::Instance()->subscribeMsg(CLASS, client, nullptr, nullptr);
    NXMessageMgr::Instance()->setReportStatus(CLASS, client, true);
  }
  std::chrono::microseconds pause(load.clients * 100 + 400);
  // Warms up.
  measureCopying(threads, load);
  measureRound(load, pause);
  Results results;
  for (int round = 0; round < ROUNDS; ++round) {
    results.limits.push_back(measureCopying(1, load));
    results.together.push_back(measureCopying(threads, load));
    const Round rates = measureRound(load, pause);
    results.pushes.push_back(rates.pushes);
    results.delivered.push_back(rates.delivered);
  }
  for (long client = 0; client < load.clients; ++client) {
    NXMessageMgr::Instance()->unSubscribeMsg(CLASS, client);
  }
  print(load, threads, results);
}

void measureAll(const std::vector<int>& clientCounts, Values values, const char* title) {
  std::printf("\n%s\n%7s %7s %10s %12s %10s %8s %6s %7s %9s %7s\n", title, "clients", "events",
              "pushes/s", "delivered/s", "limit", "threads", "cores", "ratio", "unscaled", "work");
  for (const int clients : clientCounts) {
    measure({clients, std::clamp(COPIES / clients, LEAST_PUSHED, MOST_PUSHED), values});
    std::fflush(stdout);
  }
}

// Memory freed after a round stays with the process, and is joined at once, and
// each thread has its own: what is measured is the cache, not how the kernel
// gives the same pages back, how the allocator searches what one thread took and
// another freed, or how long threads wait for each other in it. It applies to the
// limit as well.
void keepMemory() {
  mallopt(M_ARENA_MAX, 1024);
  mallopt(M_MXFAST, 0);
  mallopt(M_TRIM_THRESHOLD, 1 << 30);
  mallopt(M_TOP_PAD, 64 << 20);
  mallopt(M_MMAP_THRESHOLD, 1 << 30);
}

}  // namespace
}  // namespace zk::bench

// Client counts may be given as arguments.
int main(int argc, char** argv) {
  zk::bench::keepMemory();
  CORBA::ORB_var orb = CORBA::ORB_init(argc, argv);
  zk::platform::setTraceLevel(0);
  zk::bench::configureCache(zk::bench::CACHESIZE, zk::bench::LISTSIZE);
  std::printf("event cache: events pushed and delivered (medians of %d rounds)\n",
              zk::bench::ROUNDS);
  zk::bench::printConditions();
  std::printf(
      "list size %ld, cache size %ld, one pushing and one fetching thread, traces off,\n"
      "freed memory kept and joined by the allocator, which serves each thread apart\n",
      zk::bench::LISTSIZE, zk::bench::CACHESIZE);
  std::printf(
      "limit: copies/s of one thread; threads: how many can copy for the clients at once;\n"
      "cores: what that many threads copy at once, over the limit;\n"
      "ratio: delivered/s over limit times cores (target 0.85); unscaled: over limit times\n"
      "threads; work: delivered over limit, both by core seconds used instead of time passed\n");
  std::vector<int> counts{1, 8, 64, 256};
  if (argc > 1) {
    counts.clear();
    for (int argument = 1; argument < argc; ++argument) {
      counts.push_back(std::max(1, std::atoi(argv[argument])));
    }
  }
  using zk::bench::Values;
  zk::bench::measureAll(counts, Values::COPIED, "events as an agent keeps them: copied once");
  zk::bench::measureAll(counts, Values::INSERTED, "events as first built: values just inserted");
  orb->destroy();
  return 0;
}
