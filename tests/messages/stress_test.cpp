// Many producers, and clients that come and go, switch reporting and fetch at
// random. Every event offered to a client is accounted for: dropped by its
// filter, refused by its full queue, delivered once and in its producer's
// order, or discarded with the client. ZK_STRESS_SEED repeats a run.
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <map>
#include <random>

#include "tests/messages/support.h"

struct AsnForwardFaultRptStrc {
  int producer = 0;
  long sequence = 0;
};

namespace zk::test {
namespace {

using NS_QUORCORBA::NXMessageMgr;
using Origin = AsnForwardFaultRptStrc;

constexpr int PRODUCERS = 3;
constexpr int CLIENTS = 4;
constexpr int LIVES = 200;
constexpr std::array<long, 2> CLASSES{8, 10};
constexpr std::size_t MOST_KEPT = 300;

bool isDropped(long sequence) { return sequence % 7 == 0; }

// One life of one client, from its subscription to its end.
struct Life {
  // Counted on the pushing threads.
  std::atomic<long> offered{0};  // to the filter
  std::atomic<long> dropped{0};  // by it
  std::atomic<long> accepted{0};
  std::atomic<long> refused{0};
  std::atomic<int> filterDeletions{0};
  std::atomic<int> handlerDeletions{0};

  // The client thread's.
  long delivered = 0;
  std::map<std::string, long> latest;  // sequence number by producer
};

// The life that the calling thread last offered an event to: what the queue
// then says about the event is about this life.
thread_local Life* offeredTo = nullptr;

class AccountingFilter : public ScriptedFilter {
 public:
  explicit AccountingFilter(std::shared_ptr<Life> life)
      : ScriptedFilter(script_), script_(askingScript()), life_(std::move(life)) {}
  ~AccountingFilter() override { ++life_->filterDeletions; }

  bool isFiltered(const void* context) override {
    const auto* origin = static_cast<const Origin*>(context);
    offeredTo = life_.get();
    ++life_->offered;
    life_->dropped += isDropped(origin->sequence) ? 1 : 0;
    return isDropped(origin->sequence);
  }

 private:
  FilterScript script_;
  std::shared_ptr<Life> life_;
};

class AccountingHandler : public NS_QUORCORBA::NXMsgExceptionHanle {
 public:
  explicit AccountingHandler(std::shared_ptr<Life> life) : life_(std::move(life)) {}
  ~AccountingHandler() override { ++life_->handlerDeletions; }

 private:
  std::shared_ptr<Life> life_;
};

class AccountingTrace : public Installed<zk::platform::TraceSink> {
 public:
  AccountingTrace() { zk::platform::setTraceLevel(3); }
  ~AccountingTrace() override { zk::platform::setTraceLevel(before_); }

  void write(int, const NS_CORBA::TraceRecord&, const char* text) override {
    if (std::strncmp(text, "[Nex_MsgAgent::pushmsg]Exist.", 29) == 0) {
      ++offeredTo->accepted;
    } else if (std::strncmp(text, "[Nex_MsgAgent::pushmsg]pushmsg overload", 39) == 0) {
      ++offeredTo->refused;
    }
  }

 private:
  int before_ = zk::platform::traceLevel();
};

class SwitchedSecurity : public NS_SECURITY_SERVICE1::SecurityIF {
 public:
  bool IsClientValid(long clientId, long, const char*, const char*, const char*) override {
    return !invalid[static_cast<std::size_t>(clientId)];
  }

  std::array<std::atomic<bool>, CLIENTS> invalid{};
};

unsigned int baseSeed() {
  const char* given = std::getenv("ZK_STRESS_SEED");
  return given != nullptr ? static_cast<unsigned int>(std::strtoul(given, nullptr, 10)) : 20121120;
}

HeldEvent makeEventOf(const Origin& origin) {
  HeldEvent event = makeEvent(std::to_string(origin.sequence));
  event->get()->header.fixed_header.event_type.type_name =
      CORBA::string_dup(std::to_string(origin.producer).c_str());
  return event;
}

// Pushes until told to stop, alone or in bulk, to the classes in turn.
class Producer {
 public:
  Producer(int number, const std::atomic<bool>& done)
      : number_(number), done_(done), random_(baseSeed() + static_cast<unsigned int>(number)) {}

