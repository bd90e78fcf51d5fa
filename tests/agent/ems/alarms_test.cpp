#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "agent/ems/inventory.h"
#include "tests/agent/ems/support.h"

using namespace zk::agent;
using testing::ElementsAre;
using testing::IsEmpty;
using zk::test::RecordedChanges;

namespace {

using std::chrono::milliseconds;
using std::chrono::system_clock;

class Alarms : public testing::Test {
 protected:
  Alarms() : inventory(Inventory::open(":memory:", {20, 2})) { inventory->setListener(&heard); }

  static AlarmRecord newAlarm(long deviceId, const std::string& cause,
                              const std::string& qualifier = "") {
    AlarmRecord alarm;
    alarm.deviceId = deviceId;
    alarm.probableCause = cause;
    alarm.qualifier = qualifier;
    alarm.nativeProbableCause = "native " + cause;
    alarm.severity = Severity::MAJOR;
    alarm.raisedAt = system_clock::time_point(milliseconds(1700000000123));
    alarm.additionalText = "text";
    return alarm;
  }

  AlarmRecord raised(AlarmRecord alarm) {
    EXPECT_EQ(inventory->raiseAlarm(alarm), Result::DONE);
    return alarm;
  }

  RecordedChanges heard;
  std::unique_ptr<Inventory> inventory;
};

TEST_F(Alarms, areStoredWhole) {
  const AlarmRecord alarm = raised(newAlarm(3, "LOS", "port=1"));
  EXPECT_EQ(alarm.id, 1);
  const auto stored = inventory->alarm(alarm.id);
  ASSERT_TRUE(stored);
  EXPECT_EQ(stored->deviceId, 3);
  EXPECT_EQ(stored->probableCause, "LOS");
  EXPECT_EQ(stored->qualifier, "port=1");
  EXPECT_EQ(stored->nativeProbableCause, "native LOS");
  EXPECT_EQ(stored->severity, Severity::MAJOR);
  EXPECT_EQ(stored->raisedAt, system_clock::time_point(milliseconds(1700000000123)));
  EXPECT_EQ(stored->additionalText, "text");
  EXPECT_THAT(heard.lines(), ElementsAre("raised 3 LOS port=1 severity 2"));
}

TEST_F(Alarms, areListedOldestFirst) {
  raised(newAlarm(3, "LOS"));
  raised(newAlarm(0, "CPU"));
  raised(newAlarm(3, "LOF"));
  const auto causes = [&](std::optional<long> device) {
    std::vector<std::string> list;
    for (const AlarmRecord& alarm : inventory->activeAlarms(device)) {
      list.push_back(alarm.probableCause);
    }
    return list;
  };
  EXPECT_THAT(causes(std::nullopt), ElementsAre("LOS", "CPU", "LOF"));
  EXPECT_THAT(causes(3), ElementsAre("LOS", "LOF"));
  EXPECT_THAT(causes(0), ElementsAre("CPU"));
  EXPECT_THAT(causes(4), IsEmpty());
}

TEST_F(Alarms, areOneForEachDeviceCauseAndQualifier) {
  raised(newAlarm(3, "LOS", "a"));
  raised(newAlarm(3, "LOS", "b"));
  raised(newAlarm(4, "LOS", "a"));
  raised(newAlarm(0, "LOS", "a"));
  raised(newAlarm(0, "LOS", "a"));
  EXPECT_EQ(inventory->activeAlarms().size(), 4u);
}

TEST_F(Alarms, changeWhenRaisedAgain) {
  const AlarmRecord first = raised(newAlarm(3, "LOS"));
  AlarmRecord again = newAlarm(3, "LOS");
  again.severity = Severity::CRITICAL;
  again.raisedAt += milliseconds(5);
  again.additionalText = "worse";
  ASSERT_EQ(inventory->raiseAlarm(again), Result::DONE);
  EXPECT_EQ(again.id, first.id);
  EXPECT_EQ(again.raisedAt, first.raisedAt);
  EXPECT_EQ(inventory->alarm(first.id)->severity, Severity::CRITICAL);
  EXPECT_EQ(inventory->alarm(first.id)->additionalText, "worse");
  EXPECT_EQ(inventory->alarm(first.id)->raisedAt, first.raisedAt);
  raised(again);
  EXPECT_THAT(heard.lines(), ElementsAre("raised 3 LOS  severity 2", "raised 3 LOS  severity 1"));
}

TEST_F(Alarms, areClearedOnce) {
  const AlarmRecord alarm = raised(newAlarm(3, "LOS"));
  EXPECT_EQ(inventory->clearAlarm(alarm.id), Result::DONE);
  EXPECT_EQ(inventory->clearAlarm(alarm.id), Result::NO_SUCH_OBJECT);
  EXPECT_FALSE(inventory->alarm(alarm.id));
  EXPECT_THAT(heard.lines(), ElementsAre("raised 3 LOS  severity 2", "cleared 3 LOS  severity 5"));
  EXPECT_EQ(raised(newAlarm(3, "LOS")).id, 2) << "a number was used twice";
}

TEST_F(Alarms, refuseWhatCannotBeRaised) {
  AlarmRecord unknown = newAlarm(99, "LOS");
  AlarmRecord negative = newAlarm(-1, "LOS");
  AlarmRecord noCause = newAlarm(3, "");
  AlarmRecord cleared = newAlarm(3, "LOS");
  cleared.severity = Severity::CLEARED;
  EXPECT_EQ(inventory->raiseAlarm(unknown), Result::NO_SUCH_OBJECT);
  EXPECT_EQ(inventory->raiseAlarm(negative), Result::NO_SUCH_OBJECT);
  EXPECT_EQ(inventory->raiseAlarm(noCause), Result::BAD_VALUE);
  EXPECT_EQ(inventory->raiseAlarm(cleared), Result::BAD_VALUE);
  EXPECT_EQ(unknown.id, 0);
  EXPECT_THAT(inventory->activeAlarms(), IsEmpty());
  EXPECT_THAT(heard.lines(), IsEmpty());
}

TEST_F(Alarms, goWithTheirDevice) {
  DeviceRecord device;
  device.name = "Short-lived";
  ASSERT_EQ(inventory->create(device), Result::DONE);
  raised(newAlarm(device.id, "LOS"));
  raised(newAlarm(3, "LOS"));
  ASSERT_EQ(inventory->remove(ObjectKey::device(21)), Result::DONE);
  EXPECT_EQ(inventory->activeAlarms().size(), 1u);
  EXPECT_THAT(heard.lines(),
              ElementsAre("created 1:21", "raised 21 LOS  severity 2", "raised 3 LOS  severity 2",
                          "cleared 21 LOS  severity 5", "removed 1:21"));
}

TEST_F(Alarms, stayWhenTheirDeviceCannotGo) {
  raised(newAlarm(3, "LOS"));
  EXPECT_EQ(inventory->remove(ObjectKey::device(3)), Result::OBJECT_IN_USE);
  EXPECT_EQ(inventory->activeAlarms(3).size(), 1u);
  EXPECT_EQ(heard.lines().size(), 1u);
}

}  // namespace
