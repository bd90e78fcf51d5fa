// Memory and threads that cannot be had while events are delivered: no event is
// lost without a word, and the agent goes on. This program replaces the allocation
// functions, and the one that makes threads.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <pthread.h>

#include <algorithm>
#include <atomic>
#include <limits>
#include <map>

#include "tests/agent/channel/support/clients.h"
#include "tests/agent/channel/support/filters.h"
#include "tests/support/refusedallocations.h"

namespace {

constexpr long FOR_GOOD = std::numeric_limits<long>::max();

// Of the allocations of all threads but those that are spared, so many succeed,
// and so many fail then.
std::atomic<long> untilFailure{FOR_GOOD};
std::atomic<long> toFail{0};
std::atomic<long> failures{0};
thread_local bool spared = false;

std::atomic<bool> threadsFail{false};

bool fails() {
  if (spared || untilFailure.fetch_sub(1) > 0 || toFail.fetch_sub(1) <= 0) {
    return false;
  }
  ++failures;
  return true;
}

}  // namespace

// The ORB's sequences leave what they have copied when a further copy fails.
extern "C" const char* leaksOfTheOrb() asm("__lsan_default_suppressions");
extern "C" const char* leaksOfTheOrb() { return "leak:_CORBA_Sequence\nleak:omni\n"; }

extern "C" int pthread_create(pthread_t* thread, const pthread_attr_t* attributes,
                              void* (*start)(void*), void* argument) {
  using Create = decltype(&pthread_create);
  static const auto create = reinterpret_cast<Create>(dlsym(RTLD_NEXT, "pthread_create"));
  return threadsFail ? EAGAIN : create(thread, attributes, start, argument);
}

bool refusesAllocation(std::size_t) { return fails(); }

namespace {

using namespace zk::test;

class Shortage {
 public:
  Shortage(long at, long length) {
    failures = 0;
    toFail = length;
    untilFailure = at - 1;
  }
  ~Shortage() { untilFailure = FOR_GOOD; }
  Shortage(const Shortage&) = delete;
  Shortage& operator=(const Shortage&) = delete;
};

class Spared {
 public:
  Spared() { spared = true; }
  ~Spared() { spared = false; }
  Spared(const Spared&) = delete;
  Spared& operator=(const Spared&) = delete;
};

// Of a session of its own, with two consumers behind a filter.
template <class Client>
class Consumers {
 public:
  Consumers() {
    EXPECT_TRUE(add(filter_.in(), "$a == 1 or exist $notificationId"));
    for (Client* client : {&first, &second}) {
      client->proxy->add_filter(filter_.in());
      client->connect();
    }
  }

  // Each has an event of this id, or a loss was told.
  bool haveOrLost(const std::string& id) {
    return !local.losses->lines().empty() || (has(first, id) && has(second, id));
  }
  bool have(const std::string& id) { return has(first, id) && has(second, id); }

  LocalChannel local;
  Client first{local};
  Client second{local};

 private:
  bool has(Client& client, const std::string& id) {
    Ids& ids = seen_[&client];
    collect(client, ids);
    return std::find(ids.begin(), ids.end(), id) != ids.end();
  }
  static void collect(StructuredPull& client, Ids& ids) {
    const Ids more = client.rest();
    ids.insert(ids.end(), more.begin(), more.end());
  }
  static void collect(StructuredPush& client, Ids& ids) { ids = client.consumer->ids(); }

  const CosNotifyFilter::Filter_var filter_ = emptyFilter(local.channel.in());
  std::map<Client*, Ids> seen_;
};

class OutOfMemory : public testing::Test {
 protected:
  // What is there, if the proxy is.
  static std::size_t restOf(SequencePull& client) {
    try {
      return client.tryNext(3).size();
    } catch (const CORBA::Exception&) {
      return 0;
    }
  }

