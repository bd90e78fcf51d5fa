// The program when events are lost, and when the agent is.
#include <arpa/inet.h>
#include <gmock/gmock.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <memory>

#include "tests/nms/support/program.h"

namespace zk::test {
namespace {

using testing::ContainsRegex;
using testing::HasSubstr;

std::size_t lineCount(const std::string& text) {
  return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

class Loss : public Program {
 protected:
  bool connected(int times = 1) {
    return eventually([this, times] { return network_.events.everConnected() >= times; });
  }

  static CosNotification::StructuredEvent event(const std::string& id) {
    return fakeEvent("NT_HEARTBEAT", {{"notificationId", id}});
  }
};

TEST_F(Loss, toldByTheAgentEndsWith5) {
  Process program(argv({"-o", "json", "events", "--count", "2"}), login());
  ASSERT_TRUE(connected());
  network_.client()->eventLossOccurred("20121120094200.0Z", "17");
  network_.events.raise(event("20"));
  network_.client()->eventLossCleared("20121120094300.0Z");
  network_.events.raise(event("21"));
  const Ended ended = program.wait();
  EXPECT_EQ(ended.status, 5);
  EXPECT_EQ(lineCount(ended.out), 2U);
  EXPECT_THAT(ended.err, HasSubstr("has lost events since 2012-11-20T09:42:00.0Z, from "
                                   "notification 17 on\n"));
  EXPECT_THAT(ended.err, HasSubstr("has lost no events since 2012-11-20T09:43:00.0Z\n"));
  EXPECT_THAT(ended.err, HasSubstr("events were lost"));
}

TEST_F(Loss, ofAlarmsEndsWith5) {
  Process program(argv({"-o", "json", "events", "--timeout", "3"}), login());
  ASSERT_TRUE(connected());
  network_.client()->alarmLossOccurred("20121120094200.0Z", "17");
  EXPECT_EQ(program.wait().status, 5);
}

TEST_F(Loss, ofTheSessionIsMadeGoodByAnother) {
  Process program(argv({"-o", "json", "events", "--count", "2"}), login());
  ASSERT_TRUE(connected());
  network_.events.raise(event("1"));
  ASSERT_TRUE(eventually([&] { return lineCount(program.out()) == 1; }));
  network_.client()->endSession();
  ASSERT_TRUE(connected(2));
  ASSERT_TRUE(
      eventually([&] { return program.err().find("events between") != std::string::npos; }));
  network_.events.raise(event("2"));
  const Ended ended = program.wait();
  EXPECT_EQ(ended.status, 5);
  EXPECT_EQ(lineCount(ended.out), 2U);
  EXPECT_THAT(ended.err, HasSubstr("the agent has ended the session; connecting again\n"));
  EXPECT_THAT(ended.err, ContainsRegex("connected again; events between [0-9T:.-]+Z and "
                                       "[0-9T:.-]+Z may be missing"));
}

TEST_F(Loss, ofTheConsumerIsMadeGoodByAnother) {
  for (const char* form : {"--structured", "--pull", "--ping=5"}) {
    const int before = network_.events.everConnected();
    Process program(argv({"events", "--timeout", "30", "--count", "1", form}), login());
    ASSERT_TRUE(connected(before + 1));
    network_.events.disconnectAll();
    ASSERT_TRUE(connected(before + 2)) << program.err();
    ASSERT_TRUE(
        eventually([&] { return program.err().find("events between") != std::string::npos; }));
    network_.events.raise(event("1"));
    EXPECT_EQ(program.wait().status, 5) << form;
  }
}

TEST_F(Loss, ofTheSessionEndsAWatchThatWantsNoOther) {
  Process program(argv({"events", "--no-reconnect"}), login());
  ASSERT_TRUE(connected());
  network_.client()->endSession();
  const Ended ended = program.wait();
  EXPECT_EQ(ended.status, 2);
  EXPECT_THAT(ended.err, HasSubstr("the agent has ended the session; events since"));
  EXPECT_EQ(network_.logins, 1);
}

TEST_F(Loss, isSupposedWhenTheTimeIsUpBeforeAnotherSession) {
  Process program(argv({"events", "--timeout", "4"}), login());
  ASSERT_TRUE(connected());
  network_.onLogin = [] { throw CORBA::COMM_FAILURE(); };
  network_.client()->endSession();
  const Ended ended = program.wait();
  EXPECT_EQ(ended.status, 5);
  EXPECT_THAT(ended.err, HasSubstr("not connected again in time; events since"));
}

TEST_F(Loss, isNotMadeGoodForWhoIsRefused) {
  Process program(argv({"events", "--timeout", "60"}), login());
  ASSERT_TRUE(connected());
  network_.onLogin = [] {
    throw globaldefs::ProcessingFailureException(globaldefs::EXCPT_ACCESS_DENIED, "no more");
  };
  network_.client()->endSession();
  const Ended ended = program.wait();
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.err, HasSubstr("EXCPT_ACCESS_DENIED: no more"));
}

TEST_F(Loss, leavesAWaitThatSucceedsAlone) {
  Process program(argv({"wait", "--for", "$type_name == 'NT_HEARTBEAT'"}), login());
  ASSERT_TRUE(connected());
  network_.client()->eventLossOccurred("20121120094200.0Z", "17");
  network_.events.raise(event("1"));
  EXPECT_EQ(program.wait().status, 0);
}

TEST_F(Loss, makesAWaitInVainDoubtful) {
  Process program(argv({"wait", "--for", "$type_name == 'NT_B'", "--timeout", "3"}), login());
  ASSERT_TRUE(connected());
  network_.client()->eventLossOccurred("20121120094200.0Z", "17");
  EXPECT_EQ(program.wait().status, 5);
}

std::string portThatNobodyHas() {
  const int holder = socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  EXPECT_EQ(bind(holder, reinterpret_cast<sockaddr*>(&address), size), 0);
  getsockname(holder, reinterpret_cast<sockaddr*>(&address), &size);
  close(holder);
  return std::to_string(ntohs(address.sin_port));
}

// Agents of processes of their own, one after the other on the same port.
class Restarted : public testing::Test, public testing::WithParamInterface<const char*> {
 protected:
  std::unique_ptr<Process> agent() {
    return std::make_unique<Process>(
        Arguments{"/proc/self/exe", "--fake-events-agent", reference_.path(), port_});
  }

