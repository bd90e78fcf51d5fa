#include "agent/sessions/logins.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <map>
#include <memory>
#include <mutex>
#include <new>
#include <string>
#include <thread>
#include <vector>

#include "tests/agent/support/refusals.h"
#include "tests/platform/waiting.h"

namespace {

using namespace zk::agent;
using zk::test::becomesTrue;
using zk::test::refusalBy;

constexpr const char* DENIED = "ACCESS_DENIED: wrong user or password";

// Everybody has the password "secret". Comparisons of a held user last until they
// are let go.
class Comparing : public Users {
 public:
  bool mayLogIn(const std::string& user, const std::string& password) override {
    most = std::max(most.load(), ++running);
    ++asked;
    if (user == held) {
      gate.pass();
    }
    --running;
    return password == "secret";
  }

  std::string held = "nobody";
  zk::test::Gate gate;
  std::atomic<int> asked{0};
  std::atomic<int> running{0};
  std::atomic<int> most{0};
};

class LoginsTest : public testing::Test {
 protected:
  std::string tried(const std::string& user, const std::string& peer, const std::string& password) {
    return refusalBy([&] { logins.check({user, peer}, password); });
  }

  std::chrono::steady_clock::time_point now{std::chrono::hours(100)};
  Comparing users;
  Logins logins{users, [this] { return now; }};
};

TEST_F(LoginsTest, refuseUnseenForATimeThatDoubles) {
  for (const int pause : {1, 2, 4, 8, 16, 32, 60, 60, 60}) {
    EXPECT_EQ(tried("operator", "host", "wrong"), DENIED);
    const int asked = users.asked;
    now += std::chrono::seconds(pause) - std::chrono::milliseconds(1);
    EXPECT_EQ(tried("operator", "host", "secret"), DENIED) << pause;
    EXPECT_EQ(users.asked, asked) << "a password was compared";
    now += std::chrono::milliseconds(1);
  }
  EXPECT_EQ(tried("operator", "host", "secret"), "");
}

TEST_F(LoginsTest, startAnewAfterASuccess) {
  EXPECT_EQ(tried("operator", "host", "wrong"), DENIED);
  now += Logins::SHORTEST_PAUSE;
  EXPECT_EQ(tried("operator", "host", "wrong"), DENIED);
  now += 2 * Logins::SHORTEST_PAUSE;
  EXPECT_EQ(tried("operator", "host", "secret"), "");
  EXPECT_EQ(logins.remembered(), 0U);
  EXPECT_EQ(tried("operator", "host", "wrong"), DENIED);
  now += Logins::SHORTEST_PAUSE;
  EXPECT_EQ(tried("operator", "host", "secret"), "");
}

TEST_F(LoginsTest, startAnewAfterAnHour) {
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(tried("operator", "host", "wrong"), DENIED);
    now += Logins::LONGEST_PAUSE;
  }
  now += std::chrono::hours(1);
  EXPECT_EQ(tried("operator", "host", "wrong"), DENIED);
  now += Logins::SHORTEST_PAUSE;
  EXPECT_EQ(tried("operator", "host", "secret"), "");
}

TEST_F(LoginsTest, slowNobodyElse) {
  EXPECT_EQ(tried("operator", "host", "wrong"), DENIED);
  EXPECT_EQ(tried("operator", "other", "secret"), "");
  EXPECT_EQ(tried("viewer", "host", "secret"), "");
  EXPECT_EQ(tried("operator", "host", "secret"), DENIED);
}

TEST_F(LoginsTest, forgetTheOldestOfTooMany) {
  EXPECT_EQ(tried("first", "host", "wrong"), DENIED);
  now += std::chrono::milliseconds(1);
  EXPECT_EQ(tried("second", "host", "wrong"), DENIED);
  now += std::chrono::milliseconds(1);
  for (std::size_t i = 0; i + 1 < Logins::MOST_REMEMBERED; ++i) {
    tried("user" + std::to_string(i), "host", "wrong");
  }
  EXPECT_EQ(logins.remembered(), Logins::MOST_REMEMBERED);
  EXPECT_EQ(tried("second", "host", "secret"), DENIED);
  EXPECT_EQ(tried("first", "host", "secret"), "");
}

TEST_F(LoginsTest, lookAtNoWordThatIsTooLong) {
  const std::string longest(LONGEST_WORD, 'x');
  const std::string refusal = "INVALID_INPUT: a user name or a password has more than 256 bytes";
  EXPECT_EQ(tried(longest + "x", "host", "secret"), refusal);
  EXPECT_EQ(tried("operator", "host", longest + "x"), refusal);
  EXPECT_EQ(users.asked, 0);
  EXPECT_EQ(logins.remembered(), 0U);
  EXPECT_EQ(tried(longest, "host", longest), DENIED);
}

class ManyLogins : public LoginsTest {
 protected:
  ~ManyLogins() override {
    users.gate.open();
    for (std::thread& thread : threads) {
      thread.join();
    }
  }

  void tryOnAThread(const std::string& user, const std::string& peer) {
    threads.emplace_back([this, user, peer] { refused += tried(user, peer, "wrong") == DENIED; });
  }

  std::vector<std::thread> threads;
  std::atomic<int> refused{0};
};

TEST_F(ManyLogins, leaveAPlaceToOtherPeers) {
  users.held = "guess";
  for (int i = 0; i < 16; ++i) {
    tryOnAThread("guess", "guesser");
  }
  ASSERT_TRUE(becomesTrue([&] { return users.running == 1; }));
  EXPECT_EQ(tried("operator", "host", "secret"), "") << "while a guess is being compared";
  EXPECT_EQ(users.running, 1) << "two guesses of one peer at once";
  users.gate.open();
  EXPECT_TRUE(becomesTrue([&] { return refused == 16; }));
  EXPECT_EQ(users.asked, 2) << "those that waited for the first guess were compared, too";
}

TEST_F(ManyLogins, compareTwoAtOnce) {
  users.held = "guess";
  for (int i = 0; i < 6; ++i) {
    tryOnAThread("guess", "guesser" + std::to_string(i));
  }
  ASSERT_TRUE(becomesTrue([&] { return users.running == 2; }));
  users.gate.open();
  EXPECT_TRUE(becomesTrue([&] { return refused == 6; }));
  EXPECT_EQ(users.asked, 6);
  EXPECT_EQ(users.most, 2);
}

// A comparison that fails for another reason gives its place back.
TEST(FailingLogins, keepNoPlace) {
  class Failing : public Users {
   public:
    bool mayLogIn(const std::string&, const std::string&) override { throw std::bad_alloc(); }
  } users;
  Logins logins(users, std::chrono::steady_clock::now);
  for (int i = 0; i < 3; ++i) {
    EXPECT_THROW(logins.check({"operator", "host"}, "secret"), std::bad_alloc);
  }
  EXPECT_EQ(logins.remembered(), 0U);
}

}  // namespace
