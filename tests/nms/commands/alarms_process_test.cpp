// Active alarms, their changes, and reading all again.
#include <gmock/gmock.h>

#include <algorithm>

#include "tests/nms/support/program.h"

namespace zk::test {
namespace {

using notifications::PS_CLEARED;
using notifications::PS_CRITICAL;
using notifications::PS_MAJOR;
using notifications::PS_MINOR;
using notifications::PS_WARNING;
using testing::ElementsAre;
using testing::HasSubstr;

class Alarms : public Program {
 protected:
  Alarms() {
    network_.elements = 9;
    network_.alarms = {{7, "LOS", PS_MAJOR, "no light"}, {8, "AIS", PS_WARNING, ""}};
  }

  bool connected(int times) {
    return eventually([this, times] { return network_.logins >= times; });
  }

  // "change cause severity active" of each line.
  static std::vector<std::string> changes(const std::string& out) {
    std::vector<std::string> result;
    std::istringstream in(out);
    for (std::string line; std::getline(in, line);) {
      const Json::Value change = json(line);
      result.push_back(change["change"].asString() + " " + change["probableCause"].asString() +
                       " " + change["severity"].asString() + " " + change["active"].asString());
    }
    return result;
  }

  static bool wrote(const Process& program, std::size_t lines) {
    return eventually([&] { return changes(program.out()).size() == lines; });
  }
};

TEST_F(Alarms, areListed) {
  const Ended ended = run({"alarms"});
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_EQ(ended.out,
            "TIME                    SEVERITY  CAUSE  OBJECT                       TEXT\n"
            "2012-11-20T09:42:00.0Z  major     LOS    EMS=Quor/1,ManagedElement=7  no light\n"
            "2012-11-20T09:42:00.0Z  warning   AIS    EMS=Quor/1,ManagedElement=8\n");
}

TEST_F(Alarms, areReadThroughAnIterator) {
  network_.alarms.clear();
  for (unsigned i = 1; i <= 9; ++i) {
    network_.alarms.push_back({i, "LOS", PS_MINOR, ""});
  }
  const Json::Value alarms = json(run({"-o", "json", "--page", "2", "alarms"}).out);
  EXPECT_EQ(alarms.size(), 9U);
  EXPECT_EQ(network_.iteratorsDestroyed, 1);
}

TEST_F(Alarms, areLeftOutByTheAgent) {
  EXPECT_EQ(json(run({"-o", "json", "alarms", "--exclude-severity", "warning"}).out).size(), 1U);
  EXPECT_EQ(json(run({"-o", "json", "alarms", "--exclude-cause", "LOS", "--exclude-severity",
                      "critical", "--exclude-cause", "AIS"})
                     .out)
                .size(),
            0U);
}

TEST_F(Alarms, ofOneElementAreAskedOfItsManager) {
  EXPECT_EQ(run({"alarms", "7"}).status, 0);
  EXPECT_EQ(network_.lastName(), "EMS:Quor/1 ManagedElement:7");
  EXPECT_EQ(run({"alarms", "EMS=Quor/1,ManagedElement=77"}).status, 1);
}

TEST_F(Alarms, areWatched) {
  Process program(argv({"-o", "json", "alarms", "-w", "--count", "3"}), login());
  ASSERT_TRUE(wrote(program, 2)) << program.err();
  network_.events.raise(fakeAlarm(7, "LOS", PS_MAJOR, "no light"));  // known
  network_.events.raise(fakeAlarm(7, "LOS", PS_CRITICAL, "no light"));
  network_.events.raise(fakeAlarm(9, "LOF", PS_MINOR));
  network_.events.raise(fakeAlarm(3, "LOF", PS_CLEARED));  // never known
  network_.events.raise(fakeAlarm(8, "AIS", PS_CLEARED));
  const Ended ended = program.wait();
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_THAT(changes(ended.out),
              ElementsAre("active LOS major 2", "active AIS warning 2", "changed LOS critical 2",
                          "new LOF minor 3", "cleared AIS cleared 2"));
  EXPECT_THAT(network_.events.told(),
              ElementsAre("types +tmf_mtnm/NT_ALARM -*/%ALL", "push sequence"));
  EXPECT_TRUE(everybodyLoggedOut());
}

TEST_F(Alarms, ofOneElementAreWatched) {
  Process program(argv({"-o", "json", "alarms", "7", "-w", "--count", "1", "--pull",
                        "--exclude-severity", "minor"}),
                  login());
  ASSERT_TRUE(eventually([&] { return network_.events.connected() == 1; }));
  network_.events.raise(fakeAlarm(8, "LOF", PS_MAJOR));
  network_.events.raise(fakeAlarm(7, "LOF", PS_MINOR));
  network_.events.raise(fakeAlarm(7, "RDI", PS_MAJOR));
  const Ended ended = program.wait();
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_EQ(changes(ended.out).back().substr(0, 13), "new RDI major");
}

TEST_F(Alarms, areReadAgainAfterAGap) {
  Process program(argv({"-o", "json", "alarms", "-w", "--count", "2"}), login());
  ASSERT_TRUE(wrote(program, 2)) << program.err();
  {
    const FakeNetwork::Locked guard(network_);
    network_.alarms = {{8, "AIS", PS_WARNING, ""}, {9, "LOF", PS_MINOR, ""}};
  }
  network_.client()->endSession();
  ASSERT_TRUE(wrote(program, 4)) << program.err();
  const Ended ended = program.wait();
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_THAT(changes(ended.out), ElementsAre("active LOS major 2", "active AIS warning 2",
                                              "new LOF minor 2", "cleared LOS cleared 2"));
  EXPECT_THAT(ended.err, HasSubstr("events between"));
}

TEST_F(Alarms, areReadAgainWhenNoMoreEventsAreLost) {
  Process program(argv({"-o", "json", "alarms", "-w", "--timeout", "4"}), login());
  ASSERT_TRUE(wrote(program, 2)) << program.err();
  network_.client()->alarmLossOccurred("20121120094200.0Z", "17");
  {
    const FakeNetwork::Locked guard(network_);
    network_.alarms.clear();
  }
  network_.client()->eventLossCleared("20121120094300.0Z");
  const Ended ended = program.wait();
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_THAT(changes(ended.out), ElementsAre("active LOS major 2", "active AIS warning 2",
                                              "cleared LOS cleared 0", "cleared AIS cleared 0"));
}

TEST_F(Alarms, watchedEndWith5WhileEventsAreBeingLost) {
  Process program(argv({"-o", "json", "alarms", "-w", "--timeout", "3"}), login());
  ASSERT_TRUE(wrote(program, 2)) << program.err();
  network_.client()->alarmLossOccurred("20121120094200.0Z", "17");
  EXPECT_EQ(program.wait().status, 5);
}

TEST_F(Alarms, watchedInVainEndWith4) {
  EXPECT_EQ(run({"alarms", "-w", "--count", "1", "--timeout", "0.2"}).status, 4);
}

TEST_F(Alarms, andAllElseAreReadAgain) {
  network_.subnetworks = 2;
  network_.links = 5;
  EXPECT_EQ(run({"--page", "2", "resync"}).out,
            "EMS                EMS=Quor/1\n"
            "MANAGED ELEMENTS   9\n"
            "SUBNETWORKS        2\n"
            "TOPOLOGICAL LINKS  5\n"
            "NODES\n"
            "SUBMAPS\n"
            "DISPLAY LINKS\n"
            "ACTIVE ALARMS      2\n"
            "  critical         0\n"
            "  major            1\n"
            "  minor            0\n"
            "  warning          1\n"
            "  indeterminate    0\n");
  network_.nodes = 4;
  const Json::Value read = json(run({"-o", "json", "resync"}).out);
  EXPECT_EQ(read[0]["subMaps"], 4);
  EXPECT_EQ(read[0]["major"], 1);
  EXPECT_TRUE(everybodyLoggedOut());
}

}  // namespace
}  // namespace zk::test
