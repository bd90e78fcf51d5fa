// zk-agent itself, over real IIOP.
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <csignal>
#include <set>
#include <string>

#include "tests/agent/support/names.h"
#include "tests/agent/support/refusals.h"
#include "tests/agent/support/runningagent.h"

namespace {

using managedElementManager::ManagedElementMgr_I;
using zk::test::becomesTrue;
using zk::test::dump;
using zk::test::managerOf;
using zk::test::named;
using zk::test::ReachableNms;
using zk::test::refusalBy;
using zk::test::RunningAgent;

class AgentProcess : public testing::Test {
 protected:
  // The agent ends by itself with this status and says why on its last line.
  void expectRefusal(zk::test::Process& process, int status, const std::string& reason) {
    EXPECT_EQ(process.waitForEnd().value_or(-1), status) << process.output();
    const std::string line = "zk-agent: " + reason + "\n";
    const std::string output = process.output();
    ASSERT_GE(output.size(), line.size()) << output;
    EXPECT_EQ(output.substr(output.size() - line.size()), line);
  }

  RunningAgent agent;
};

TEST_F(AgentProcess, servesAnNmsAndStopsCleanly) {
  const auto process = agent.start();
  ASSERT_TRUE(agent.awaitServing(*process)) << process->output();
  ReachableNms nms;
  const CORBA::String_var version = agent.factory()->getVersion();
  EXPECT_STREQ(version.in(), "3.0");
  const auto session = nms.logIn(agent);
  const session::Session_I_var other = session->associatedSession();
  other->ping();
  EXPECT_EQ(nms.servant->pings.load(), 1);

  emsMgr::EMS_T_var ems;
  managerOf<emsMgr::EMSMgr_I>(session.in(), "EMS")->getEMS(ems.out());
  EXPECT_EQ(dump(ems->name), "EMS=Quor/1");

  const auto elements = managerOf<ManagedElementMgr_I>(session.in(), "ManagedElement");
  managedElement::ManagedElementList_T_var list;
  managedElement::ManagedElementIterator_I_var iterator;
  elements->getAllManagedElements(30, list.out(), iterator.out());
  std::set<std::string> seen;
  bool more = true;
  for (;;) {
    for (CORBA::ULong i = 0; i < list->length(); ++i) {
      EXPECT_TRUE(seen.insert(dump(list[i].name)).second);
    }
    if (!more) {
      break;
    }
    more = iterator->next_n(30, list.out());
  }
  EXPECT_EQ(seen.size(), 200U);
  iterator->destroy();

  process->signal(SIGTERM);
  EXPECT_EQ(process->waitForEnd().value_or(-1), 0) << process->output();
  EXPECT_FALSE(agent.isServing());
  EXPECT_TRUE(becomesTrue([&] { return nms.servant->ends.load() == 1; }));
  EXPECT_THROW(session->ping(), CORBA::SystemException);
}

TEST_F(AgentProcess, writesItsReferenceAsOneLine) {
  const auto process = agent.start({"--interface-version", "2.1"});
  ASSERT_TRUE(agent.awaitServing(*process)) << process->output();
  const std::string text = zk::test::bytesOf(agent.iorFile());
  ASSERT_EQ(text.rfind("IOR:", 0), 0U);
  ASSERT_EQ(text.find('\n'), text.size() - 1);
  const auto factory = RunningAgent::resolve(text.substr(0, text.size() - 1));
  const CORBA::String_var version = factory->getVersion();
  EXPECT_STREQ(version.in(), "2.1");
  process->signal(SIGINT);
  EXPECT_EQ(process->waitForEnd().value_or(-1), 0);
  EXPECT_FALSE(agent.isServing());
}

TEST_F(AgentProcess, keepsChangesOverARestart) {
  auto process = agent.start();
  ASSERT_TRUE(agent.awaitServing(*process)) << process->output();
  ReachableNms nms;
  {
    const auto session = nms.logIn(agent);
    managerOf<ManagedElementMgr_I>(session.in(), "ManagedElement")
        ->setUserLabel(named("ManagedElement", "1"), "kept", false);
  }
  process->signal(SIGTERM);
  ASSERT_EQ(process->waitForEnd().value_or(-1), 0);
  process = agent.start();
  ASSERT_TRUE(agent.awaitServing(*process)) << process->output();
  const auto session = nms.logIn(agent);
  managedElement::ManagedElement_T_var me;
  managerOf<ManagedElementMgr_I>(session.in(), "ManagedElement")
      ->getManagedElement(named("ManagedElement", "1"), me.out());
  EXPECT_STREQ(me->userLabel, "kept");
}

TEST_F(AgentProcess, startsAgainAfterItWasKilled) {
  auto process = agent.start();
  ASSERT_TRUE(agent.awaitServing(*process)) << process->output();
  process->signal(SIGKILL);
  ASSERT_EQ(process->waitForEnd().value_or(-1), 128 + SIGKILL);
  ASSERT_EQ(std::remove(agent.iorFile().c_str()), 0);
  process = agent.start();
  EXPECT_TRUE(agent.awaitServing(*process)) << process->output();
}

TEST_F(AgentProcess, stopsAlthoughAnNmsIsDead) {
  const auto process = agent.start();
  ASSERT_TRUE(agent.awaitServing(*process)) << process->output();
  int count = 0;
  const CORBA::ORB_var orb = CORBA::ORB_init(count, nullptr);
  const std::string nobody = "corbaloc:iiop:127.0.0.1:" + std::to_string(zk::test::freePort());
  const CORBA::Object_var object = orb->string_to_object((nobody + "/nms").c_str());
  const auto client = nmsSession::NmsSession_I::_unchecked_narrow(object.in());
  const nmsSession::NmsSession_I_var owner = client;
  emsSession::EmsSession_I_var session;
  agent.factory()->getEmsSession("", "", client, session.out());
  process->signal(SIGTERM);
  EXPECT_EQ(process->waitForEnd().value_or(-1), 0) << process->output();
  EXPECT_NE(process->output().find("an NMS was not told that its session ended"),
            std::string::npos);
}

// A listener whose queue is full: further connections hang.
class Clogged {
 public:
  Clogged() {
    address_.sin_family = AF_INET;
    address_.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address_;
    EXPECT_EQ(bind(listener_, reinterpret_cast<sockaddr*>(&address_), length), 0);
    listen(listener_, 0);
    getsockname(listener_, reinterpret_cast<sockaddr*>(&address_), &length);
    for (int& filler : fillers_) {
      filler = socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
      // The last of them cannot get through: that is the point.
      static_cast<void>(connect(filler, reinterpret_cast<sockaddr*>(&address_), sizeof address_));
    }
  }
  ~Clogged() {
    for (const int filler : fillers_) {
      close(filler);
    }
    close(listener_);
  }
  Clogged(const Clogged&) = delete;
  Clogged& operator=(const Clogged&) = delete;

