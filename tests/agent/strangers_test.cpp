// Whoever knows nothing of the agent's users, and tries all the same.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <csignal>
#include <ctime>
#include <string>
#include <thread>
#include <vector>

#include "tests/agent/support/giopcaller.h"
#include "tests/agent/support/names.h"
#include "tests/agent/support/refusals.h"
#include "tests/agent/support/runningagent.h"

namespace {

using managedElementManager::ManagedElementMgr_I;
using zk::test::GiopCaller;
using zk::test::keyIn;
using zk::test::keyInBody;
using zk::test::managerOf;
using zk::test::ReachableNms;
using zk::test::refusalBy;
using zk::test::RunningAgent;

constexpr const char* ELSEWHERE = "127.0.0.2";
constexpr const char* GONE = "OBJECT_NOT_EXIST";

std::string textOf(CORBA::Object_ptr object) {
  int count = 0;
  const CORBA::ORB_var orb = CORBA::ORB_init(count, nullptr);
  return CORBA::String_var(orb->object_to_string(object)).in();
}

std::string keyOf(CORBA::Object_ptr object) { return keyIn(textOf(object)); }

std::string bigEndian(std::uint32_t number) {
  std::string bytes;
  for (int shift = 24; shift >= 0; shift -= 8) {
    bytes += static_cast<char>(number >> unsigned(shift));
  }
  return bytes;
}

bool holds(const std::string& key, std::uint32_t number) {
  std::string bytes = bigEndian(number);
  const bool big = key.find(bytes) != std::string::npos;
  std::reverse(bytes.begin(), bytes.end());
  return big || key.find(bytes) != std::string::npos;
}

std::size_t countOf(const std::string& what, const std::string& text) {
  std::size_t count = 0;
  for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) {
    ++count;
  }
  return count;
}

class Strangers : public testing::Test {
 protected:
  void start(const RunningAgent::Arguments& more = {}) {
    process = agent.start(more);
    ASSERT_TRUE(agent.awaitServing(*process)) << process->output();
  }

  // A users file with one user, "operator".
  std::string usersFile() {
    std::string users = agent.folder.file("users");
    const auto passwd = agent.run({"passwd", "--users", users, "operator"}, "s3cret-w0rd\n");
    EXPECT_EQ(passwd->waitForEnd().value_or(-1), 0) << passwd->output();
    return users;
  }

  // The keys of all kinds of objects that a session has.
  std::vector<std::string> keysOf(emsSession::EmsSession_I_ptr session) {
    const auto manager = managerOf<ManagedElementMgr_I>(session, "ManagedElement");
    globaldefs::NamingAttributesList_T_var names;
    globaldefs::NamingAttributesIterator_I_var iterator;
    manager->getAllManagedElementNames(1, names.out(), iterator.out());
    CosNotifyChannelAdmin::EventChannel_var channel;
    session->getEventChannel(channel.out());
    const CosNotifyFilter::FilterFactory_var filters = channel->default_filter_factory();
    const CosNotifyFilter::Filter_var filter = filters->create_filter("EXTENDED_TCL");
    const CosNotifyChannelAdmin::ConsumerAdmin_var admin = channel->default_consumer_admin();
    CosNotifyChannelAdmin::ProxyID id = 0;
    const CosNotifyChannelAdmin::ProxySupplier_var proxy =
        admin->obtain_notification_pull_supplier(CosNotifyChannelAdmin::SEQUENCE_EVENT, id);
    return {keyOf(session),      keyOf(manager.in()), keyOf(iterator.in()), keyOf(channel.in()),
            keyOf(filters.in()), keyOf(filter.in()),  keyOf(admin.in()),    keyOf(proxy.in())};
  }

  RunningAgent agent;
  std::unique_ptr<zk::test::Process> process;
  ReachableNms nms;
};

