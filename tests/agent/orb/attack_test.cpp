// Strangers at the real agent's port, who keep to no protocol.
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "tests/agent/support/rawclient.h"
#include "tests/agent/support/runningagent.h"

namespace {

using zk::test::becomesTrue;
using zk::test::cancel;
using zk::test::CdrText;
using zk::test::giop;
using zk::test::keyOf;
using zk::test::locate;
using zk::test::RawClient;
using zk::test::RawReply;
using zk::test::ReachableNms;
using zk::test::request;
using zk::test::requestBody;
using zk::test::RunningAgent;

constexpr const char* FACTORY = "EmsSessionFactory";
constexpr std::chrono::seconds STOP_TIME{5};

class Attack : public testing::Test {
 protected:
  void SetUp() override { begin({}); }

  void begin(const RunningAgent::Arguments& arguments) {
    process = agent.start(arguments);
    ASSERT_TRUE(agent.awaitServing(*process)) << process->output();
  }

  // Somebody else is served as if nothing was.
  void expectServing() {
    RawClient other(agent.port);
    const auto reply = other.send(request(1, FACTORY, "getVersion")).reply();
    ASSERT_TRUE(reply.has_value()) << process->output();
    EXPECT_EQ(reply->status, 0U) << reply->exception;
  }

  void expectStop() {
    const auto begin = std::chrono::steady_clock::now();
    process->signal(SIGTERM);
    EXPECT_EQ(process->waitForEnd().value_or(-1), 0) << process->output();
    EXPECT_LT(std::chrono::steady_clock::now() - begin, STOP_TIME) << process->output();
  }

  std::size_t threads() const {
    std::size_t count = 0;
    for ([[maybe_unused]] const auto& task :
         std::filesystem::directory_iterator("/proc/" + process->id() + "/task")) {
      ++count;
    }
    return count;
  }

  // Ticks of a core that the agent has used.
  long ticks() const {
    std::ifstream file("/proc/" + process->id() + "/stat");
    std::string text((std::istreambuf_iterator<char>(file)), {});
    std::istringstream rest(text.substr(text.rfind(')') + 2));
    std::vector<std::string> fields(13);
    for (std::string& field : fields) {
      rest >> field;
    }
    return std::stol(fields[11]) + std::stol(fields[12]);
  }

  // A second passes with next to no work done.
  void expectIdle() const {
    const long begin = ticks();
    poll(nullptr, 0, 1000);
    EXPECT_LT(ticks() - begin, 30) << "of 100";
  }

