#include "agent/channel/withheld.h"

#include <algorithm>
#include <cstdio>
#include <tuple>

#include "agent/channel/eventfields.h"

namespace zk::agent {

namespace {

using CosNotification::StructuredEvent;
using NS_QUORCORBA::stDateTimeType;
using NS_QUORCORBA::TimeChange;

constexpr std::size_t MOST_ENTRIES = 64;
constexpr std::size_t SECONDS_END = 14;  // of yyyyMMddhhmmss

bool equal(const stDateTimeType& left, const stDateTimeType& right) {
  const auto fields = [](const stDateTimeType& time) {
    return std::make_tuple(time.year, time.month, time.day, time.hour, time.minute, time.second);
  };
  return fields(left) == fields(right);
}

std::string secondsText(const stDateTimeType& time) {
  char text[80];
  std::snprintf(text, sizeof text, "%04d%02d%02d%02d%02d%02d", time.year, time.month, time.day,
                time.hour, time.minute, time.second);
  return text;
}

bool isIn(const std::vector<long>& list, long value) {
  return std::find(list.begin(), list.end(), value) != list.end();
}

// An enumeration or a short as a number.
template <class Type>
bool numberIsIn(const std::vector<long>& list, const StructuredEvent& event, const char* name) {
  const CORBA::Any* const value = propertyOf(event, name);
  Type number{};
  return value != nullptr && (*value >>= number) && isIn(list, static_cast<long>(number));
}

bool inTime(const stDateTimeType& start, const stDateTimeType& end, const StructuredEvent& event) {
  const bool hasStart = TimeChange::checkDateTimeValid(start);
  const bool hasEnd = TimeChange::checkDateTimeValid(end);
  if (!hasStart && !hasEnd) {
    return true;
  }
  const std::string time = textOf(event, "emsTime");
  if (time.size() <= SECONDS_END || time.back() != 'Z') {
    return false;
  }
  const std::string seconds = time.substr(0, SECONDS_END);
  return (!hasStart || seconds >= secondsText(start)) && (!hasEnd || seconds <= secondsText(end));
}

template <class Value>
void addAll(std::vector<Value>& to, const std::vector<Value>& from) {
  to.insert(to.end(), from.begin(), from.end());
}

}  // namespace

bool Criteria::isEmpty() const {
  return severities.empty() && layers.empty() && objectTypes.empty() && types.empty() &&
         !TimeChange::checkDateTimeValid(start) && !TimeChange::checkDateTimeValid(end);
}

bool Criteria::matches(const StructuredEvent& event) const {
  const std::string type(event.header.fixed_header.event_type.type_name);
  return (types.empty() || std::find(types.begin(), types.end(), type) != types.end()) &&
         (severities.empty() ||
          numberIsIn<notifications::PerceivedSeverity_T>(severities, event, "perceivedSeverity")) &&
         (layers.empty() || numberIsIn<CORBA::Short>(layers, event, "layerRate")) &&
         (objectTypes.empty() ||
          numberIsIn<notifications::ObjectType_T>(objectTypes, event, "objectType")) &&
         inTime(start, end, event);
}

bool operator==(const Criteria& left, const Criteria& right) {
  return left.severities == right.severities && left.layers == right.layers &&
         left.objectTypes == right.objectTypes && left.types == right.types &&
         equal(left.start, right.start) && equal(left.end, right.end);
}

std::vector<Withheld::Entry>::iterator Withheld::find(const Criteria& criteria) {
  return std::find_if(entries_.begin(), entries_.end(),
                      [&](const Entry& entry) { return entry.criteria == criteria; });
}

int Withheld::suspend(const Criteria& criteria) {
  const auto found = find(criteria);
  if (found != entries_.end()) {
    found->active = true;
    return 0;
  }
  if (criteria.isEmpty() || entries_.size() >= MOST_ENTRIES) {
    return -1;
  }
  entries_.push_back({criteria, true});
  return 0;
}

int Withheld::resume(const Criteria& criteria) {
  const auto found = find(criteria);
  if (found == entries_.end()) {
    return -1;
  }
  found->active = false;
  return 0;
}

int Withheld::cancel(const Criteria& criteria) {
  if (criteria.isEmpty()) {
    entries_.clear();
    return 0;
  }
  const auto found = find(criteria);
  if (found == entries_.end()) {
    return -1;
  }
  entries_.erase(found);
  return 0;
}

bool Withheld::isWithheld(const StructuredEvent& event) const {
  return std::any_of(entries_.begin(), entries_.end(), [&](const Entry& entry) {
    return entry.active && entry.criteria.matches(event);
  });
}

Criteria Withheld::inForce() const {
  Criteria all;
  for (const Entry& entry : entries_) {
    if (entry.active) {
      addAll(all.severities, entry.criteria.severities);
      addAll(all.layers, entry.criteria.layers);
      addAll(all.objectTypes, entry.criteria.objectTypes);
      addAll(all.types, entry.criteria.types);
      all.start = entry.criteria.start;
      all.end = entry.criteria.end;
    }
  }
  return all;
}

}  // namespace zk::agent