  void run() {
    while (!done_) {
      pushSome();
      std::this_thread::yield();
    }
  }

  // Events that the producer still holds.
  const std::vector<HeldEvent>& kept() const { return kept_; }

 private:
  void pushSome() {
    std::vector<Origin> origins(1 + random_() % 3);
    std::vector<HeldEvent> events;
    for (Origin& origin : origins) {
      origin = {number_, ++sequence_};
      events.push_back(makeEventOf(origin));
    }
    for (const long msgClass : CLASSES) {
      pushTo(msgClass, events, origins);
    }
    keepOrLetGo(std::move(events));
  }

  static void pushTo(long msgClass, const std::vector<HeldEvent>& events,
                     std::vector<Origin>& origins) {
    if (events.size() == 1) {
      EXPECT_EQ(NXMessageMgr::Instance()->pushMessage(msgClass, events[0].get(), &origins[0]), 0);
      return;
    }
    std::list<std::pair<Event*, Origin*>> bulk;
    for (std::size_t position = 0; position < events.size(); ++position) {
      bulk.emplace_back(events[position].get(), &origins[position]);
    }
    EXPECT_EQ(NXMessageMgr::Instance()->pushBulkMessage(msgClass, bulk), 0);
  }

  // What is let go is freed by whoever holds it last.
  void keepOrLetGo(std::vector<HeldEvent> events) {
    for (HeldEvent& event : events) {
      if (random_() % 4 != 0) {
        continue;
      }
      if (kept_.size() < MOST_KEPT) {
        kept_.push_back(std::move(event));
      } else {
        kept_[random_() % MOST_KEPT] = std::move(event);
      }
    }
  }

  const int number_;
  const std::atomic<bool>& done_;
  std::mt19937 random_;
  long sequence_ = 0;
  std::vector<HeldEvent> kept_;
};

struct Totals {
  std::atomic<long> offered{0};
  std::atomic<long> dropped{0};
  std::atomic<long> refused{0};
  std::atomic<long> delivered{0};
  std::atomic<long> discarded{0};
};

// Lives many lives, each ended in one of four ways.
class Client {
 public:
  Client(long id, SwitchedSecurity& security, Totals& totals)
      : id_(id),
        msgClass_(CLASSES[static_cast<std::size_t>(id) % CLASSES.size()]),
        security_(security),
        totals_(totals),
        random_(baseSeed() + 1000 + static_cast<unsigned int>(id)) {}

  void run() {
    for (int life = 0; life < LIVES; ++life) {
      begin();
      for (auto steps = 1 + random_() % 30; steps > 0; --steps) {
        actAtRandom();
      }
      if (life + 1 == LIVES || random_() % 4 != 0) {
        end();
      }
    }
  }

 private:
  // Replaces a life that was not ended.
  void begin() {
    auto before = std::move(life_);
    life_ = std::make_shared<Life>();
    NXMessageMgr::Instance()->subscribeMsg(msgClass_, id_, new AccountingFilter(life_),
                                           new AccountingHandler(life_));
    if (before) {
      settle(*before);
    }
    NXMessageMgr::Instance()->setReportStatus(msgClass_, id_, true);
  }

  void actAtRandom() {
    switch (random_() % 8) {
      case 0:
        NXMessageMgr::Instance()->setReportStatus(msgClass_, id_, random_() % 3 != 0);
        break;
      case 1:
        NXMessageMgr::Instance()->setLayerFilter(msgClass_, id_, {{{1, 2}, true}});
        break;
      case 2:
      case 3:
        std::this_thread::sleep_for(std::chrono::microseconds(random_() % 500));
        break;
      default:
        fetchOnce();
    }
  }

  void fetchOnce() {
    notifications::EventList_T* list = nullptr;
    EXPECT_EQ(NXMessageMgr::Instance()->getMsgList(msgClass_, id_, list), 0);
    const std::unique_ptr<notifications::EventList_T> owned(list);
    ASSERT_TRUE(owned);
    for (CORBA::ULong position = 0; position < list->length(); ++position) {
      take((*list)[position]);
    }
  }