  unsigned short port() const { return ntohs(address_.sin_port); }

 private:
  const int listener_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address_{};
  int fillers_[4] = {};
};

TEST_F(AgentProcess, stopsAlthoughAnNmsHangs) {
  const auto process = agent.start();
  ASSERT_TRUE(agent.awaitServing(*process)) << process->output();
  const Clogged hanging;
  int count = 0;
  const CORBA::ORB_var orb = CORBA::ORB_init(count, nullptr);
  const std::string where = "corbaloc:iiop:127.0.0.1:" + std::to_string(hanging.port()) + "/nms";
  const CORBA::Object_var object = orb->string_to_object(where.c_str());
  const nmsSession::NmsSession_I_var client =
      nmsSession::NmsSession_I::_unchecked_narrow(object.in());
  for (int i = 0; i < 5; ++i) {
    emsSession::EmsSession_I_var session;
    agent.factory()->getEmsSession("", "", client.in(), session.out());
  }
  process->signal(SIGTERM);
  EXPECT_EQ(process->waitForEnd().value_or(-1), 0) << process->output();
  EXPECT_NE(process->output().find("an NMS was not told that its session ended"),
            std::string::npos);
}

TEST_F(AgentProcess, leavesAPortInUseToItsOwner) {
  const auto first = agent.start();
  ASSERT_TRUE(agent.awaitServing(*first)) << first->output();
  const std::string other = agent.folder.file("other.db");
  const std::string address = "127.0.0.1:" + std::to_string(agent.port);
  const auto second = agent.run(
      {"--listen", address, "--inventory", other, "--ior-file", agent.folder.file("other.ior")});
  expectRefusal(*second, 1,
                "cannot listen on " + address + ": address in use (is another agent running?)");
  EXPECT_FALSE(std::filesystem::exists(other)) << "an inventory was made all the same";
  EXPECT_FALSE(std::filesystem::exists(agent.folder.file("other.ior")));
  const CORBA::String_var version = agent.factory()->getVersion();
  EXPECT_STREQ(version.in(), "3.0");
}

TEST_F(AgentProcess, saysWhenTheAddressIsNotOurs) {
  const auto process =
      agent.run({"--listen", "192.0.2.1:5814", "--inventory", agent.inventory(), "--allow-anyone"});
  expectRefusal(*process, 1, "cannot listen on 192.0.2.1:5814: Cannot assign requested address");
}

TEST_F(AgentProcess, leavesAnInventoryInUseToItsOwner) {
  const auto first = agent.start();
  ASSERT_TRUE(agent.awaitServing(*first)) << first->output();
  const auto second = agent.run({"--listen", "127.0.0.1:" + std::to_string(zk::test::freePort()),
                                 "--inventory", agent.inventory()});
  expectRefusal(*second, 2, "inventory " + agent.inventory() + " is in use by another agent");
  const CORBA::String_var version = agent.factory()->getVersion();
  EXPECT_STREQ(version.in(), "3.0");
}

TEST_F(AgentProcess, refusesACorruptInventoryAndLeavesItAlone) {
  const std::string nonsense(10000, 'x');
  zk::test::writeBytes(agent.inventory(), nonsense);
  const auto process = agent.start();
  EXPECT_EQ(process->waitForEnd().value_or(-1), 2) << process->output();
  EXPECT_NE(process->output().find("zk-agent: inventory " + agent.inventory()), std::string::npos)
      << process->output();
  EXPECT_EQ(zk::test::bytesOf(agent.inventory()), nonsense);
  EXPECT_FALSE(agent.isServing());
}

TEST_F(AgentProcess, saysWhenTheReferenceCannotBeWritten) {
  const std::string nowhere = agent.folder.file("missing") + "/agent.ior";
  const auto process = agent.run({"--listen", "127.0.0.1:" + std::to_string(agent.port),
                                  "--inventory", agent.inventory(), "--ior-file", nowhere});
  expectRefusal(*process, 5, "cannot write " + nowhere + ": No such file or directory");
}

TEST_F(AgentProcess, refusesABadUsersFile) {
  const std::string users = agent.folder.file("users");
  const auto missing = agent.start({"--users", users});
  expectRefusal(*missing, 4, "cannot read users file " + users + ": No such file or directory");
  zk::test::writeBytes(users, "operator:secret\n");
  const auto plain = agent.start({"--users", users});
  expectRefusal(*plain, 4, users + ":1: not a password hash made by 'zk-agent passwd'");
}

TEST_F(AgentProcess, letsInTheUsersOfItsFile) {
  const std::string users = agent.folder.file("users");
  const auto passwd = agent.run({"passwd", "--users", users, "operator"}, "s3cret-w0rd\n");
  ASSERT_EQ(passwd->waitForEnd().value_or(-1), 0) << passwd->output();
  const auto process = agent.start({"--users", users, "--log-level", "trace"});
  ASSERT_TRUE(agent.awaitServing(*process)) << process->output();
  ReachableNms nms;
  const std::string refused = "ACCESS_DENIED: wrong user or password";
  EXPECT_EQ(refusalBy([&] { nms.logIn(agent, "operator", "wr0ng-w0rd"); }), refused);
  EXPECT_EQ(refusalBy([&] { nms.logIn(agent, "operator", "s3cret-w0rd"); }), refused)
      << "so soon after a wrong one";
  EXPECT_EQ(refusalBy([&] { nms.logIn(agent, "nobody", "s3cret-w0rd"); }), refused);
  EXPECT_EQ(refusalBy([&] { nms.logIn(agent, "", ""); }), refused);
  EXPECT_TRUE(becomesTrue(
      [&] { return refusalBy([&] { nms.logIn(agent, "operator", "s3cret-w0rd"); }).empty(); }));
  process->signal(SIGTERM);
  EXPECT_EQ(process->waitForEnd().value_or(-1), 0);
  const std::string log = process->output();
  EXPECT_NE(log.find("login of 'operator' refused"), std::string::npos) << log;
  EXPECT_EQ(log.find("s3cret-w0rd"), std::string::npos);
  EXPECT_EQ(log.find("wr0ng-w0rd"), std::string::npos);
}

TEST_F(AgentProcess, refusesSessionsBeyondItsLimit) {
  const auto process = agent.start({"--max-sessions", "1"});
  ASSERT_TRUE(agent.awaitServing(*process)) << process->output();
  ReachableNms nms;
  const auto session = nms.logIn(agent);
  EXPECT_EQ(refusalBy([&] { nms.logIn(agent); }),
            "CAPACITY_EXCEEDED: the agent serves 1 sessions already, the most it may");
  session->endSession();
  EXPECT_TRUE(becomesTrue([&] { return refusalBy([&] { nms.logIn(agent); }).empty(); }));
}

TEST_F(AgentProcess, destroysIteratorsThatNobodyUses) {
  const auto process = agent.start({"--iterator-idle", "1"});
  ASSERT_TRUE(agent.awaitServing(*process)) << process->output();
  ReachableNms nms;
  const auto session = nms.logIn(agent);
  globaldefs::NamingAttributesList_T_var names;
  globaldefs::NamingAttributesIterator_I_var iterator;
  managerOf<ManagedElementMgr_I>(session.in(), "ManagedElement")
      ->getAllManagedElementNames(1, names.out(), iterator.out());
  EXPECT_TRUE(becomesTrue(
      [&] { return process->output().find("1 idle iterators destroyed") != std::string::npos; }));
  EXPECT_TRUE(zk::test::isGone([&] { iterator->getLength(); }));
}

TEST_F(AgentProcess, refusesWrongUsage) {
  const auto process = agent.run({"--listen", "nowhere"});
  EXPECT_EQ(process->waitForEnd().value_or(-1), 3);
  EXPECT_NE(process->output().find("'nowhere' is not HOST:PORT"), std::string::npos);
}

TEST_F(AgentProcess, logsToAFile) {
  const std::string log = agent.folder.file("agent.log");
  const auto process = agent.start({"--log-file", log});
  ASSERT_TRUE(agent.awaitServing(*process)) << process->output();
  process->signal(SIGTERM);
  EXPECT_EQ(process->waitForEnd().value_or(-1), 0);
  EXPECT_EQ(process->output(), "");
  EXPECT_NE(zk::test::bytesOf(log).find("zk-agent: serving on"), std::string::npos);
  EXPECT_NE(zk::test::bytesOf(log).find("zk-agent: stopped serving"), std::string::npos);
}

}  // namespace