  bool announced() const {
    return eventually([this] { return reference_.contents().find('\n') != std::string::npos; });
  }

  TemporaryFile reference_;
  const std::string port_ = portThatNobodyHas();
};

TEST_P(Restarted, agentIsFoundAgainWithTheGapTold) {
  auto first = agent();
  ASSERT_TRUE(announced());
  Arguments arguments = {ZK_NMS_PROGRAM, "--agent", reference_.path(), "-o", "json", "events",
                         "--count",      "4",       "--ping",          "1"};
  if (*GetParam() != '\0') {
    arguments.emplace_back(GetParam());
  }
  Process program(arguments, {{"ZK_NMS_USER", "admin"}, {"ZK_NMS_PASSWORD", "secret"}});
  ASSERT_TRUE(eventually([&] { return lineCount(program.out()) == 2; })) << program.err();
  kill(first->pid(), SIGKILL);
  EXPECT_EQ(first->wait().status, -SIGKILL);
  ASSERT_TRUE(
      eventually([&] { return program.err().find("connecting again") != std::string::npos; }));
  EXPECT_EQ(lineCount(program.out()), 2U);
  const auto second = agent();
  const Ended ended = program.wait();
  EXPECT_EQ(ended.status, 5);
  EXPECT_EQ(lineCount(ended.out), 4U);
  EXPECT_THAT(ended.err, HasSubstr("no connection to the agent at " + reference_.path()));
  EXPECT_THAT(ended.err, ContainsRegex("events between [0-9T:.-]+Z and [0-9T:.-]+Z may be "
                                       "missing"));
}

INSTANTIATE_TEST_SUITE_P(ByForm, Restarted, testing::Values("", "--structured", "--pull"));

}  // namespace
}  // namespace zk::test
