// How many events a second the cache takes and delivers, beside the limit: one
// thread that copies the same events into lists of the same size and does
// nothing else.
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
#include "messages/messagemgr.h"
#include "platform/default/logs.h"

namespace zk::bench {
namespace {

using Clock = std::chrono::steady_clock;
using NS_QUORCORBA::NXMessageMgr;

constexpr long CLASS = 10;
constexpr long CACHESIZE = 10000;
constexpr long LISTSIZE = 500;
constexpr int COPIES = 12000;  // deliveries in a round, about
constexpr int LEAST_PUSHED = 1000;
constexpr int MOST_PUSHED = 9000;
constexpr int ROUNDS = 15;

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

std::vector<HeldEvent> makeEvents(int count) {
  std::vector<HeldEvent> events;
  events.reserve(static_cast<std::size_t>(count));
  for (int number = 0; number < count; ++number) {
    events.push_back(makeHeldEvent(number));
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
Rate measureCopying(unsigned int threads, int count, int copies) {
  std::vector<std::vector<HeldEvent>> events(threads);
  std::vector<Lists> lists(threads);
  std::vector<Rate> rates(threads);
  std::vector<std::thread> copying;
  for (unsigned int thread = 0; thread < threads; ++thread) {
    events[thread] = makeEvents(count);
    lists[thread] = makeLists(copies);
  }
  for (unsigned int thread = 0; thread < threads; ++thread) {
    copying.emplace_back(
        [&, thread] { rates[thread] = copyInto(lists[thread], events[thread], copies); });
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

Round measureRound(int clients, int count, std::chrono::microseconds& pause) {
  auto events = makeEvents(count);
  Poller poller(clients, count, pause);
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
  const Rate delivered = watch.rate(static_cast<double>(clients) * count);
  producer.join();
  return {count / pushing, delivered};
}

std::vector<double> timed(const std::vector<Rate>& rates) {
  std::vector<double> result;
  result.reserve(rates.size());
  for (const Rate& rate : rates) {
    result.push_back(rate.timed);
  }
  return result;
}

std::vector<double> worked(const std::vector<Rate>& rates) {
  std::vector<double> result;
  result.reserve(rates.size());
  for (const Rate& rate : rates) {
    result.push_back(rate.worked);
  }
  return result;
}

struct Results {
  std::vector<Rate> limits;
  std::vector<double> scaled;
  std::vector<double> pushes;
  std::vector<Rate> delivered;
};

void print(int clients, int count, unsigned int cores, const Results& results) {
  const double delivered = median(timed(results.delivered));
  const double limit = median(timed(results.limits));
  std::printf("%7d %7d %10.0f %12.0f %10.0f %6u %10.0f %7.2f %7.2f\n", clients, count,
              median(results.pushes), delivered, limit, cores, median(results.scaled),
              delivered / (limit * cores),
              median(worked(results.delivered)) / median(worked(results.limits)));
}

void measure(int clients) {
  const int count = std::clamp(COPIES / clients, LEAST_PUSHED, MOST_PUSHED);
  const unsigned int cores =
      std::min(static_cast<unsigned int>(clients), std::thread::hardware_concurrency());
  for (long client = 0; client < clients; ++client) {
    NXMessageMgr::Instance()->subscribeMsg(CLASS, client, nullptr, nullptr);
    NXMessageMgr::Instance()->setReportStatus(CLASS, client, true);
  }
  std::chrono::microseconds pause(clients * 100 + 400);
  measureRound(clients, count, pause);  // warms up
  Results results;
  for (int round = 0; round < ROUNDS; ++round) {
    results.limits.push_back(measureCopying(1, count, clients * count));
    results.scaled.push_back(measureCopying(cores, count, clients * count).timed);
    const Round rates = measureRound(clients, count, pause);
    results.pushes.push_back(rates.pushes);
    results.delivered.push_back(rates.delivered);
  }
  for (long client = 0; client < clients; ++client) {
    NXMessageMgr::Instance()->unSubscribeMsg(CLASS, client);
  }
  print(clients, count, cores, results);
}

// Memory freed after a round stays with the process, and is joined at once: what
// is measured is the cache, not how the kernel gives the same pages back or how
// the allocator searches what one thread took and another freed. It applies to
// the limit as well.
void keepMemory() {
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
      "freed memory kept and joined by the allocator\n",
      zk::bench::LISTSIZE, zk::bench::CACHESIZE);
  std::printf(
      "limit: copies/s of one thread; cores: what the clients' threads can use;\n"
      "all: copies/s of that many threads at once; ratio: delivered/s over limit times cores\n"
      "(target 0.85); work: the same by core seconds used instead of time passed\n");
  std::printf("%7s %7s %10s %12s %10s %6s %10s %7s %7s\n", "clients", "events", "pushes/s",
              "delivered/s", "limit", "cores", "all", "ratio", "work");
  std::vector<int> counts{1, 8, 64, 256};
  if (argc > 1) {
    counts.clear();
    for (int argument = 1; argument < argc; ++argument) {
      counts.push_back(std::max(1, std::atoi(argv[argument])));
    }
  }
  for (const int clients : counts) {
    zk::bench::measure(clients);
    std::fflush(stdout);
  }
  orb->destroy();
  return 0;
}
