#include "agent/orb/objectkeys.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <set>
#include <thread>
#include <vector>

namespace {

using namespace zk::agent;

TEST(ObjectKeys, admitTheOwnerAlone) {
  ObjectKeys keys;
  const std::string id = ObjectKeys::make();
  EXPECT_EQ(keys.admits(id, "10.1.2.3"), Admission::UNKNOWN);
  keys.add(id, "10.1.2.3");
  EXPECT_EQ(keys.admits(id, "10.1.2.3"), Admission::ADMITTED);
  EXPECT_EQ(keys.admits(id, "10.1.2.4"), Admission::FOREIGN);
  EXPECT_EQ(keys.admits(id, ""), Admission::FOREIGN);
  EXPECT_EQ(keys.admits(ObjectKeys::make(), "10.1.2.3"), Admission::UNKNOWN);
  keys.remove(id);
  EXPECT_EQ(keys.admits(id, "10.1.2.3"), Admission::UNKNOWN);
}

TEST(ObjectKeys, knowNoIdsOfAnotherLength) {
  ObjectKeys keys;
  const std::string zeros(ObjectKeys::SIZE, '\0');
  keys.add(zeros, "peer");
  EXPECT_EQ(keys.admits(zeros, "peer"), Admission::ADMITTED);
  for (const std::size_t size : {0U, 1U, 15U, 17U, 1000U}) {
    EXPECT_EQ(keys.admits(std::string(size, '\0'), "peer"), Admission::UNKNOWN) << size;
  }
}

constexpr int MANY = 100000;

TEST(ObjectKeys, areNeverTheSame) {
  std::set<std::string> made;
  for (int i = 0; i < MANY; ++i) {
    made.insert(ObjectKeys::make());
  }
  EXPECT_EQ(made.size(), std::size_t(MANY));
}

// No byte of theirs is from a clock, a process id or a counter: each bit is set
// in half of them, and differs from the one made before in half of them. Half of
// 100,000, give or take ten standard deviations.
TEST(ObjectKeys, showNothingButChance) {
  std::string before = ObjectKeys::make();
  std::vector<int> set(128);
  std::vector<int> changed(128);
  for (int i = 0; i < MANY; ++i) {
    const std::string id = ObjectKeys::make();
    ASSERT_EQ(id.size(), ObjectKeys::SIZE);
    for (std::size_t bit = 0; bit < 128; ++bit) {
      const auto isSet = [bit](const std::string& of) {
        return (static_cast<unsigned char>(of[bit / 8]) >> bit % 8 & 1U) != 0;
      };
      set[bit] += isSet(id);
      changed[bit] += isSet(id) != isSet(before);
    }
    before = id;
  }
  for (std::size_t bit = 0; bit < 128; ++bit) {
    EXPECT_NEAR(set[bit], MANY / 2.0, 1600) << bit;
    EXPECT_NEAR(changed[bit], MANY / 2.0, 1600) << bit;
  }
}

TEST(ObjectKeys, areKeptByManyThreadsAtOnce) {
  ObjectKeys keys;
  std::atomic<int> wrong{0};
  std::vector<std::thread> threads;
  threads.reserve(4);
  for (int thread = 0; thread < 4; ++thread) {
    threads.emplace_back([&, own = std::to_string(thread)] {
      for (int i = 0; i < 2000; ++i) {
        const std::string id = ObjectKeys::make();
        keys.add(id, own);
        wrong += keys.admits(id, own) != Admission::ADMITTED;
        wrong += keys.admits(id, "other") != Admission::FOREIGN;
        keys.remove(id);
        wrong += keys.admits(id, own) != Admission::UNKNOWN;
      }
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(wrong.load(), 0);
}

}  // namespace
