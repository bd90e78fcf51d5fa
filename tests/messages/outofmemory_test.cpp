// Memory that cannot be had for a list or an event: whoever asked is told, nothing
// is lost, and a client's thread goes on. This program replaces the allocation
// functions.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <limits>

#include "tests/messages/support.h"
#include "tests/support/refusedallocations.h"

namespace {

// Allocations of this size and more are refused, on every thread.
std::atomic<std::size_t> refused{std::numeric_limits<std::size_t>::max()};

}  // namespace

bool refusesAllocation(std::size_t size) { return size >= refused.load(); }

namespace zk::test {
namespace {

using NS_QUORCORBA::NXMessageCache;
using NS_QUORCORBA::NXMessageHandle;
using testing::ElementsAre;

constexpr std::size_t LARGE = 20000;  // less than a list of 500, more than all else

class Shortage {
 public:
  explicit Shortage(std::size_t size) { refused = size; }
  ~Shortage() { refused = std::numeric_limits<std::size_t>::max(); }
  Shortage(const Shortage&) = delete;
  Shortage& operator=(const Shortage&) = delete;
};

class OutOfMemory : public testing::Test {
 protected:
  FixedAgentConfig config;
  NXMessageHandle handle;
  FilterScript script;
  int handlerDeletions = 0;
};

TEST_F(OutOfMemory, forTheListOfANewClientAdoptsNothing) {
  auto filter = std::make_unique<ScriptedFilter>(script);
  auto handler = std::make_unique<CountedHandler>(handlerDeletions);
  {
    const Shortage shortage(LARGE);
    EXPECT_THROW(handle.subscribeMsg(1, filter.get(), handler.get()), std::bad_alloc);
    EXPECT_THROW(handle.setFilter(1, filter.get()), std::bad_alloc);
    EXPECT_THROW(handle.setReportStatus(1, true), std::bad_alloc);
    EXPECT_THROW(handle.setLayerFilter(1, {}), std::bad_alloc);
  }
  EXPECT_EQ(script.deletions, 0);
  EXPECT_EQ(handlerDeletions, 0);
  EXPECT_EQ(handle.listSignal(1), nullptr);
  handle.subscribeMsg(1, filter.release(), handler.release());
  handle.unSubscribeMsg(1);
  EXPECT_EQ(script.deletions, 1);
  EXPECT_EQ(handlerDeletions, 1);
}

TEST_F(OutOfMemory, forAReplacementKeepsTheClient) {
  handle.setReportStatus(1, true);
  push(handle, "a");
  {
    const Shortage shortage(LARGE);
    EXPECT_THROW(handle.subscribeMsg(1, nullptr, nullptr), std::bad_alloc);
  }
  push(handle, "b");
  EXPECT_THAT(fetchUntil("b", handle, 1).size(), 2U);
}

TEST_F(OutOfMemory, forTheNextListKeepsTheEvents) {
  NXMessageCache cache;
  cache.assembleMsg(makeEvent("a").release());
  notifications::EventList_T kept;
  notifications::EventList_T* list = &kept;
  {
    const Shortage shortage(LARGE);
    EXPECT_THROW(cache.getMsgList(list), std::bad_alloc);
  }
  EXPECT_EQ(list, &kept);
  cache.assembleMsg(makeEvent("b").release());
  EXPECT_THAT(fetch(cache), ElementsAre("a", "b"));
}

TEST_F(OutOfMemory, forTheNextListBlocksNobody) {
  handle.setReportStatus(1, true);
  {
    const Shortage shortage(LARGE);
    notifications::EventList_T* list = nullptr;
    EXPECT_THROW(handle.getMsgList(1, list), std::bad_alloc);
  }
  push(handle, "a");
  EXPECT_THAT(fetchUntil("a", handle, 1), ElementsAre("a"));
}

TEST_F(OutOfMemory, forAnEventLosesItAloneAndReleasesIt) {
  handle.setReportStatus(1, true);
  const HeldEvent large = makeEvent(std::string(LARGE, 'x'));
  {
    const Shortage shortage(LARGE);
    handle.pushMessage(large.get(), nullptr);
    ASSERT_TRUE(eventuallyFree(large));
  }
  const auto signal = handle.listSignal(1);
  EXPECT_EQ(signal->wait(std::chrono::steady_clock::now() + std::chrono::minutes(1)),
            NS_QUORCORBA::NXListSignal::State::MISSED);
  EXPECT_EQ(signal->takeMissed(), 1U);
  push(handle, "a");
  EXPECT_THAT(fetchUntil("a", handle, 1), ElementsAre("a"));
}

TEST_F(OutOfMemory, whileAnEventIsCopiedLeavesTheListAsItWas) {
  NXMessageCache cache;
  cache.assembleMsg(makeEvent("a").release());
  {
    const HeldEvent large = makeEvent(std::string(LARGE, 'x'));
    large->addRef();  // with another holder it is copied, not moved
    const Shortage shortage(LARGE);
    EXPECT_THROW(cache.assembleMsg(large.get()), std::bad_alloc);
  }
  EXPECT_EQ(cache.index_, 1);
  EXPECT_THAT(fetch(cache), ElementsAre("a"));
}

// No sequence is that long, and no memory either.
TEST_F(OutOfMemory, forAListOfAnyConfiguredSizeIsToldTheCaller) {
  for (const long size :
       {4294967293L, 4294967294L, 4294967296L, 4294967297L, std::numeric_limits<long>::max()}) {
    const Shortage shortage(std::size_t{1} << 34);
    config.eventlistsize = size;
    EXPECT_THROW(handle.subscribeMsg(1, nullptr, nullptr), std::bad_alloc) << size;
  }
}

}  // namespace
}  // namespace zk::test
