// The program itself, as a process of its own, talking to agents over loopback.
#include <arpa/inet.h>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>

#include "tests/nms/support/program.h"

namespace zk::test {
namespace {

using testing::HasSubstr;
TEST_F(Program, showsTheEmsAndLogsOut) {
  const Ended ended = run({"ems"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.err, "");
  EXPECT_EQ(ended.out,
            "NAME             EMS=Quor/1\n"
            "USER LABEL       Main\n"
            "NATIVE NAME      quor\n"
            "OWNER\n"
            "VERSION          4.2\n"
            "TYPE             fake\n"
            "ADDITIONAL INFO  site=North\\, 2nd floor\n");
  EXPECT_EQ(network_.logins, 1);
  EXPECT_EQ(network_.pingsAnswered, 1);
  EXPECT_TRUE(everybodyLoggedOut());
}

TEST_F(Program, listsElementsThroughManyPages) {
  network_.elements = 23;
  const Ended ended = run({"-o", "json", "--page", "5", "me"});
  EXPECT_EQ(ended.status, 0) << ended.err;
  const Json::Value elements = json(ended.out);
  ASSERT_EQ(elements.size(), 23U);
  for (Json::ArrayIndex i = 0; i < 23; ++i) {
    EXPECT_EQ(elements[i]["name"].asString(), "EMS=Quor/1,ManagedElement=" + std::to_string(i + 1));
  }
  EXPECT_EQ(network_.iteratorsMade, 1);
  EXPECT_EQ(network_.iteratorsDestroyed, 1);
  EXPECT_TRUE(everybodyLoggedOut());
}

TEST_F(Program, listsElementsInATable) {
  network_.elements = 2;
  network_.elementLabel = "M\xC3\xBCnchen";
  const Ended ended = run({"me"});
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_EQ(
      ended.out,
      "NAME                         USER LABEL  NATIVE NAME  OWNER  LOCATION  VERSION  "
      "PRODUCT  STATE        IN SYNC\n"
      "EMS=Quor/1,ManagedElement=1  M\xC3\xBCnchen     ne-1                Oslo      1.0      "
      "QX-100   available    yes\n"
      "EMS=Quor/1,ManagedElement=2  M\xC3\xBCnchen     ne-2                Oslo      1.0      "
      "QX-100   unavailable  no\n");
  EXPECT_EQ(network_.iteratorsMade, 0);
}

TEST_F(Program, listsNamesThroughPages) {
  network_.elements = 3;
  const Ended ended = run({"--page", "1", "me", "--names", "-o", "csv"});
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_EQ(ended.out,
            "name\n\"EMS=Quor/1,ManagedElement=1\"\n\"EMS=Quor/1,ManagedElement=2\"\n"
            "\"EMS=Quor/1,ManagedElement=3\"\n");
  EXPECT_EQ(network_.iteratorsDestroyed, 1);
}

TEST_F(Program, listsAnEmptyNetwork) {
  EXPECT_EQ(run({"me", "-o", "json"}).out, "[]\n");
  EXPECT_EQ(run({"link", "--names"}).out, "NAME\n");
  EXPECT_EQ(run({"subnetwork"}).status, 0);
}

TEST_F(Program, asksForABareIdInThisEms) {
  network_.elements = 9;
  const Ended ended = run({"me", "7", "-o", "json"});
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_EQ(network_.lastName(), "EMS:Quor/1 ManagedElement:7");
  const Json::Value elements = json(ended.out);
  ASSERT_EQ(elements.size(), 1U);
  EXPECT_EQ(elements[0]["nativeEMSName"].asString(), "ne-7");
  EXPECT_TRUE(elements[0]["emsInSyncState"].asBool());
  EXPECT_EQ(elements[0]["supportedRates"][1].asInt(), 87);
  EXPECT_EQ(elements[0]["additionalInfo"][0]["value"].asString(), "North, 2nd floor");
}

TEST_F(Program, sendsAFullNameAsItWasTyped) {
  network_.elements = 9;
  EXPECT_EQ(run({"me", "EMS=Other\\,x,ManagedElement=7"}).status, 0);
  EXPECT_EQ(network_.lastName(), "EMS:Other,x ManagedElement:7");
  EXPECT_EQ(run({"me", "ManagedElement=7"}).status, 1);
  EXPECT_EQ(network_.lastName(), "ManagedElement:7");
}

TEST_F(Program, takesACommandsNameAsAnId) {
  EXPECT_EQ(run({"me", "link"}).status, 1);
  EXPECT_EQ(network_.lastName(), "EMS:Quor/1 ManagedElement:link");
}

TEST_F(Program, listsSubnetworksAndLinks) {
  network_.subnetworks = 2;
  network_.links = 1;
  EXPECT_EQ(run({"subnetwork", "--page", "1"}).out,
            "NAME                               USER LABEL  NATIVE NAME  OWNER  TOPOLOGY\n"
            "EMS=Quor/1,MultiLayerSubnetwork=1  ring        sn           ops    open_psr\n"
            "EMS=Quor/1,MultiLayerSubnetwork=2  ring        sn           ops    open_psr\n");
  EXPECT_EQ(run({"link", "-o", "csv"}).out,
            "name,userLabel,nativeEMSName,owner,direction,rate,aEndTP,zEndTP,additionalInfo\n"
            "\"EMS=Quor/1,TopologicalLink=1\",fibre,tl,ops,bi,47,\"EMS=Quor/1,ManagedElement=1\","
            "\"EMS=Quor/1,ManagedElement=2\",\n");
  EXPECT_EQ(network_.iteratorsDestroyed, 1);
  EXPECT_EQ(run({"subnetwork", "--names"}).status, 0);
  EXPECT_EQ(run({"link", "--names"}).status, 0);
}

TEST_F(Program, showsOneSubnetworkAndOneLink) {
  network_.subnetworks = 2;
  network_.links = 2;
  EXPECT_THAT(run({"subnetwork", "2"}).out, HasSubstr("EMS=Quor/1,MultiLayerSubnetwork=2\n"));
  EXPECT_EQ(network_.lastName(), "EMS:Quor/1 MultiLayerSubnetwork:2");
  EXPECT_THAT(run({"link", "2"}).out, HasSubstr("Z END            EMS=Quor/1,ManagedElement=3\n"));
  EXPECT_EQ(network_.lastName(), "EMS:Quor/1 TopologicalLink:2");
}

TEST_F(Program, tellsARefusal) {
  const Ended ended = run({"me", "7"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.out, "");
  EXPECT_EQ(ended.err, "zk-nms: refused: EXCPT_ENTITY_NOT_FOUND: no such object\n");
  EXPECT_TRUE(everybodyLoggedOut());
}

TEST_F(Program, tellsARefusalInTheMiddleOfAList) {
  network_.elements = 5;
  network_.onNext = [] {
    throw globaldefs::ProcessingFailureException(globaldefs::EXCPT_INTERNAL_ERROR, "half-way");
  };
  const Ended ended = run({"--page", "2", "me"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.out, "");
  EXPECT_EQ(ended.err, "zk-nms: refused: EXCPT_INTERNAL_ERROR: half-way\n");
  EXPECT_EQ(network_.iteratorsDestroyed, 1);
  EXPECT_TRUE(everybodyLoggedOut());
}

TEST_F(Program, takesAnOperationThatTheAgentLacksForARefusal) {
  network_.onGetElement = [] { throw CORBA::BAD_OPERATION(); };
  const Ended ended = run({"me", "7"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.err, HasSubstr("does not offer this operation"));
}

TEST_F(Program, isRefusedWithAWrongPassword) {
  const Ended ended = Process(argv({"ems"}), {{"ZK_NMS_USER", "admin"}}).wait();
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.out, "");
  EXPECT_EQ(ended.err, "zk-nms: refused: EXCPT_ACCESS_DENIED: wrong user or password\n");
}

TEST_F(Program, takesThePasswordFromEverywhere) {
  const TemporaryFile file("secret\n");
  const Process::Environment wrong = {{"ZK_NMS_USER", "nobody"}, {"ZK_NMS_PASSWORD", "wrong"}};
  EXPECT_EQ(Process(argv({"--user", "admin", "--password-file", file.path(), "ems"}), wrong)
                .wait()
                .status,
            0);
  EXPECT_EQ(Process(argv({"ems", "--user", "admin", "--password", "secret"}), wrong).wait().status,
            0);
  EXPECT_EQ(Process(argv({"ems"}), login()).wait().status, 0);
}

TEST_F(Program, findsTheAgentThroughTheEnvironment) {
  Process::Environment environment = login();
  environment["ZK_NMS_AGENT"] = agent_.reference();
  EXPECT_EQ(Process({ZK_NMS_PROGRAM, "ems"}, environment).wait().status, 0);
}

TEST_F(Program, noticesThatItTalksToNoAgent) {
  const Ended ended =
      Process({ZK_NMS_PROGRAM, "--agent", agent_.referenceOfSomethingElse(), "ems"}, login())
          .wait();
  EXPECT_EQ(ended.status, 2);
  EXPECT_THAT(ended.err, HasSubstr("is not an agent"));
}

// A port of loopback that nobody listens on: bound, so that nobody can.
class ClosedPort {
 public:
  ClosedPort() : socket_(socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    EXPECT_EQ(bind(socket_, reinterpret_cast<sockaddr*>(&address), size), 0);
    getsockname(socket_, reinterpret_cast<sockaddr*>(&address), &size);
    number_ = ntohs(address.sin_port);
  }
  ~ClosedPort() { close(socket_); }

  std::string address() const { return "127.0.0.1:" + std::to_string(number_); }

 private:
  int socket_;
  int number_ = 0;
};

TEST_F(Program, namesTheAddressWhereNobodyAnswers) {
  const ClosedPort port;
  const Ended ended = Process({ZK_NMS_PROGRAM, "--agent", port.address(), "me"}, login()).wait();
  EXPECT_EQ(ended.status, 2);
  EXPECT_EQ(ended.out, "");
  EXPECT_THAT(ended.err,
              HasSubstr("cannot log in: no connection to the agent at " + port.address()));
}

TEST_F(Program, missesTheReferenceFileOfAnAgentThatNeverRan) {
  const Ended ended = Process({ZK_NMS_PROGRAM, "--agent", "/nonexistent/agent.ior", "me"}).wait();
  EXPECT_EQ(ended.status, 2);
  EXPECT_EQ(ended.err,
            "zk-nms: cannot read the agent's reference from /nonexistent/agent.ior: "
            "No such file or directory\n");
}

TEST_F(Program, noticesThatTheAgentDied) {
  const TemporaryFile reference;
  Process dying({"/proc/self/exe", "--fake-agent", reference.path()});
  ASSERT_TRUE(eventually([&] { return reference.contents().find('\n') != std::string::npos; }));
  const Ended ended =
      Process({ZK_NMS_PROGRAM, "--agent", reference.path(), "--page", "3", "me"}, login()).wait();
  EXPECT_EQ(ended.status, 2);
  EXPECT_EQ(ended.out, "");
  EXPECT_THAT(ended.err, HasSubstr("no connection to the agent at " + reference.path()));
  EXPECT_EQ(dying.wait().status, 0);
}

TEST_F(Program, givesUpOnAnAgentThatDoesNotAnswer) {
  network_.onGetEms = [this] { gate_.pass(); };
  const Ended ended = run({"--timeout", "1", "ems"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_EQ(ended.out, "");
  EXPECT_THAT(ended.err, HasSubstr("no answer in time from the agent at " + reference_.path()));
  EXPECT_TRUE(gate_.entered());
  EXPECT_TRUE(everybodyLoggedOut());
}

class Interrupted : public Program, public testing::WithParamInterface<int> {};

TEST_P(Interrupted, logsOut) {
  network_.onGetEms = [this] { gate_.pass(); };
  Process program(argv({"ems"}), login());
  ASSERT_TRUE(eventually([this] { return gate_.entered(); }));
  ASSERT_EQ(kill(program.pid(), GetParam()), 0);
  EXPECT_EQ(program.wait().status, 128 + GetParam());
  EXPECT_TRUE(everybodyLoggedOut());
  EXPECT_EQ(network_.sessionsEnded, 1);
}

INSTANTIATE_TEST_SUITE_P(BySignal, Interrupted, testing::Values(SIGINT, SIGTERM, SIGHUP));

TEST_F(Program, endsWhenInterruptedDuringTheLogin) {
  network_.onLogin = [this] { gate_.pass(); };
  Process program(argv({"ems"}), login());
  ASSERT_TRUE(eventually([this] { return gate_.entered(); }));
  ASSERT_EQ(kill(program.pid(), SIGINT), 0);
  EXPECT_EQ(program.wait().status, 130);
}

TEST_F(Program, saysThatTheOutputCannotBeWritten) {
  const Ended ended = Process(argv({"ems"}), login(), "/dev/full").wait();
  EXPECT_EQ(ended.status, 6);
  EXPECT_EQ(ended.err, "zk-nms: the output cannot be written\n");
  EXPECT_TRUE(everybodyLoggedOut());
}

TEST_F(Program, endsQuietlyWhenItsReaderHasGone) {
  const TemporaryFile name;
  const std::string pipe = name.path() + ".pipe";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  const int reader = open(pipe.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  network_.onGetEms = [this] { gate_.pass(); };
  Process program(argv({"ems"}), login(), pipe);
  EXPECT_TRUE(eventually([this] { return gate_.entered(); }));
  close(reader);
  unlink(pipe.c_str());
  gate_.open();
  const Ended ended = program.wait();
  EXPECT_EQ(ended.status, 6);
  EXPECT_EQ(ended.err, "");
  EXPECT_TRUE(everybodyLoggedOut());
}

TEST_F(Program, refusesAReferenceThatIsNone) {
  for (const char* text : {"IOR:zz", "IOR:", "corbaloc:nonsense"}) {
    const Ended ended = Process({ZK_NMS_PROGRAM, "--agent", text, "ems"}).wait();
    EXPECT_EQ(ended.status, 3) << text;
    EXPECT_THAT(ended.err, HasSubstr(text));
  }
}

TEST_F(Program, cannotListenOnAnAddressOfAnotherMachine) {
  const Ended ended = run({"--callback", "192.0.2.1", "ems"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_THAT(ended.err, HasSubstr("cannot listen on 192.0.2.1"));
}

}  // namespace
}  // namespace zk::test
