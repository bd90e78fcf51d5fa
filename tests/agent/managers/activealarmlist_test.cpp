// Lists of active alarms.
#include "agent/managers/queries.h"

#include "tests/agent/tmf/network.h"

namespace {

using namespace zk::agent;
using zk::test::dumpEvent;
using zk::test::Network;
using zk::test::NOW;

notifications::ProbableCauseList_T causes(const std::vector<std::string>& texts) {
  notifications::ProbableCauseList_T list;
  list.length(static_cast<CORBA::ULong>(texts.size()));
  for (CORBA::ULong i = 0; i < list.length(); ++i) {
    list[i] = CORBA::string_dup(texts[i].c_str());
  }
  return list;
}

using SeverityValues = std::vector<notifications::PerceivedSeverity_T>;

notifications::PerceivedSeverityList_T severities(const SeverityValues& values) {
  notifications::PerceivedSeverityList_T list;
  list.length(static_cast<CORBA::ULong>(values.size()));
  for (CORBA::ULong i = 0; i < list.length(); ++i) {
    list[i] = values[i];
  }
  return list;
}

class ActiveAlarms : public Network {
 protected:
  ActiveAlarms() {
    raise(1, "LOS", Severity::CRITICAL);
    raise(1, "AIS", Severity::MINOR);
    raise(0, "EMS", Severity::WARNING);
    raise(2, "LOS", Severity::INDETERMINATE);
    raise(2, "EQPT", Severity::MAJOR);
  }

  long raise(long deviceId, const char* cause, Severity severity) {
    AlarmRecord alarm;
    alarm.deviceId = deviceId;
    alarm.probableCause = cause;
    alarm.severity = severity;
    alarm.raisedAt = NOW - std::chrono::hours(1);
    EXPECT_EQ(inventory->raiseAlarm(alarm), Result::DONE);
    return alarm.id;
  }

  // The notification ids of the entries [from, from + count).
  static std::string idsOf(const PagedList<notifications::EventList_T>& list, std::size_t from,
                           std::size_t count) {
    notifications::EventList_T events;
    list.append(from, count, events);
    std::string ids;
    for (CORBA::ULong i = 0; i < events.length(); ++i) {
      const char* id = nullptr;
      events[i].filterable_data[0].value >>= id;
      ids += (i == 0 ? "" : " ") + std::string(id);
    }
    return ids;
  }
  static std::string idsOf(const PagedList<notifications::EventList_T>& list) {
    return idsOf(list, 0, list.length);
  }

  const ExcludedAlarms none{causes({}), severities({})};
};

struct Case {
  const char* name;
  std::vector<std::string> causes;
  SeverityValues severities;
  const char* ids;
};

const Case EXCLUDED[] = {
    {"nothing", {}, {}, "1 2 3 4 5"},
    {"aCause", {"LOS"}, {}, "2 3 5"},
    {"twoCauses", {"LOS", "EMS"}, {}, "2 5"},
    {"aCauseThatNobodyHas", {"LOF"}, {}, "1 2 3 4 5"},
    {"aCauseInOtherLetters", {"los"}, {}, "1 2 3 4 5"},
    {"aSeverity", {}, {notifications::PS_CRITICAL}, "2 3 4 5"},
    {"severities",
     {},
     {notifications::PS_INDETERMINATE, notifications::PS_MINOR, notifications::PS_WARNING},
     "1 5"},
    {"cleared", {}, {notifications::PS_CLEARED}, "1 2 3 4 5"},
    {"aCauseAndASeverity", {"LOS"}, {notifications::PS_MAJOR}, "2 3"},
    {"everything",
     {"LOS"},
     {notifications::PS_MINOR, notifications::PS_WARNING, notifications::PS_MAJOR},
     ""},
};

class Excluding : public ActiveAlarms, public testing::WithParamInterface<Case> {};

INSTANTIATE_TEST_SUITE_P(Lists, Excluding, testing::ValuesIn(EXCLUDED),
                         [](const auto& row) { return row.param.name; });

TEST_P(Excluding, leavesOutWhatEitherListNames) {
  const Case& row = GetParam();
  const auto list = activeAlarms(*inventory, {causes(row.causes), severities(row.severities)});
  EXPECT_EQ(idsOf(list), row.ids);
}

TEST_F(ActiveAlarms, areOfOneDeviceOrOfTheEms) {
  EXPECT_EQ(idsOf(activeAlarms(*inventory, none, 1)), "1 2");
  EXPECT_EQ(idsOf(activeAlarms(*inventory, none, 2)), "4 5");
  EXPECT_EQ(idsOf(activeAlarms(*inventory, none, 3)), "");
  EXPECT_EQ(idsOf(activeAlarms(*inventory, none, 0)), "3");
}

TEST_F(ActiveAlarms, comeInPages) {
  const auto list = activeAlarms(*inventory, none);
  ASSERT_EQ(list.length, 5U);
  EXPECT_EQ(idsOf(list, 0, 2), "1 2");
  EXPECT_EQ(idsOf(list, 2, 2), "3 4");
  EXPECT_EQ(idsOf(list, 4, 1), "5");
}

TEST_F(ActiveAlarms, areThoseOfTheMomentOfAsking) {
  const auto list = activeAlarms(*inventory, {causes({}), severities({notifications::PS_MINOR})});
  EXPECT_EQ(list.length, 4U);
  ASSERT_EQ(inventory->clearAlarm(1), Result::DONE);
  EXPECT_EQ(raise(3, "LOF", Severity::MAJOR), 6);
  raise(2, "EQPT", Severity::MINOR);  // is one of those left out now
  EXPECT_EQ(idsOf(list), "3 4");
}

// What was told when the alarm was raised, with the time of then.
TEST_F(ActiveAlarms, areTheEventsThatRaisedThem) {
  told();
  AlarmRecord alarm;
  alarm.deviceId = 4;
  alarm.probableCause = "LOF";
  alarm.severity = Severity::MAJOR;
  alarm.raisedAt = NOW;
  ASSERT_EQ(inventory->raiseAlarm(alarm), Result::DONE);
  const auto raised = onlyEvent();
  clock.time += std::chrono::hours(3);
  notifications::EventList_T events;
  activeAlarms(*inventory, none, 4).append(0, 1, events);
  ASSERT_EQ(events.length(), 1U);
  EXPECT_EQ(dumpEvent(events[0]), dumpEvent(raised));
}

}  // namespace
