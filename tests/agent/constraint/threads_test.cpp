#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "tests/agent/constraint/events.h"

namespace zk::test {

namespace {

template <typename Work>
void inThreads(std::size_t threads, Work work) {
  std::vector<std::thread> running(threads);
  for (auto& thread : running) {
    thread = std::thread(work);
  }
  for (auto& thread : running) {
    thread.join();
  }
}

TEST(ConstraintThreads, oneConstraintAndOneEventServeAll) {
  const auto constraint = parsed(
      "$objectType == OT_MANAGED_ELEMENT and 15 in $.remainder_of_body.supportedRates and "
      "$.remainder_of_body.name(ManagedElement) == '7'");
  for (int round = 0; round < 20; ++round) {
    const auto event = creation();  // its anys are read for the first time by several at once
    std::atomic<int> matched{0};
    inThreads(4, [&] {
      for (int i = 0; i < 5; ++i) {
        matched += constraint->matches(event) ? 1 : 0;
      }
    });
    EXPECT_EQ(matched, 20);
  }
}

TEST(ConstraintThreads, parseTogether) {
  const auto event = alarm();
  std::atomic<int> good{0};
  inThreads(4, [&] {
    for (int i = 0; i < 200; ++i) {
      std::string sum = "$Priority + ";
      sum += std::to_string(i);
      std::string equation = sum;
      equation += " == 4 + ";
      equation += std::to_string(i);
      good += parsed(equation)->matches(event) ? 1 : 0;
      EXPECT_THROW(parsed(sum + " and"), agent::InvalidConstraintText);
    }
  });
  EXPECT_EQ(good, 800);
}

}  // namespace

}  // namespace zk::test
