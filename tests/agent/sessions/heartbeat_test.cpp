#include "agent/sessions/heartbeat.h"

#include <gtest/gtest.h>

#include <atomic>
#include <condition_variable>
#include <mutex>

#include "tests/agent/support/localagent.h"
#include "tests/platform/waiting.h"

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using zk::agent::Heartbeat;
using zk::test::LocalAgent;
using zk::test::NmsDouble;

// Answers only after it is let go.
class HangingNms : public NmsDouble {
 public:
  void ping() override {
    std::unique_lock<std::mutex> lock(mutex_);
    ++pings;
    let_.wait(lock, [this] { return letGo_; });
  }
  void letGo() {
    const std::lock_guard<std::mutex> guard(mutex_);
    letGo_ = true;
    let_.notify_all();
  }

 private:
  std::mutex mutex_;
  std::condition_variable let_;
  bool letGo_ = false;
};

class HeartbeatTest : public testing::Test {
 protected:
  // A turn after this much more time.
  void stepAfter(milliseconds time) {
    now += time.count();
    heartbeat.step();
  }

  std::chrono::steady_clock::time_point time() const {
    return std::chrono::steady_clock::time_point(milliseconds(now));
  }

  std::atomic<long> now{0};  // read by the pings' threads

  LocalAgent agent{{}, {1, 1}};
  Heartbeat heartbeat{{seconds(10), seconds(1), 2}, agent.sessions, [this] { return time(); }};
};

TEST_F(HeartbeatTest, pingsEveryNmsOnceAPeriod) {
  const auto session = agent.logIn();
  stepAfter(seconds(0));
  stepAfter(seconds(9));
  EXPECT_EQ(agent.nms->pings.load(), 0);
  stepAfter(seconds(1));
  EXPECT_TRUE(zk::test::becomesTrue([&] { return agent.nms->pings.load() == 1; }));
  EXPECT_TRUE(zk::test::becomesTrue([&] {
    stepAfter(seconds(10));
    return agent.nms->pings.load() >= 2;
  }));
  EXPECT_EQ(agent.sessions.count(), 1U);
}

TEST_F(HeartbeatTest, endsTheSessionOfAnNmsThatIsGone) {
  const auto session = agent.logIn();
  agent.forgetNms();
  stepAfter(seconds(0));
  EXPECT_TRUE(zk::test::becomesTrue([&] {
    stepAfter(seconds(10));
    return agent.sessions.count() == 0;
  }));
}

TEST_F(HeartbeatTest, doesNotPingWithoutAPeriod) {
  const auto session = agent.logIn();
  Heartbeat off({milliseconds(0), seconds(1), 0}, agent.sessions, [this] { return time(); });
  for (int i = 0; i < 3; ++i) {
    now += 3600000;
    off.step();
  }
  stepAfter(seconds(0));  // the sentinel: this one does ping
  stepAfter(seconds(10));
  EXPECT_TRUE(zk::test::becomesTrue([&] { return agent.nms->pings.load() == 1; }));
}

TEST_F(HeartbeatTest, isNotHeldUpByANmsThatHangs) {
  auto* const hanging = new HangingNms;
  const PortableServer::ServantBase_var owner = hanging;
  const auto stuck = agent.logInAs(hanging);
  const auto session = agent.logIn();
  stepAfter(seconds(0));
  stepAfter(seconds(10));
  EXPECT_TRUE(zk::test::becomesTrue([&] { return hanging->pings.load() == 1; }));
  EXPECT_TRUE(zk::test::becomesTrue([&] {
    stepAfter(seconds(10));
    return agent.nms->pings.load() >= 3;
  }));
  EXPECT_EQ(hanging->pings.load(), 1);  // never two at once
  hanging->letGo();
}

}  // namespace