TEST_F(Strangers, findNoObjectBesideTheOneTheyKnow) {
  start();
  const auto first = nms.logIn(agent);
  const auto second = nms.logIn(agent);
  std::vector<std::string> known = keysOf(first.in());
  for (const std::string& key : keysOf(second.in())) {
    known.push_back(key);
  }
  GiopCaller client(agent.port);
  for (const std::string& key : known) {
    ASSERT_EQ(client.call(key, "_non_existent").text(), "done");
  }
  const std::string key = known.front();
  const std::size_t id = key.size() - 16;
  const auto expectGone = [&](const std::string& tried) {
    EXPECT_EQ(client.call(tried, "_non_existent").text(), GONE);
  };
  for (std::size_t bit = 0; bit < 128; ++bit) {
    std::string tried = key;
    tried[id + bit / 8] = static_cast<char>(tried[id + bit / 8] ^ (1 << bit % 8));
    expectGone(tried);
  }
  for (int step = 1; step <= 100; ++step) {
    for (const std::size_t at : {key.size() - 1, key.size() - 4, id}) {
      std::string tried = key;
      tried[at] = static_cast<char>(tried[at] + step);
      expectGone(tried);
    }
  }
  for (std::size_t at = id; at + 1 < key.size(); ++at) {
    std::string tried = key;
    std::swap(tried[at], tried[at + 1]);
    if (tried != key) {
      expectGone(tried);
    }
  }
  expectGone(key.substr(0, key.size() - 1));
  expectGone(key + '\0');
  EXPECT_EQ(client.call(key, "ping").text(), "done");
}

TEST_F(Strangers, learnNothingFromAKey) {
  const auto before = static_cast<std::uint32_t>(std::time(nullptr));
  start();
  const auto session = nms.logIn(agent);
  const auto after = static_cast<std::uint32_t>(std::time(nullptr));
  const auto pid = static_cast<std::uint32_t>(std::stoul(process->id()));
  for (const std::string& key : keysOf(session.in())) {
    EXPECT_FALSE(holds(key, pid));
    for (std::uint32_t second = before; second <= after; ++second) {
      EXPECT_FALSE(holds(key, second));
    }
  }
}

TEST_F(Strangers, callNoObjectOfAnotherHostsSession) {
  start();
  const auto session = nms.logIn(agent);
  GiopCaller owner(agent.port);
  GiopCaller stranger(agent.port, ELSEWHERE);
  EXPECT_EQ(stranger.call("EmsSessionFactory", "getVersion").text(), "done");
  for (const std::string& key : keysOf(session.in())) {
    EXPECT_EQ(stranger.call(key, "_non_existent").text(), GONE);
    EXPECT_EQ(owner.call(key, "_non_existent").text(), "done");
  }
  EXPECT_EQ(stranger.call(keyOf(session.in()), "endSession").text(), GONE);
  EXPECT_EQ(stranger.call(keyOf(session.in()), "getManager", std::string(10000, 'x')).text(), GONE);
  EXPECT_EQ(stranger.call("EmsSessionFactory", "getVersion").text(), "done");
  EXPECT_NO_THROW(session->ping());

  const zk::test::GiopAnswer reply = stranger.logIn("", "", textOf(nms.reference.in()));
  ASSERT_EQ(reply.text(), "done");
  const std::string own = keyInBody(reply.body);
  EXPECT_EQ(stranger.call(own, "ping").text(), "done");
  EXPECT_EQ(owner.call(own, "ping").text(), GONE);
}

TEST_F(Strangers, leaveSessionsToOtherHosts) {
  start({"--max-sessions", "4", "--peer-sessions", "3"});
  GiopCaller stranger(agent.port, ELSEWHERE);
  const std::string ior = textOf(nms.reference.in());
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(stranger.logIn("", "", ior).text(), "done");
  }
  EXPECT_EQ(stranger.logIn("", "", ior).text(), "ProcessingFailureException");
  EXPECT_EQ(refusalBy([&] { nms.logIn(agent); }), "");
}

TEST_F(Strangers, leaveSessionsToOtherUsers) {
  const std::string users = usersFile();
  const auto passwd = agent.run({"passwd", "--users", users, "viewer"}, "other-w0rd\n");
  ASSERT_EQ(passwd->waitForEnd().value_or(-1), 0) << passwd->output();
  start({"--users", users, "--max-sessions", "3", "--user-sessions", "2"});
  const auto first = nms.logIn(agent, "viewer", "other-w0rd");
  const auto second = nms.logIn(agent, "viewer", "other-w0rd");
  EXPECT_EQ(refusalBy([&] { nms.logIn(agent, "viewer", "other-w0rd"); }),
            "CAPACITY_EXCEEDED: the agent serves this user 2 sessions already, the most it may");
  EXPECT_EQ(refusalBy([&] { nms.logIn(agent, "operator", "s3cret-w0rd"); }), "");
}

// Without users names prove nothing: all have the same.
TEST_F(Strangers, countAsOneUserOnlyWhereThereAreUsers) {
  start({"--user-sessions", "1"});
  nms.logIn(agent);
  EXPECT_EQ(refusalBy([&] { nms.logIn(agent); }), "");
}

