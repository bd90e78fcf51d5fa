#include "agent/sessions/sessionservants.h"

#include <gtest/gtest.h>

#include "tests/agent/support/localagent.h"
#include "tests/agent/support/refusals.h"
#include "tests/platform/waiting.h"

namespace {

using zk::test::LocalAgent;
using zk::test::refusalBy;

TEST(Factory, tellsTheVersionOfTheInterface) {
  LocalAgent agent;
  const CORBA::String_var version = agent.factory->getVersion();
  EXPECT_STREQ(version.in(), "3.0");
}

TEST(Factory, beginsASessionOfItsOwnForEachLogin) {
  LocalAgent agent;
  const auto first = agent.logIn();
  const auto second = agent.logIn();
  EXPECT_EQ(agent.sessions.count(), 2U);
  EXPECT_FALSE(first->_is_equivalent(second.in()));
}

TEST(Factory, refusesAClientWithoutASession) {
  LocalAgent agent;
  emsSession::EmsSession_I_var session;
  EXPECT_EQ(refusalBy([&] {
              agent.factory->getEmsSession("", "", nmsSession::NmsSession_I::_nil(), session.out());
            }),
            "INVALID_INPUT: the client's session reference is nil");
  EXPECT_EQ(agent.sessions.count(), 0U);
}

TEST(Factory, refusesWrongUsersAndPasswordsAlike) {
  LocalAgent agent;
  agent.users.everyone = false;
  const std::string refused = "ACCESS_DENIED: wrong user or password";
  EXPECT_EQ(refusalBy([&] { agent.logIn("operator", "wrong"); }), refused);
  EXPECT_EQ(refusalBy([&] { agent.logIn("nobody", "secret"); }), refused);
  EXPECT_EQ(refusalBy([&] { agent.logIn("", ""); }), refused);
  EXPECT_EQ(agent.sessions.count(), 0U);
  agent.now += zk::agent::Logins::SHORTEST_PAUSE;
  agent.logIn("operator", "secret");
  EXPECT_EQ(agent.sessions.count(), 1U);
}

TEST(Factory, refusesSessionsBeyondTheLimitUntilOneEnds) {
  zk::agent::SessionLimits limits;
  limits.sessions = 2;
  LocalAgent agent(limits);
  const auto first = agent.logIn();
  agent.logIn();
  EXPECT_EQ(refusalBy([&] { agent.logIn(); }),
            "CAPACITY_EXCEEDED: the agent serves 2 sessions already, the most it may");
  first->endSession();
  EXPECT_TRUE(zk::test::becomesTrue([&] { return agent.sessions.count() == 1; }));
  EXPECT_EQ(refusalBy([&] { agent.logIn(); }), "");
}

TEST(Factory, refusesSessionsWhileStopping) {
  LocalAgent agent;
  agent.logIn();
  EXPECT_EQ(agent.sessions.endAll("stop").size(), 1U);
  EXPECT_EQ(refusalBy([&] { agent.logIn(); }), "CAPACITY_EXCEEDED: the agent is stopping");
}

}  // namespace
