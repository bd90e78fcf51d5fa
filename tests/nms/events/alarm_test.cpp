#include <gtest/gtest.h>

#include "nms/events/alarm.h"

namespace zk::nms {
namespace {

Alarm alarm(const std::string& cause, const std::string& severity, const std::string& text = "") {
  Alarm result;
  result.cause = cause;
  result.severity = severity;
  result.text = text;
  result.object = "EMS=Quor/1,ManagedElement=7";
  return result;
}

std::string told(const std::optional<AlarmTable::Change>& change) {
  return change ? change->what + " " + change->alarm.cause : "nothing";
}

TEST(AlarmTable, followsAnAlarmFromRaisingToClearing) {
  AlarmTable table;
  EXPECT_EQ(told(table.apply(alarm("LOS", "major"))), "new LOS");
  EXPECT_EQ(told(table.apply(alarm("LOS", "major"))), "nothing");
  EXPECT_EQ(told(table.apply(alarm("LOS", "critical"))), "changed LOS");
  EXPECT_EQ(told(table.apply(alarm("LOS", "critical", "worse"))), "changed LOS");
  EXPECT_EQ(table.size(), 1U);
  EXPECT_EQ(told(table.apply(alarm("LOS", "cleared"))), "cleared LOS");
  EXPECT_EQ(told(table.apply(alarm("LOS", "cleared"))), "nothing");
  EXPECT_EQ(table.size(), 0U);
}

TEST(AlarmTable, keepsAlarmsApartByAllThatNamesThem) {
  AlarmTable table;
  Alarm other = alarm("LOS", "major");
  table.apply(other);
  for (std::string* part : {&other.object, &other.layerRate, &other.qualifier, &other.cause}) {
    *part += "x";
    EXPECT_EQ(table.apply(other)->what, "new");
  }
  EXPECT_EQ(table.size(), 5U);
}

TEST(AlarmTable, takesOverWhatIsActive) {
  AlarmTable table;
  table.apply(alarm("gone", "minor"));
  table.apply(alarm("stays", "minor"));
  table.apply(alarm("worse", "minor"));
  std::vector<std::string> changes;
  for (const auto& change : table.replace(
           {alarm("stays", "minor"), alarm("worse", "major"), alarm("added", "warning")})) {
    changes.push_back(told(change) + " " + change.alarm.severity);
  }
  EXPECT_EQ(changes, (std::vector<std::string>{"changed worse major", "new added warning",
                                               "cleared gone cleared"}));
  EXPECT_EQ(table.size(), 3U);
}

TEST(AlarmScope, leavesOutWhatIsExcluded) {
  const AlarmScope scope{"7", {"minor"}, {"AIS"}};
  const std::string element = "EMS=Quor/1,ManagedElement=7";
  EXPECT_TRUE(inScope(alarm("LOS", "major"), scope, element));
  EXPECT_FALSE(inScope(alarm("LOS", "minor"), scope, element));
  EXPECT_FALSE(inScope(alarm("AIS", "major"), scope, element));
  EXPECT_TRUE(inScope(alarm("LOS", "cleared"), scope, element));
}

TEST(AlarmScope, isAnElementAndAllWithin) {
  const AlarmScope scope{"7", {}, {}};
  Alarm within = alarm("LOS", "major");
  within.object = "EMS=Quor/1,ManagedElement=7,PTP=/port=3";
  EXPECT_TRUE(inScope(within, scope, "EMS=Quor/1,ManagedElement=7"));
  EXPECT_TRUE(inScope(within, scope, ""));
  within.object = "EMS=Quor/1,ManagedElement=77";
  EXPECT_FALSE(inScope(within, scope, "EMS=Quor/1,ManagedElement=7"));
}

}  // namespace
}  // namespace zk::nms
