#include "zk_quornex/messages/refcount.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace zk::test {
namespace {

using NS_QUORCORBA::NXRefCountType;

struct Counted {
  explicit Counted(std::atomic<int>& deletions) : deletions_(deletions) {}
  ~Counted() { ++deletions_; }
  std::atomic<int>& deletions_;
};

class RefCountTest : public testing::Test {
 protected:
  std::atomic<int> deletions{0};
  Counted* object = new Counted(deletions);
  NXRefCountType<Counted>* holder = new NXRefCountType<Counted>(object);
};

TEST_F(RefCountTest, makerHoldsTheOnlyReference) {
  EXPECT_TRUE(holder->isLast());
  EXPECT_EQ(holder->get(), object);
  holder->release();
}

TEST_F(RefCountTest, lastReleaseDeletesTheObject) {
  holder->addRef();
  EXPECT_FALSE(holder->isLast());
  holder->release();
  EXPECT_EQ(deletions, 0);
  EXPECT_TRUE(holder->isLast());
  holder->release();
  EXPECT_EQ(deletions, 1);
}

TEST_F(RefCountTest, deletesOnceWhenManyThreadsLetGo) {
  constexpr int THREADS = 4;
  constexpr int ROUNDS = 5000;
  std::vector<std::thread> threads;
  for (int thread = 0; thread < THREADS; ++thread) {
    holder->addRef();
    threads.emplace_back([this] {
      for (int round = 0; round < ROUNDS; ++round) {
        holder->addRef();
        holder->release();
      }
      holder->release();
    });
  }
  holder->release();
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(deletions, 1);
}

TEST(EmptyRefCountTest, holderOfNothingCanBeReleased) {
  auto* holder = new NXRefCountType<int>(nullptr);
  EXPECT_EQ(holder->get(), nullptr);
  holder->release();
}

}  // namespace
}  // namespace zk::test