TEST_F(Strangers, guessOncePerPauseHoweverManyTheyAre) {
  start({"--users", usersFile()});
  const std::string ior = textOf(nms.reference.in());
  std::atomic<int> refused{0};
  std::vector<std::thread> guessers;
  guessers.reserve(16);
  const auto begin = std::chrono::steady_clock::now();
  for (int i = 0; i < 16; ++i) {
    guessers.emplace_back([&, i] {
      GiopCaller client(agent.port, ELSEWHERE);
      for (int guess = 0; guess < 20; ++guess) {
        const std::string password = "guess" + std::to_string(i * 100 + guess);
        refused += client.logIn("operator", password, ior).text() == "ProcessingFailureException";
      }
    });
  }
  EXPECT_NO_THROW(nms.logIn(agent, "operator", "s3cret-w0rd")->ping());
  for (std::thread& guesser : guessers) {
    guesser.join();
  }
  const auto took = std::chrono::steady_clock::now() - begin;
  EXPECT_EQ(refused, 320);
  const auto seconds =
      static_cast<std::size_t>(std::chrono::duration_cast<std::chrono::seconds>(took).count());
  EXPECT_LE(countOf("login of 'operator' refused", process->output()), 2 + seconds);
}

TEST_F(Strangers, logInWithNoWordsThatAreTooLong) {
  start({"--users", usersFile()});
  const std::string longest(256, 'x');
  const std::string refusal = "INVALID_INPUT: a user name or a password has more than 256 bytes";
  EXPECT_EQ(refusalBy([&] { nms.logIn(agent, (longest + "x").c_str(), "x"); }), refusal);
  EXPECT_EQ(refusalBy([&] { nms.logIn(agent, "x", (longest + "x").c_str()); }), refusal);
  EXPECT_EQ(refusalBy([&] { nms.logIn(agent, longest.c_str(), longest.c_str()); }),
            "ACCESS_DENIED: wrong user or password");
  EXPECT_EQ(refusalBy([&] { nms.logIn(agent, "a\nb\x1b[2J", "x"); }),
            "ACCESS_DENIED: wrong user or password");
  EXPECT_NE(process->output().find("login of 'a?b?[2J' refused"), std::string::npos);
  EXPECT_NE(process->output().find(std::string(200, 'x') + "...' refused"), std::string::npos);
}

TEST_F(Strangers, areKeptOutByTheAddressWhereThereAreNoUsers) {
  start();
  EXPECT_NE(process->output().find("there are no --users: whoever reaches 127.0.0.1:"),
            std::string::npos);
  process->signal(SIGTERM);
  EXPECT_EQ(process->waitForEnd().value_or(-1), 0);
  // Of the loopback network all the same, but not written as such.
  const std::string address = "127.1:" + std::to_string(agent.port);
  const RunningAgent::Arguments elsewhere = {"--listen",        address,      "--inventory",
                                             agent.inventory(), "--ior-file", agent.iorFile()};
  process = agent.run(elsewhere);
  EXPECT_EQ(process->waitForEnd().value_or(-1), 3);
  EXPECT_EQ(process->output(), "zk-agent: whoever reaches " + address +
                                   " could log in: give --users, or --allow-anyone if that is "
                                   "wanted\n");
  RunningAgent::Arguments users = elsewhere;
  users.insert(users.end(), {"--users", usersFile()});
  process = agent.run(users);
  ASSERT_TRUE(agent.awaitServing(*process)) << process->output();
  EXPECT_EQ(process->output().find("there are no --users"), std::string::npos);
}

TEST_F(Strangers, reachNoAdministration) {
  const std::string address = "127.1:" + std::to_string(agent.port);
  process = agent.run({"--listen", address, "--inventory", agent.inventory(), "--ior-file",
                       agent.iorFile(), "--admin", "--allow-anyone"});
  ASSERT_TRUE(agent.awaitServing(*process)) << process->output();
  EXPECT_NE(process->output().find("administration of the EMS is not served: " + address +
                                   " is not a loopback address"),
            std::string::npos);
  const auto asked = agent.run({"admin", "--agent", address, "sessions"});
  EXPECT_EQ(asked->waitForEnd().value_or(-1), 7) << asked->output();
  EXPECT_EQ(GiopCaller(agent.port).call("EmsAdmin", "getLogins").text(), GONE);
}

}  // namespace