  const Spared spared_;
};

TEST_F(OutOfMemory, onceLosesNoEventWithoutAWord) {
  bool failed = true;
  long at = 1;
  for (; failed && at < 1000 && !HasFailure(); ++at) {
    Consumers<StructuredPull> consumers;
    {
      const Shortage shortage(at, 1);
      send(makeAlarm("1"));
      EXPECT_TRUE(becomesTrue([&] { return consumers.haveOrLost("1"); })) << at;
      failed = failures != 0;
    }
    send(makeAlarm("2"));
    EXPECT_TRUE(becomesTrue([&] { return consumers.have("2"); })) << at;
  }
  EXPECT_GT(at, 20) << "allocations that failed one after the other";
  EXPECT_FALSE(failed);
}

TEST_F(OutOfMemory, forAWhileIsToldAfterwards) {
  bool failed = true;
  for (long at = 1; failed && at < 1000 && !HasFailure(); ++at) {
    Consumers<StructuredPull> consumers;
    {
      const Shortage shortage(at, FOR_GOOD);
      send(makeAlarm("1"));
      EXPECT_TRUE(
          becomesTrue([] { return zk::platform::eventSinkCounts("event-cache").taken == 1; }));
      failed = failures != 0;
    }
    send(makeAlarm("2"));
    EXPECT_TRUE(becomesTrue([&] { return consumers.have("2"); })) << at;
    EXPECT_TRUE(becomesTrue([&] { return consumers.haveOrLost("1"); })) << at;
  }
  EXPECT_FALSE(failed);
}

// The consumer itself and the ORB below run out as well: it may be given up.
TEST_F(OutOfMemory, endsAPushingProxyAtWorst) {
  bool failed = true;
  for (long at = 1; failed && at < 1000 && !HasFailure(); ++at) {
    Consumers<StructuredPush> consumers;
    const Shortage shortage(at, 1);
    send(makeAlarm("1"));
    EXPECT_TRUE(becomesTrue([&] {
      return consumers.haveOrLost("1") || consumers.local.session->proxies().count() < 2;
    })) << at;
    failed = failures != 0;
  }
  EXPECT_FALSE(failed);
}

// The thread of the NMS's own call.
TEST_F(OutOfMemory, ofWhoeverPullsEndsTheProxyAtWorst) {
  bool failed = true;
  for (long at = 1; failed && at < 1000 && !HasFailure(); ++at) {
    LocalChannel local;
    SequencePull client(local);
    client.connect();
    sendNumbers(1, 3);
    ASSERT_TRUE(
        becomesTrue([] { return zk::platform::eventSinkCounts("event-cache").taken == 3; }));
    CosNotification::EventBatch_var batch;
    {
      spared = false;
      const Shortage shortage(at, 1);
      try {
        batch = client.proxy->pull_structured_events(2);
      } catch (const CORBA::Exception&) {
        // As it may.
      } catch (const std::bad_alloc&) {
        // From this side of the call.
      }
      spared = true;
      failed = failures != 0;
    }
    std::size_t got = batch.operator->() != nullptr ? batch->length() : 0;
    EXPECT_TRUE(becomesTrue([&] {
      got += restOf(client);
      return got == 3 || !local.losses->lines().empty();
    })) << at;
  }
  EXPECT_FALSE(failed);
}

// Before any of the channel's threads has the event.
TEST_F(OutOfMemory, ofWhoeverSendsIsToldWithTheNextEvent) {
  bool failed = true;
  for (long at = 1; failed && at < 1000 && !HasFailure(); ++at) {
    Consumers<StructuredPull> consumers;
    auto event = makeAlarm("1");
    {
      spared = false;
      const Shortage shortage(at, 1);
      NS_QUORCORBA::PushEvent(event);
      spared = true;
      failed = failures != 0;
    }
    send(makeAlarm("2"));
    EXPECT_TRUE(becomesTrue([&] { return consumers.have("2"); })) << at;
    EXPECT_TRUE(becomesTrue([&] { return consumers.haveOrLost("1"); })) << at;
  }
  EXPECT_FALSE(failed);
}

// A consumer without a thread is refused, and the next one is served.
TEST(OutOfThreads, refusesAConsumer) {
  LocalChannel local;
  StructuredPull pulling(local);
  StructuredPush pushing(local);
  threadsFail = true;
  EXPECT_THROW(pulling.connect(), CORBA::NO_RESOURCES);
  EXPECT_THROW(pushing.connect(), CORBA::NO_RESOURCES);
  threadsFail = false;
  StructuredPush client(local);
  client.connect();
  EXPECT_THROW(pulling.connect(), CORBA::OBJECT_NOT_EXIST);
  sendNumbers(1, 3);
  EXPECT_TRUE(receives(client, numbers(1, 3)));
}

}  // namespace
