// The program with the agent's events, while nothing goes wrong.
#include <gmock/gmock.h>

#include <algorithm>
#include <csignal>

#include "tests/nms/support/program.h"

namespace zk::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

std::vector<Json::Value> lines(const std::string& text) {
  std::vector<Json::Value> result;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) {
    result.push_back(json(line));
  }
  return result;
}

std::size_t lineCount(const std::string& text) {
  return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

struct Raised {
  std::string id;
  std::string type = "NT_HEARTBEAT";
};

CosNotification::StructuredEvent numbered(const std::string& id,
                                          const std::string& type = "NT_HEARTBEAT") {
  return fakeEvent(type, {{"notificationId", id}, {"emsTime", "20121120094200.0Z"}});
}

class Events : public Program {
 protected:
  bool connected() {
    return eventually([this] { return network_.events.connected() == 1; });
  }

  // In one batch. The events are the channel's alone when this returns: copies of
  // an event share what the ORB keeps of its values.
  void raise(const std::vector<Raised>& raised) {
    std::vector<CosNotification::StructuredEvent> events;
    events.reserve(raised.size());
    for (const auto& [id, type] : raised) {
      events.push_back(numbered(id, type));
    }
    network_.events.raise(events);
  }

  // Raises these when the program is there, and gives its end.
  Ended runWith(const Arguments& arguments, const std::vector<Raised>& raised) {
    Process program(argv(arguments), login());
    EXPECT_TRUE(connected()) << program.err();
    raise(raised);
    return program.wait();
  }
};

class Delivered : public Events, public testing::WithParamInterface<const char*> {
 protected:
  Arguments with(Arguments arguments) const {
    if (*GetParam() != '\0') {
      arguments.emplace_back(GetParam());
    }
    return arguments;
  }
};

TEST_P(Delivered, inOrderAsJsonOneObjectALine) {
  const Ended ended =
      runWith(with({"-o", "json", "events", "--count", "3"}), {{"1"}, {"2"}, {"3"}});
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_EQ(ended.err, "");
  const auto objects = lines(ended.out);
  ASSERT_EQ(objects.size(), 3U);
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(objects[i]["notificationId"], std::to_string(i + 1));
    EXPECT_EQ(objects[i]["type"], "NT_HEARTBEAT");
    EXPECT_EQ(objects[i]["domain"], "tmf_mtnm");
    EXPECT_EQ(objects[i]["time"], "2012-11-20T09:42:00.0Z");
    EXPECT_EQ(objects[i]["properties"]["emsTime"], "20121120094200.0Z");
  }
  EXPECT_TRUE(everybodyLoggedOut());
}

TEST_P(Delivered, eachAsSoonAsItComes) {
  Process program(argv(with({"events"})), login());
  ASSERT_TRUE(connected());
  network_.events.raise(fakeAlarm(7, "LOS", notifications::PS_MAJOR, "no light"));
  EXPECT_TRUE(eventually([&] { return lineCount(program.out()) == 2; }));
  EXPECT_EQ(
      program.out(),
      "TIME                      TYPE                       OBJECT                            "
      "SUMMARY\n"
      "2012-11-20T09:42:00.0Z    NT_ALARM                   EMS=Quor/1,ManagedElement=7       "
      "major LOS: no light\n");
  raise({{"2"}});
  EXPECT_TRUE(eventually([&] { return lineCount(program.out()) == 3; }));
  kill(program.pid(), SIGINT);
  EXPECT_EQ(program.wait().status, 130);
  EXPECT_TRUE(everybodyLoggedOut());
}

TEST_P(Delivered, endsWith4WhenFewerThanCountedCome) {
  Process program(argv(with({"events", "--count", "2", "--timeout", "3"})), login());
  ASSERT_TRUE(connected());
  raise({{"1"}});
  const Ended ended = program.wait();
  EXPECT_EQ(ended.status, 4);
  EXPECT_EQ(lineCount(ended.out), 2U);
  EXPECT_EQ(ended.err, "zk-nms: the time is up: 1 of 2 came\n");
  EXPECT_TRUE(everybodyLoggedOut());
}

TEST_P(Delivered, wholeBatchesInOrder) {
  std::vector<Raised> events;
  events.reserve(2000);
  for (int i = 0; i < 2000; ++i) {
    events.push_back({std::to_string(i)});
  }
  const Ended ended = runWith(with({"-o", "json", "events", "--count", "2000"}), events);
  EXPECT_EQ(ended.status, 0) << ended.err;
  const auto objects = lines(ended.out);
  ASSERT_EQ(objects.size(), 2000U);
  for (std::size_t i = 0; i < 2000; ++i) {
    ASSERT_EQ(objects[i]["notificationId"], std::to_string(i));
  }
}

