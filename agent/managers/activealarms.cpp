#include "agent/managers/activealarms.h"

#include <cstring>
#include <string>
#include <vector>

#include "agent/base/sequences.h"
#include "agent/tmf/alarmevent.h"
#include "agent/tmf/errors.h"

namespace zk::agent {

namespace {

// Of what a query leaves out: some times as much as there is.
constexpr std::size_t MOST_CAUSES = 1024;
constexpr std::size_t MOST_SEVERITIES = 64;
constexpr std::size_t LONGEST_CAUSE = 255;

void requireAtMost(std::size_t most, std::size_t count, const char* what) {
  if (count > most) {
    throw refusal(globaldefs::EXCPT_INVALID_INPUT,
                  "more than " + std::to_string(most) + " " + what);
  }
}

std::vector<long> idsOfActive(const Inventory& inventory, const ExcludedAlarms& excluded,
                              std::optional<long> deviceId) {
  std::vector<long> ids;
  for (const AlarmRecord& alarm : inventory.activeAlarms(deviceId)) {
    if (!excluded.contains(alarm)) {
      ids.push_back(alarm.id);
    }
  }
  return ids;
}

CosNotification::StructuredEvent listed(const Inventory& inventory, const AlarmRecord& alarm) {
  const std::string raised = timeRaised(alarm);
  return alarmEvent(alarm, nativeNameOf(inventory, alarm), {raised, raised});
}

}  // namespace

ExcludedAlarms::ExcludedAlarms(const notifications::ProbableCauseList_T& causes,
                               const notifications::PerceivedSeverityList_T& excludedSeverities) {
  requireAtMost(MOST_CAUSES, causes.length(), "probable causes");
  requireAtMost(MOST_SEVERITIES, excludedSeverities.length(), "severities");
  for (CORBA::ULong i = 0; i < causes.length(); ++i) {
    requireAtMost(LONGEST_CAUSE, std::strlen(causes[i]), "characters in a probable cause");
    probableCauses.emplace(causes[i]);
  }
  for (CORBA::ULong i = 0; i < excludedSeverities.length(); ++i) {
    severities.insert(severityOf(excludedSeverities[i]));
  }
}

bool ExcludedAlarms::contains(const AlarmRecord& alarm) const {
  return probableCauses.count(alarm.probableCause) != 0 || severities.count(alarm.severity) != 0;
}

PagedList<notifications::EventList_T> activeAlarms(const Inventory& inventory,
                                                   const ExcludedAlarms& excluded,
                                                   std::optional<long> deviceId) {
  std::vector<long> ids = idsOfActive(inventory, excluded, deviceId);
  const std::size_t length = ids.size();
  return {length, [&inventory, excluded, ids = std::move(ids)](std::size_t from, std::size_t count,
                                                               notifications::EventList_T& out) {
            for (std::size_t i = from; i < from + count; ++i) {
              const std::optional<AlarmRecord> alarm = inventory.alarm(ids[i]);
              // It may have become one of those that are left out.
              if (alarm && !excluded.contains(*alarm)) {
                append(out, listed(inventory, *alarm));
              }
            }
          }};
}

}  // namespace zk::agent