  // An event that comes twice, or after a later one, does not go on.
  void take(const CosNotification::StructuredEvent& event) {
    const std::string producer = event.header.fixed_header.event_type.type_name.in();
    const long sequence = std::atol(event.header.fixed_header.event_name.in());
    long& latest = life_->latest[producer];
    EXPECT_GT(sequence, latest) << "producer " << producer;
    EXPECT_FALSE(isDropped(sequence));
    const char* text = nullptr;
    EXPECT_TRUE(event.filterable_data.length() == 1 && (event.filterable_data[0].value >>= text));
    EXPECT_EQ(text != nullptr ? std::atol(text) : -1, sequence);
    latest = sequence;
    ++life_->delivered;
  }

  void end() {
    switch (random_() % 3) {
      case 0:
        drain();
        NXMessageMgr::Instance()->unSubscribeMsg(msgClass_, id_);
        break;
      case 1:
        loseValidity();
        break;
      default:
        NXMessageMgr::Instance()->unSubscribeMsg(msgClass_, id_);
    }
    settle(*life_);
    life_.reset();
  }

  // With reporting off, all that was accepted comes.
  void drain() {
    NXMessageMgr::Instance()->setReportStatus(msgClass_, id_, false);
    EXPECT_TRUE(eventually([this] {
      fetchOnce();
      return life_->delivered >= life_->accepted;
    }));
    EXPECT_EQ(life_->delivered, life_->accepted);
  }

  void loseValidity() {
    auto& invalid = security_.invalid[static_cast<std::size_t>(id_)];
    invalid = true;
    EXPECT_TRUE(eventually([this] { return life_->handlerDeletions > 0; }));
    invalid = false;
  }

  void settle(const Life& life) {
    EXPECT_EQ(life.filterDeletions, 1);
    EXPECT_EQ(life.handlerDeletions, 1);
    EXPECT_EQ(life.offered, life.dropped + life.accepted + life.refused);
    EXPECT_LE(life.delivered, life.accepted);
    totals_.offered += life.offered;
    totals_.dropped += life.dropped;
    totals_.refused += life.refused;
    totals_.delivered += life.delivered;
    totals_.discarded += life.accepted - life.delivered;
  }

  const long id_;
  const long msgClass_;
  SwitchedSecurity& security_;
  Totals& totals_;
  std::mt19937 random_;
  std::shared_ptr<Life> life_;
};

TEST(MessagesStressTest, everyOfferedEventIsAccountedFor) {
  SCOPED_TRACE("ZK_STRESS_SEED=" + std::to_string(baseSeed()));
  FixedAgentConfig config;
  config.eventlistsize = 5;
  config.cachesize = 20;
  NXMessageMgr::Instance();
  const AccountingTrace trace;
  const auto security = std::make_shared<SwitchedSecurity>();
  const ScopedService service("SecurityIF", security);
  Totals totals;
  std::atomic<bool> done{false};

  std::vector<std::unique_ptr<Producer>> producers;
  std::vector<std::thread> producing;
  for (int number = 0; number < PRODUCERS; ++number) {
    producers.push_back(std::make_unique<Producer>(number, done));
    producing.emplace_back([&producer = *producers.back()] { producer.run(); });
  }
  std::vector<std::thread> living;
  for (long id = 0; id < CLIENTS; ++id) {
    living.emplace_back([id, &security, &totals] { Client(id, *security, totals).run(); });
  }
  for (std::thread& thread : living) {
    thread.join();
  }
  done = true;
  for (std::thread& thread : producing) {
    thread.join();
  }

  for (const auto& producer : producers) {
    for (const HeldEvent& event : producer->kept()) {
      EXPECT_TRUE(event->isLast());
    }
  }
  EXPECT_EQ(totals.offered, totals.dropped + totals.refused + totals.delivered + totals.discarded);
  EXPECT_GT(totals.delivered, 0);
  std::printf("offered %ld: dropped %ld, refused %ld, delivered %ld, discarded %ld\n",
              totals.offered.load(), totals.dropped.load(), totals.refused.load(),
              totals.delivered.load(), totals.discarded.load());
}

}  // namespace
}  // namespace zk::test
