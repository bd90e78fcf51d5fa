// The managers' queries for active alarms.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "agent/managers/managers.h"
#include "tests/agent/support/localagent.h"
#include "tests/agent/support/names.h"
#include "tests/agent/support/refusals.h"

namespace {

using managedElementManager::ManagedElementMgr_I;
using zk::agent::AlarmRecord;
using zk::agent::Severity;
using zk::test::LocalAgent;
using zk::test::named;
using zk::test::refusalBy;

// The notification ids.
std::string idsOf(const notifications::EventList_T& events) {
  std::string ids;
  for (CORBA::ULong i = 0; i < events.length(); ++i) {
    const char* id = nullptr;
    EXPECT_TRUE(events[i].filterable_data[0].value >>= id);
    ids += (i == 0 ? "" : " ") + std::string(id == nullptr ? "?" : id);
  }
  return ids;
}

class ActiveAlarmQueries : public testing::Test {
 protected:
  ActiveAlarmQueries() {
    raise(0, "EMS", Severity::WARNING);
    raise(1, "LOS", Severity::CRITICAL);
    raise(2, "LOS", Severity::MAJOR);
    raise(1, "AIS", Severity::MINOR);
    raise(0, "LOS", Severity::MAJOR);
    causes.length(1);
    causes[0] = CORBA::string_dup("LOS");
    severities.length(1);
    severities[0] = notifications::PS_MINOR;
  }

  void raise(long deviceId, const char* cause, Severity severity) {
    AlarmRecord alarm;
    alarm.deviceId = deviceId;
    alarm.probableCause = cause;
    alarm.severity = severity;
    ASSERT_EQ(agent.inventory->raiseAlarm(alarm), zk::agent::Result::DONE);
  }

  LocalAgent agent{{}, {4, 2}};
  const emsMgr::EMSMgr_I_var ems = agent.manager<emsMgr::EMSMgr_I>("EMS");
  const managedElementManager::ManagedElementMgr_I_var elements =
      agent.manager<ManagedElementMgr_I>("ManagedElement");
  notifications::ProbableCauseList_T noCauses;
  notifications::PerceivedSeverityList_T noSeverities;
  notifications::ProbableCauseList_T causes;          // LOS
  notifications::PerceivedSeverityList_T severities;  // minor
  notifications::EventList_T_var events;
  notifications::EventIterator_I_var iterator;
};

TEST_F(ActiveAlarmQueries, answerOfEveryObject) {
  ems->getAllEMSAndMEActiveAlarms(noCauses, noSeverities, 10, events.out(), iterator.out());
  EXPECT_EQ(idsOf(events.in()), "1 2 3 4 5");
  EXPECT_TRUE(CORBA::is_nil(iterator.in()));
  ems->getAllEMSAndMEActiveAlarms(causes, noSeverities, 10, events.out(), iterator.out());
  EXPECT_EQ(idsOf(events.in()), "1 4");
  ems->getAllEMSAndMEActiveAlarms(causes, severities, 10, events.out(), iterator.out());
  EXPECT_EQ(idsOf(events.in()), "1");
}

TEST_F(ActiveAlarmQueries, answerOfTheEmsAlone) {
  ems->getAllEMSSystemActiveAlarms(noSeverities, 10, events.out(), iterator.out());
  EXPECT_EQ(idsOf(events.in()), "1 5");
  severities[0] = notifications::PS_MAJOR;
  ems->getAllEMSSystemActiveAlarms(severities, 10, events.out(), iterator.out());
  EXPECT_EQ(idsOf(events.in()), "1");
}

TEST_F(ActiveAlarmQueries, answerOfOneElement) {
  const auto one = named("ManagedElement", "1");
  elements->getAllActiveAlarms(one, noCauses, noSeverities, 10, events.out(), iterator.out());
  EXPECT_EQ(idsOf(events.in()), "2 4");
  elements->getAllActiveAlarms(one, causes, noSeverities, 10, events.out(), iterator.out());
  EXPECT_EQ(idsOf(events.in()), "4");
  elements->getAllActiveAlarms(one, noCauses, severities, 10, events.out(), iterator.out());
  EXPECT_EQ(idsOf(events.in()), "2");
  const auto quiet = named("ManagedElement", "3");
  elements->getAllActiveAlarms(quiet, noCauses, noSeverities, 10, events.out(), iterator.out());
  EXPECT_EQ(events->length(), 0U);
  EXPECT_TRUE(CORBA::is_nil(iterator.in()));
}

TEST_F(ActiveAlarmQueries, refuseListsLongerThanTheyCanMean) {
  const auto refusal = [&] {
    return refusalBy([&] {
      ems->getAllEMSAndMEActiveAlarms(causes, severities, 10, events.out(), iterator.out());
    });
  };
  causes.length(1025);
  EXPECT_EQ(refusal(), "INVALID_INPUT: more than 1024 probable causes");
  causes.length(1);
  causes[0] = CORBA::string_dup(std::string(256, 'x').c_str());
  EXPECT_EQ(refusal(), "INVALID_INPUT: more than 255 characters in a probable cause");
  causes.length(0);
  severities.length(65);
  EXPECT_EQ(refusal(), "INVALID_INPUT: more than 64 severities");
  EXPECT_EQ(refusalBy([&] {
              ems->getAllEMSSystemActiveAlarms(severities, 10, events.out(), iterator.out());
            }),
            "INVALID_INPUT: more than 64 severities");
}

TEST_F(ActiveAlarmQueries, refuseElementsThatAreNotThere) {
  const auto refusalOf = [&](const globaldefs::NVSList_T& name) {
    return refusalBy([&] {
      elements->getAllActiveAlarms(name, noCauses, noSeverities, 10, events.out(), iterator.out());
    });
  };
  EXPECT_EQ(refusalOf(named("ManagedElement", "77")),
            "ENTITY_NOT_FOUND: the EMS has no such object: EMS=Quor/1, ManagedElement=77");
  EXPECT_EQ(refusalOf(named("TopologicalLink", "1")),
            "INVALID_INPUT: expected the name of a ManagedElement: EMS=Quor/1, TopologicalLink=1");
}

TEST_F(ActiveAlarmQueries, handOutTheRestByAnIterator) {
  ems->getAllEMSAndMEActiveAlarms(noCauses, noSeverities, 2, events.out(), iterator.out());
  EXPECT_EQ(idsOf(events.in()), "1 2");
  ASSERT_FALSE(CORBA::is_nil(iterator.in()));
  EXPECT_EQ(iterator->getLength(), 5U);
  ASSERT_EQ(agent.inventory->clearAlarm(3), zk::agent::Result::DONE);
  EXPECT_FALSE(iterator->next_n(10, events.out()));
  EXPECT_EQ(idsOf(events.in()), "4 5");
  iterator->destroy();
}

}  // namespace
