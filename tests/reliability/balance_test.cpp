#include "tests/reliability/balance.h"

#include <gtest/gtest.h>

namespace {

using zk::test::Balance;

std::string text(const Balance::Sum& sum) {
  return std::to_string(sum.delivered) + " of " + std::to_string(sum.due) + ", " +
         std::to_string(sum.lost) + " lost, " + std::to_string(sum.unexplained) + " unexplained, " +
         std::to_string(sum.repeated) + " repeated";
}

class BalanceTest : public testing::Test {
 protected:
  BalanceTest() { balance.begin("a", "Harbour", "10"); }

  std::string sum(const std::vector<Balance::Loss>& told = {}) const {
    return text(balance.sum(told));
  }

  Balance balance;
};

TEST_F(BalanceTest, isEvenWhenAllCame) {
  balance.add("a", "Harbour (2)", "11");
  balance.add("a", "Harbour (3)", "12");
  balance.add("b", "not begun (9)", "12");
  EXPECT_TRUE(balance.isComplete({{"a", "Harbour (3)"}}));
  balance.close({{"a", "Harbour (3)"}}, "13");
  EXPECT_EQ(sum(), "2 of 2, 0 lost, 0 unexplained, 0 repeated");
}

TEST_F(BalanceTest, missesWhatIsLeftOut) {
  balance.add("a", "Harbour (2)", "11");
  balance.add("a", "Harbour (5)", "14");
  EXPECT_EQ(sum(), "2 of 4, 0 lost, 2 unexplained, 0 repeated");
  EXPECT_EQ(sum({{"12", "13"}}), "2 of 4, 2 lost, 0 unexplained, 0 repeated");
  EXPECT_EQ(sum({{"12", ""}}), "2 of 4, 2 lost, 0 unexplained, 0 repeated");
  EXPECT_EQ(sum({{"15", ""}}), "2 of 4, 0 lost, 2 unexplained, 0 repeated");
  EXPECT_EQ(sum({{"08", "10"}}), "2 of 4, 0 lost, 2 unexplained, 0 repeated");
}

TEST_F(BalanceTest, missesTheLast) {
  balance.add("a", "Harbour (2)", "11");
  EXPECT_FALSE(balance.isComplete({{"a", "Harbour (3)"}}));
  balance.close({{"a", "Harbour (3)"}}, "13");
  EXPECT_EQ(sum(), "1 of 2, 0 lost, 1 unexplained, 0 repeated");
}

TEST_F(BalanceTest, tellsRepeatedOnesFromEarlyOnes) {
  balance.begin("a", "Harbour (5)", "10");
  balance.add("a", "Harbour (4)", "09");
  balance.add("a", "Harbour (5)", "09");
  EXPECT_EQ(sum(), "0 of 0, 0 lost, 0 unexplained, 0 repeated");
  balance.add("a", "Harbour (5)", "11");
  balance.add("a", "Harbour (6)", "11");
  balance.add("a", "Harbour (4)", "11");
  EXPECT_EQ(sum(), "1 of 1, 0 lost, 0 unexplained, 2 repeated");
}

TEST_F(BalanceTest, countsRoundTheHighestNumber) {
  balance.begin("a", "Harbour (998)", "10");
  balance.add("a", "Harbour (999)", "11");
  balance.add("a", "Harbour (2)", "12");
  EXPECT_EQ(sum(), "2 of 2, 0 lost, 0 unexplained, 0 repeated");
}

}  // namespace
