#include "agent/channel/qos.h"

#include <algorithm>
#include <array>

#include "agent/channel/propertychecks.h"

namespace zk::agent {

namespace {

using namespace CosNotification;

struct FixedShort {
  const char* name;
  CORBA::Short value;
};

constexpr std::array<FixedShort, 4> fixedShorts = {{{"EventReliability", 0},
                                                    {"ConnectionReliability", 0},
                                                    {"OrderPolicy", 1},
                                                    {"DiscardPolicy", 1}}};
constexpr std::array<const char*, 2> fixedFalse = {"StartTimeSupported", "StopTimeSupported"};
constexpr std::array<const char*, 4> unsupported = {"Priority", "StartTime", "StopTime", "Timeout"};

constexpr const char* BATCH = "MaximumBatchSize";
constexpr const char* PACING = "PacingInterval";
constexpr const char* EVENTS = "MaxEventsPerConsumer";
constexpr CORBA::ULongLong MOST_PACING = 600000000;  // a minute

template <class List>
bool isIn(const List& list, const char* name) {
  return std::any_of(list.begin(), list.end(), [&](const char* one) { return same(one, name); });
}

void checkOthers(const Property& property, PropertyErrorSeq& errors) {
  const auto fixed = std::find_if(fixedShorts.begin(), fixedShorts.end(),
                                  [&](const auto& one) { return same(one.name, property.name); });
  if (fixed != fixedShorts.end()) {
    checkNumber(property, fixed->value, errors);
  } else if (isIn(fixedFalse, property.name)) {
    checkBoolean(property, false, errors);
  } else {
    append(errors, isIn(unsupported, property.name) ? UNSUPPORTED_PROPERTY : BAD_PROPERTY,
           property.name);
  }
}

bool asksFor(const QoSProperties& properties, const char* name) {
  for (CORBA::ULong i = 0; i < properties.length(); ++i) {
    if (same(properties[i].name, name)) {
      return true;
    }
  }
  return false;
}

}  // namespace

QosValues Qos::checked(const QoSProperties& properties) const {
  QosValues result = values();
  PropertyErrorSeq errors;
  for (CORBA::ULong i = 0; i < properties.length(); ++i) {
    const Property& property = properties[i];
    if (same(property.name, BATCH)) {
      takeNumber<CORBA::Long>(property, 1, most_.batch, result.batch, errors);
    } else if (same(property.name, PACING)) {
      takeNumber<CORBA::ULongLong>(property, 0, MOST_PACING, result.pacing, errors);
    } else if (same(property.name, EVENTS)) {
      takeNumber<CORBA::Long>(property, 0, most_.eventsPerConsumer, result.eventsPerConsumer,
                              errors);
    } else {
      checkOthers(property, errors);
    }
  }
  if (errors.length() != 0) {
    throw UnsupportedQoS(errors);
  }
  return result;
}

QoSProperties* Qos::get() const {
  const QosValues now = values();
  QoSProperties_var list = new QoSProperties;
  for (const FixedShort& fixed : fixedShorts) {
    append(list.inout(), fixed.name, anyOf(fixed.value));
  }
  for (const char* const name : fixedFalse) {
    append(list.inout(), name, anyOfBoolean(false));
  }
  append(list.inout(), BATCH, anyOf(now.batch));
  append(list.inout(), PACING, anyOf(now.pacing));
  append(list.inout(), EVENTS, anyOf(now.eventsPerConsumer));
  return list._retn();
}

void Qos::set(const QoSProperties& properties) {
  const QosValues wanted = checked(properties);
  const std::lock_guard<std::mutex> guard(mutex_);
  values_ = wanted;
}

NamedPropertyRangeSeq* Qos::validate(const QoSProperties& properties) const {
  checked(properties);
  NamedPropertyRangeSeq_var ranges = new NamedPropertyRangeSeq;
  if (!asksFor(properties, BATCH)) {
    append(ranges.inout(), BATCH, anyOf(CORBA::Long{1}), anyOf(most_.batch));
  }
  if (!asksFor(properties, PACING)) {
    append(ranges.inout(), PACING, anyOf(CORBA::ULongLong{0}), anyOf(MOST_PACING));
  }
  if (!asksFor(properties, EVENTS)) {
    append(ranges.inout(), EVENTS, anyOf(CORBA::Long{0}), anyOf(most_.eventsPerConsumer));
  }
  return ranges._retn();
}

QosValues Qos::values() const {
  const std::lock_guard<std::mutex> guard(mutex_);
  return values_;
}

long Qos::limit() const {
  const CORBA::Long wanted = values().eventsPerConsumer;
  return wanted != 0 ? wanted : most_.eventsPerConsumer;
}

std::chrono::nanoseconds Qos::pacing() const {
  return std::chrono::nanoseconds(100 * static_cast<std::int64_t>(values().pacing));
}

NamedPropertyRangeSeq* validateEventQos(const QoSProperties& properties) {
  PropertyErrorSeq errors;
  for (CORBA::ULong i = 0; i < properties.length(); ++i) {
    const bool known =
        isIn(unsupported, properties[i].name) || same(properties[i].name, "EventReliability");
    append(errors, known ? UNSUPPORTED_PROPERTY : BAD_PROPERTY, properties[i].name);
  }
  if (errors.length() != 0) {
    throw UnsupportedQoS(errors);
  }
  return new NamedPropertyRangeSeq;
}

}  // namespace zk::agent