  RunningAgent agent;
  std::unique_ptr<zk::test::Process> process;
};

TEST_F(Attack, keysThatNobodyHasGetOneAnswer) {
  std::vector<std::string> keys = {"", "INIT", "x", std::string(255, 'k'), "\xff"};
  for (std::size_t size = 1; size <= 12; ++size) {
    keys.emplace_back(size, '\0');
    keys.push_back('\0' + std::string(size - 1, 'a'));
  }
  RawClient client(agent.port);
  for (const std::string& key : keys) {
    const auto reply = client.send(request(5, key, "getVersion")).reply();
    ASSERT_TRUE(reply.has_value()) << testing::PrintToString(key);
    EXPECT_EQ(reply->id, 5U);
    EXPECT_EQ(reply->exception, "IDL:omg.org/CORBA/OBJECT_NOT_EXIST:1.0")
        << testing::PrintToString(key);
    if (!key.empty()) {
      const auto located = client.send(locate(6, key)).reply();
      ASSERT_TRUE(located.has_value()) << testing::PrintToString(key);
      EXPECT_EQ(located->status, 0U) << testing::PrintToString(key);
    }
  }
  // The answer to the next request comes next: nothing was answered twice.
  EXPECT_EQ(client.send(request(7, FACTORY, "getVersion")).reply().value_or(RawReply{}).id, 7U);
  expectStop();
  EXPECT_LT(process->output().size(), 4000U) << process->output();
}

TEST_F(Attack, brokenMessagesEndTheirConnection) {
  CdrText byProfile;
  byProfile.number(1).octet(3).octet(0).octet(0).octet(0).octet(1).number(0).bytes("profile");
  const std::string messages[] = {
      "GET / HTTP/1.1\r\n\r\n",
      std::string("GIOP\1\2\1\0\xff\xff\xff\xff", 12),
      giop(zk::test::REPLY, requestBody(1, FACTORY, "getVersion")),
      giop(zk::test::REQUEST, ""),
      giop(zk::test::REQUEST, byProfile.text()),
      giop(zk::test::LOCATE, byProfile.text()),
      giop(zk::test::LOCATE, CdrText().number(1).octet(0).bytes("").text()),
      request(1, std::string(300, 'k'), "getVersion"),
      request(1, FACTORY, std::string(200, 'o')),
      giop(zk::test::REQUEST, std::string(70000, 'a')),
  };
  for (const std::string& message : messages) {
    RawClient client(agent.port);
    EXPECT_TRUE(client.send(message).isHungUp()) << testing::PrintToString(message.substr(0, 60));
    expectServing();
  }
  expectStop();
}

TEST_F(Attack, cancelledRequestsLeaveNothingBehind) {
  const std::size_t before = threads();
  for (int i = 0; i < 50; ++i) {
    RawClient client(agent.port);
    client.send(request(1, FACTORY, "getVersion") + cancel(1) + request(2, FACTORY, "getVersion"));
    // In any order: each request has a thread.
    const auto first = client.reply();
    const auto second = client.reply();
    ASSERT_TRUE(first && second) << process->output();
    EXPECT_EQ(first->id + second->id, 3U);
    client.send(cancel(2) + cancel(3)).send(request(3, FACTORY, "getVersion"));
    EXPECT_EQ(client.reply().value_or(RawReply{}).id, 3U);
    client.send(request(4, FACTORY, "getVersion")).send(cancel(4));
  }
  // The ORB keeps some idle threads for a while, but not fifty, and none is busy.
  EXPECT_TRUE(becomesTrue([&] { return threads() <= before + 10; })) << threads() << " " << before;
  expectIdle();
  expectServing();
  expectStop();
}

TEST_F(Attack, fragmentsAreOneRequest) {
  RawClient client(agent.port);
  const std::string body = requestBody(9, FACTORY, "getVersion");
  client.send(giop(zk::test::REQUEST, body.substr(0, 20), 3))
      .send(giop(zk::test::FRAGMENT, CdrText().number(9).text() + body.substr(20)));
  const auto reply = client.reply();
  ASSERT_TRUE(reply.has_value());
  EXPECT_EQ(reply->id, 9U);
  EXPECT_EQ(reply->status, 0U) << reply->exception;
}

TEST_F(Attack, furtherParametersAreLeftOut) {
  RawClient client(agent.port);
  const auto reply = client.send(request(1, FACTORY, "getVersion", std::string(64, 'x'))).reply();
  ASSERT_TRUE(reply.has_value());
  EXPECT_EQ(reply->status, 0U) << reply->exception;
  expectServing();
}

TEST_F(Attack, theStopWaitsForNobody) {
  RawClient half(agent.port);
  half.send(request(1, FACTORY, "getVersion").substr(0, 30));
  RawClient header(agent.port);
  header.send("GIO");
  RawClient fragment(agent.port);
  fragment.send(giop(zk::test::REQUEST, requestBody(1, FACTORY, "getVersion").substr(0, 20), 3));
  RawClient silent(agent.port);
  // Answers that it does not read fill its connection, until its requests do too.
  RawClient deaf(agent.port);
  const std::string question = request(1, FACTORY, "getVersion");
  while (deaf.sendIfTaken(question, 500)) {
  }
  expectServing();
  expectStop();
}

TEST_F(Attack, anUnfinishedRequestIsNotWaitedForLong) {
  RawClient half(agent.port);
  half.send(request(1, FACTORY, "getVersion").substr(0, 30));
  RawClient fragment(agent.port);
  fragment.send(giop(zk::test::REQUEST, requestBody(1, FACTORY, "getVersion").substr(0, 20), 3));
  EXPECT_TRUE(half.isHungUp());
  EXPECT_TRUE(fragment.isHungUp());
  expectServing();
}

// The key of a structured pull proxy of a new session.
std::string pullProxyOf(ReachableNms& nms, const RunningAgent& agent) {
  const auto session = nms.logIn(agent);
  CosNotifyChannelAdmin::EventChannel_var channel;
  session->getEventChannel(channel.out());
  const CosNotifyChannelAdmin::ConsumerAdmin_var admin = channel->default_consumer_admin();
  CosNotifyChannelAdmin::ProxyID id = 0;
  const CosNotifyChannelAdmin::ProxySupplier_var proxy =
      admin->obtain_notification_pull_supplier(CosNotifyChannelAdmin::STRUCTURED_EVENT, id);
  const auto supplier = CosNotifyChannelAdmin::StructuredProxyPullSupplier::_narrow(proxy.in());
  const CosNotifyChannelAdmin::StructuredProxyPullSupplier_var owner = supplier;
  supplier->connect_structured_pull_consumer(CosNotifyComm::StructuredPullConsumer::_nil());
  int count = 0;
  const CORBA::ORB_var orb = CORBA::ORB_init(count, nullptr);
  return keyOf(CORBA::String_var(orb->object_to_string(proxy.in())).in());
}

TEST_F(Attack, aWaitingPullHoldsUpNothingElse) {
  ReachableNms nms;
  const std::string key = pullProxyOf(nms, agent);
  RawClient client(agent.port);
  client.send(request(1, key, "pull_structured_event"));
  for (std::uint32_t id = 2; id < 20; ++id) {
    const auto reply = client.send(request(id, FACTORY, "getVersion")).reply();
    ASSERT_TRUE(reply.has_value());
    EXPECT_EQ(reply->id, id);
  }
  client.send(cancel(1));
  EXPECT_EQ(client.send(request(30, FACTORY, "getVersion")).reply().value_or(RawReply{}).id, 30U);
  expectStop();
}

// What another ORB sends that has UTF-8 for its own: the code sets, first.
std::string inUtf8(std::uint32_t id, const std::string& key, const std::string& operation,
                   const std::string& parameters) {
  const std::string codeSets = CdrText().octet(1).number(0x05010001).number(0x00010109).text();
  CdrText body;
  body.number(id).octet(3).octet(0).octet(0).octet(0);
  body.octet(0).bytes(key).string(operation).number(1).number(1).bytes(codeSets);
  const std::size_t inMessage = 12 + body.text().size();
  return giop(zk::test::REQUEST,
              body.text() + std::string((8 - inMessage % 8) % 8, '\0') + parameters);
}

std::string managerKey(ReachableNms& nms, const RunningAgent& agent, const char* manager) {
  const auto session = nms.logIn(agent);
  common::Common_I_var common;
  session->getManager(manager, common.out());
  int count = 0;
  const CORBA::ORB_var orb = CORBA::ORB_init(count, nullptr);
  return keyOf(CORBA::String_var(orb->object_to_string(common.in())).in());
}

CdrText nameOf(const char* element) {
  CdrText name;
  return name.number(2).string("EMS").string("Quor/1").string("ManagedElement").string(element);
}

TEST_F(Attack, otherOrbsSpeakUtf8) {
  ReachableNms nms;
  const std::string key = managerKey(nms, agent, "ManagedElement");
  const std::string label = "\xc5\x81\xc3\xb3\x64\xc5\xba";
  RawClient client(agent.port);
  const auto set =
      client.send(inUtf8(1, key, "setUserLabel", nameOf("1").string(label).octet(0).text()))
          .reply();
  ASSERT_TRUE(set.has_value());
  ASSERT_EQ(set->status, 0U) << set->exception;
  const auto got = client.send(inUtf8(2, key, "getManagedElement", nameOf("1").text())).receive();
  ASSERT_TRUE(got.has_value());
  EXPECT_NE(got->find(CdrText().string(label).text()), std::string::npos)
      << testing::PrintToString(*got);
  const auto broken =
      client.send(inUtf8(3, key, "setUserLabel", nameOf("1").string("\xc5\x41").octet(0).text()))
          .reply();
  ASSERT_TRUE(broken.has_value());
  EXPECT_EQ(broken->exception, "IDL:mtnm.tmforum.org/globaldefs/ProcessingFailureException:1.0");
}

TEST_F(Attack, whatIsNotServedIsNotImplemented) {
  ReachableNms nms;
  const std::string key = managerKey(nms, agent, "MultiLayerSubnetwork");
  RawClient client(agent.port);
  for (const char* operation : {"createSNC", "getAllEdgePoints", "getRoute"}) {
    const auto message = client.send(request(1, key, operation, "anything")).receive();
    ASSERT_TRUE(message.has_value());
    const RawReply reply = zk::test::readReply(*message);
    EXPECT_EQ(reply.status, 1U);
    EXPECT_EQ(reply.exception, "IDL:mtnm.tmforum.org/globaldefs/ProcessingFailureException:1.0");
    EXPECT_EQ(message->substr(message->size() - 9), CdrText().number(0).string("").text())
        << testing::PrintToString(*message);
  }
  EXPECT_EQ(client.send(request(2, key, "noSuchThing")).reply().value_or(RawReply{}).exception,
            "IDL:omg.org/CORBA/BAD_OPERATION:1.0");
}

class CrowdedAttack : public Attack {
 protected:
  void SetUp() override {
    rlimit narrow{1024, 1024};
    getrlimit(RLIMIT_NOFILE, &wide);
    narrow.rlim_max = wide.rlim_max;
    setrlimit(RLIMIT_NOFILE, &narrow);
    begin({});
    setrlimit(RLIMIT_NOFILE, &wide);
  }
  rlimit wide{};
};

TEST_F(CrowdedAttack, idleConnectionsKeepNobodyOut) {
  if (wide.rlim_cur < 3000) {
    GTEST_SKIP() << "the test itself needs 3000 descriptors";
  }
  ReachableNms nms;
  const auto session = nms.logIn(agent);
  std::vector<std::unique_ptr<RawClient>> idle;
  for (int i = 0; i < 2000; ++i) {
    idle.push_back(std::make_unique<RawClient>(agent.port));
    ASSERT_TRUE(idle.back()->isConnected()) << i;
    if (i % 100 == 0) {
      expectServing();
    }
  }
  const session::Session_I_var other = session->associatedSession();
  other->ping();
  expectServing();
  expectIdle();
  expectStop();
}

}  // namespace
