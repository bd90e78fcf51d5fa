#include "agent/orb/connections.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

namespace {

using zk::agent::Connected;
using zk::agent::Connections;

class ConnectionDouble : public Connected {
 public:
  using Connected::Connected;
  int hungUp = 0;

 private:
  void hangUp() override { ++hungUp; }
};

class ConnectionsRoom : public testing::Test {
 protected:
  ConnectionsRoom() {}
  ~ConnectionsRoom() override {
    for (const auto& one : all) {
      connections.leave(*one);
    }
  }

  ConnectionDouble& enter(const std::string& peer) {
    all.push_back(std::make_unique<ConnectionDouble>(peer));
    connections.enter(*all.back());
    all.back()->use(std::chrono::steady_clock::time_point(std::chrono::seconds(all.size())));
    return *all.back();
  }

  // The places of those that were told to go.
  std::vector<std::size_t> gone() const {
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < all.size(); ++i) {
      if (all[i]->hungUp != 0) {
        EXPECT_EQ(all[i]->hungUp, 1);
        places.push_back(i);
      }
    }
    return places;
  }

  Connections connections{{4, 3}};
  std::vector<std::unique_ptr<ConnectionDouble>> all;
};

using Places = std::vector<std::size_t>;

TEST_F(ConnectionsRoom, theIdlestOfTheSamePeerGoes) {
  enter("b");
  for (int i = 0; i < 3; ++i) {
    enter("a");
  }
  EXPECT_EQ(gone(), Places{});
  enter("a");
  EXPECT_EQ(gone(), Places{1});
  enter("a");
  EXPECT_EQ(gone(), (Places{1, 2}));
}

TEST_F(ConnectionsRoom, theIdlestOfAllGoesWhenAllAreTooMany) {
  for (const char* peer : {"a", "b", "c", "d"}) {
    enter(peer);
  }
  all[0]->use(std::chrono::steady_clock::time_point(std::chrono::hours(1)));
  enter("e");
  EXPECT_EQ(gone(), Places{1});
}

TEST_F(ConnectionsRoom, strangersGoBeforeMembers) {
  enter("a").belongs();
  enter("a").belongs();
  enter("a");
  enter("a");
  EXPECT_EQ(gone(), Places{2});
  all[3]->belongs();
  enter("a");
  EXPECT_EQ(gone(), (Places{0, 2}));
}

TEST_F(ConnectionsRoom, whoLeftDoesNotCount) {
  for (int i = 0; i < 3; ++i) {
    enter("a");
  }
  connections.leave(*all[1]);
  enter("a");
  EXPECT_EQ(gone(), Places{});
  EXPECT_EQ(connections.count(), 3U);
}

TEST_F(ConnectionsRoom, makesRoomForADescriptor) {
  connections.dismissIdlest();
  enter("a");
  enter("b");
  connections.dismissIdlest();
  EXPECT_EQ(gone(), Places{0});
  connections.dismissIdlest();
  connections.dismissIdlest();
  EXPECT_EQ(gone(), (Places{0, 1}));
}

TEST_F(ConnectionsRoom, closesForGood) {
  enter("a");
  connections.close();
  enter("b");
  EXPECT_EQ(gone(), (Places{0, 1}));
}

TEST(ConnectionLimits, leaveDescriptorsForOthers) {
  const Connections::Limits limits = zk::agent::connectionLimits();
  EXPECT_GE(limits.all, 8U);
  EXPECT_LE(limits.all, 512U);
  EXPECT_LT(limits.ofPeer, limits.all);
}

}  // namespace