INSTANTIATE_TEST_SUITE_P(ByForm, Delivered, testing::Values("", "--structured", "--pull"));

TEST_F(Events, connectInTheFormThatWasAskedFor) {
  for (const char* form : {"--pull", "--structured"}) {
    EXPECT_EQ(run({"events", "--timeout", "0.01", form}).status, 0);
  }
  EXPECT_EQ(run({"events", "--timeout", "0.01"}).status, 0);
  EXPECT_THAT(network_.events.told(),
              ElementsAre("pull sequence", "push structured", "push sequence"));
}

TEST_F(Events, areTheTypesThatWereAskedFor) {
  const Ended ended =
      runWith({"-o", "csv", "events", "--type", "NT_ALARM", "--type", "NT_B", "--count", "2"},
              {{"1"}, {"2", "NT_ALARM"}, {"3"}, {"4", "NT_B"}});
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_EQ(lineCount(ended.out), 3U);
  EXPECT_THAT(ended.out, HasSubstr(",NT_ALARM,"));
  EXPECT_THAT(ended.out, HasSubstr(",NT_B,"));
  EXPECT_THAT(network_.events.told(),
              ElementsAre("types +tmf_mtnm/NT_ALARM +tmf_mtnm/NT_B -*/%ALL", "push sequence"));
}

TEST_F(Events, areThoseThatMeetAnyFilter) {
  const Ended ended = runWith({"-o", "json", "events", "--filter", "$type_name == 'NT_A'",
                               "--filter", "$type_name == 'NT_B'", "--count", "2"},
                              {{"1", "NT_C"}, {"2", "NT_B"}, {"3", "NT_A"}});
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_EQ(lines(ended.out).front()["notificationId"], "2");
  EXPECT_THAT(network_.events.told(),
              ElementsAre("grammar EXTENDED_TCL", "constraint $type_name == 'NT_A'",
                          "constraint $type_name == 'NT_B'", "push sequence"));
}

TEST_F(Events, areRefusedWithTheFilterInTheMessage) {
  const Ended ended = run({"events", "--filter", "$a ==", "--filter", "wrong ((", "--count", "1"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.out, "");
  EXPECT_THAT(ended.err, HasSubstr("refused: InvalidConstraint"));
  EXPECT_THAT(ended.err, HasSubstr("'wrong (('"));
  EXPECT_TRUE(everybodyLoggedOut());
}

TEST_F(Events, mayBeNoneInTime) {
  const Ended ended = run({"-o", "json", "events", "--timeout", "0.2"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.out + ended.err, "");
}

TEST_F(Events, areAwaited) {
  const Ended ended =
      runWith({"-o", "json", "wait", "--for", "$type_name == 'NT_B'", "--timeout", "60"},
              {{"1"}, {"2", "NT_B"}, {"3", "NT_B"}});
  EXPECT_EQ(ended.status, 0) << ended.err;
  ASSERT_EQ(lines(ended.out).size(), 1U);
  EXPECT_EQ(lines(ended.out)[0]["notificationId"], "2");
}

TEST_F(Events, areAwaitedInVain) {
  const Ended ended = run({"wait", "--for", "$type_name == 'NT_B'", "--timeout", "0.2"});
  EXPECT_EQ(ended.status, 4);
  EXPECT_EQ(ended.out, "");
  EXPECT_THAT(ended.err, HasSubstr("the time is up"));
}

TEST_F(Events, refuseWrongCommandLines) {
  for (const Arguments& arguments :
       std::vector<Arguments>{{"events", "--count", "0"},
                              {"events", "--pull", "--structured"},
                              {"events", "--timeout", "0"},
                              {"events", "--timeout", "soon"},
                              {"events", "--type", ""},
                              {"events", "extra"},
                              {"wait"},
                              {"wait", "--for"},
                              {"alarms", "--count", "1"},
                              {"alarms", "--timeout", "1"},
                              {"alarms", "--exclude-severity", "bad"}}) {
    EXPECT_EQ(run(arguments).status, 3) << testing::PrintToString(arguments);
  }
  EXPECT_EQ(network_.logins, 0);
}

}  // namespace
}  // namespace zk::test
