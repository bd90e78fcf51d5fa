// Alarms of the embedded EMS as events.
#include "agent/tmf/nmsrecords.h"

#include "tests/agent/tmf/network.h"
#include "zk_quornex/idl/managers.h"

namespace {

using namespace zk::agent;
using zk::test::Network;
using zk::test::NOW;
using Texts = std::vector<std::string>;

struct Told {
  std::string id = "1";
  std::string name = "|ManagedElement=1";
  std::string nativeName = "Aldermoor-QM32-01";
  std::string objectType = "OT_MANAGED_ELEMENT";
  std::string emsTime = "20121120094200.0Z";
  std::string neTime = "20121120094157.5Z";
  std::string severity = "PS_MAJOR";
  std::string text = "see the card";
  std::string qualifier = "ManagedElement";
};

std::string alarmText(const Told& told) {
  return "header=tmf_mtnm|NT_ALARM|\n"
         "0 notificationId=string:" +
         told.id + "\n1 objectName=NVSList_T:EMS=Quor/1" + told.name +
         "\n2 nativeEMSName=string:" + told.nativeName +
         "\n3 nativeProbableCause=string:Receive power lost"
         "\n4 objectType=ObjectType_T:" +
         told.objectType + "\n5 emsTime=string:" + told.emsTime +
         "\n6 neTime=string:" + told.neTime +
         "\n7 isClearable=boolean:true"
         "\n8 layerRate=short:1"
         "\n9 probableCause=string:LOS"
         "\n10 probableCauseQualifier=string:/rack=1/port=2"
         "\n11 perceivedSeverity=PerceivedSeverity_T:" +
         told.severity +
         "\n12 serviceAffecting=ServiceAffecting_T"
         "\n13 affectedTPList=NamingAttributesList_T"
         "\n14 additionalText=string:" +
         told.text +
         "\n15 additionalInfo=NVSList_T:"
         "\n16 objectTypeQualifier=string:" +
         told.qualifier + "\nbody=empty\n";
}

// Raised two and a half seconds ago.
AlarmRecord lossOfSignal(long deviceId) {
  AlarmRecord alarm;
  alarm.deviceId = deviceId;
  alarm.probableCause = "LOS";
  alarm.qualifier = "/rack=1/port=2";
  alarm.nativeProbableCause = "Receive power lost";
  alarm.severity = Severity::MAJOR;
  alarm.raisedAt = NOW - std::chrono::milliseconds(2500);
  alarm.additionalText = "see the card";
  return alarm;
}

class AlarmEvents : public Network {};

TEST_F(AlarmEvents, tellARaisedAlarmByPosition) {
  AlarmRecord alarm = lossOfSignal(1);
  ASSERT_EQ(inventory->raiseAlarm(alarm), Result::DONE);
  EXPECT_EQ(told(), Texts{alarmText({})});
}

TEST_F(AlarmEvents, haveContentsThatAReaderCanTakeOut) {
  AlarmRecord alarm = lossOfSignal(1);
  ASSERT_EQ(inventory->raiseAlarm(alarm), Result::DONE);
  const auto event = onlyEvent();
  const auto& properties = event.filterable_data;
  transmissionParameters::LayerRate_T layer = 0;
  EXPECT_TRUE(properties[8].value >>= layer);
  notifications::ServiceAffecting_T affecting = notifications::SA_SERVICE_AFFECTING;
  ASSERT_TRUE(properties[12].value >>= affecting);
  EXPECT_EQ(affecting, notifications::SA_UNKNOWN);
  const globaldefs::NamingAttributesList_T* affected = nullptr;
  ASSERT_TRUE(properties[13].value >>= affected);
  EXPECT_EQ(affected->length(), 0U);
}

TEST_F(AlarmEvents, tellAnAlarmOfTheEmsItself) {
  AlarmRecord alarm = lossOfSignal(0);
  ASSERT_EQ(inventory->raiseAlarm(alarm), Result::DONE);
  Told expected;
  expected.name = "";
  expected.nativeName = "Quor/1";
  expected.objectType = "OT_EMS";
  expected.qualifier = "EMS";
  EXPECT_EQ(told(), Texts{alarmText(expected)});
}

TEST_F(AlarmEvents, callTheEmsByTheNameItWasGiven) {
  ASSERT_EQ(inventory->setNativeName(ObjectKey::ems(), "Headquarters"), Result::DONE);
  told();
  AlarmRecord alarm = lossOfSignal(0);
  ASSERT_EQ(inventory->raiseAlarm(alarm), Result::DONE);
  EXPECT_NE(told().at(0).find("2 nativeEMSName=string:Headquarters\n"), std::string::npos);
}

TEST_F(AlarmEvents, tellAClearedAlarmWithTheTimeOfClearing) {
  AlarmRecord alarm = lossOfSignal(1);
  ASSERT_EQ(inventory->raiseAlarm(alarm), Result::DONE);
  told();
  ASSERT_EQ(inventory->clearAlarm(alarm.id), Result::DONE);
  Told expected;
  expected.severity = "PS_CLEARED";
  expected.neTime = expected.emsTime;
  EXPECT_EQ(told(), Texts{alarmText(expected)});
}

TEST_F(AlarmEvents, tellAnAlarmThatGotWorseUnderItsOldNumber) {
  AlarmRecord alarm = lossOfSignal(1);
  ASSERT_EQ(inventory->raiseAlarm(alarm), Result::DONE);
  ASSERT_EQ(inventory->raiseAlarm(alarm), Result::DONE);  // the same again: nothing new
  alarm.severity = Severity::CRITICAL;
  alarm.additionalText = "the card is dead";
  ASSERT_EQ(inventory->raiseAlarm(alarm), Result::DONE);
  Told worse;
  worse.severity = "PS_CRITICAL";
  worse.text = "the card is dead";
  EXPECT_EQ(told(), (Texts{alarmText({}), alarmText(worse)}));
}

TEST_F(AlarmEvents, numberAlarmsApart) {
  AlarmRecord first = lossOfSignal(1);
  AlarmRecord second = lossOfSignal(2);
  ASSERT_EQ(inventory->raiseAlarm(first), Result::DONE);
  ASSERT_EQ(inventory->raiseAlarm(second), Result::DONE);
  Told other;
  other.id = "2";
  other.name = "|ManagedElement=2";
  other.nativeName = inventory->device(2)->name;
  EXPECT_EQ(told(), (Texts{alarmText({}), alarmText(other)}));
}

// The device is not there any more when its alarms are told as cleared.
TEST_F(AlarmEvents, tellTheAlarmsOfARemovedDeviceBeforeItsRemoval) {
  DeviceRecord device;
  device.name = "short-lived";
  ASSERT_EQ(inventory->create(device), Result::DONE);
  AlarmRecord alarm = lossOfSignal(device.id);
  ASSERT_EQ(inventory->raiseAlarm(alarm), Result::DONE);
  told();
  ASSERT_EQ(inventory->remove(keyOf(device)), Result::DONE);
  Told cleared;
  cleared.name = "|ManagedElement=5";
  cleared.nativeName = "";
  cleared.severity = "PS_CLEARED";
  cleared.neTime = cleared.emsTime;
  const Texts texts = told();
  ASSERT_EQ(texts.size(), 2U);
  EXPECT_EQ(texts[0], alarmText(cleared));
  EXPECT_EQ(texts[1].rfind("header=tmf_mtnm|NT_OBJECT_DELETION|", 0), 0U) << texts[1];
}

}  // namespace
