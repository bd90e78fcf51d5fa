#include "agent/channel/qos.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace zk::agent {

namespace {

using namespace CosNotification;

template <class Number>
CORBA::Any anyOf(Number value) {
  CORBA::Any any;
  any <<= value;
  return any;
}

CORBA::Any anyOfBoolean(bool value) {
  CORBA::Any any;
  any <<= CORBA::Any::from_boolean(value);
  return any;
}

void append(PropertySeq& list, const char* name, const CORBA::Any& value) {
  const CORBA::ULong last = list.length();
  list.length(last + 1);
  list[last].name = CORBA::string_dup(name);
  list[last].value = value;
}

void append(NamedPropertyRangeSeq& list, const char* name, const CORBA::Any& low,
            const CORBA::Any& high) {
  const CORBA::ULong last = list.length();
  list.length(last + 1);
  list[last].name = CORBA::string_dup(name);
  list[last].range.low_val = low;
  list[last].range.high_val = high;
}

// The range is of two empty values where none is available.
void append(PropertyErrorSeq& list, QoSError_code code, const char* name,
            const CORBA::Any& low = {}, const CORBA::Any& high = {}) {
  const CORBA::ULong last = list.length();
  list.length(last + 1);
  list[last].code = code;
  list[last].name = CORBA::string_dup(name);
  list[last].available_range.low_val = low;
  list[last].available_range.high_val = high;
}

bool same(const char* left, const char* right) { return std::strcmp(left, right) == 0; }

// Takes the value into where it goes, or says why not. Below low a value makes no
// sense, above high it is more than there is.
template <class Number>
void takeNumber(const Property& property, Number low, Number high, Number& where,
                PropertyErrorSeq& errors) {
  Number value{};
  if (!(property.value >>= value)) {
    append(errors, BAD_TYPE, property.name, anyOf(low), anyOf(high));
  } else if (value < low) {
    append(errors, BAD_VALUE, property.name, anyOf(low), anyOf(high));
  } else if (value > high) {
    append(errors, UNSUPPORTED_VALUE, property.name, anyOf(low), anyOf(high));
  } else {
    where = value;
  }
}

// A property that has one value here.
template <class Number>
void checkNumber(const Property& property, Number fixed, PropertyErrorSeq& errors) {
  Number value{};
  if (!(property.value >>= value)) {
    append(errors, BAD_TYPE, property.name, anyOf(fixed), anyOf(fixed));
  } else if (value != fixed) {
    append(errors, UNSUPPORTED_VALUE, property.name, anyOf(fixed), anyOf(fixed));
  }
}

void checkBoolean(const Property& property, bool fixed, PropertyErrorSeq& errors) {
  CORBA::Boolean value = false;
  if (!(property.value >>= CORBA::Any::to_boolean(value))) {
    append(errors, BAD_TYPE, property.name, anyOfBoolean(fixed), anyOfBoolean(fixed));
  } else if (value != fixed) {
    append(errors, UNSUPPORTED_VALUE, property.name, anyOfBoolean(fixed), anyOfBoolean(fixed));
  }
}

struct FixedShort {
  const char* name;
  CORBA::Short value;
};

constexpr std::array<FixedShort, 4> FIXED_SHORTS = {{{"EventReliability", 0},
                                                     {"ConnectionReliability", 0},
                                                     {"OrderPolicy", 1},
                                                     {"DiscardPolicy", 1}}};
constexpr std::array<const char*, 2> FIXED_FALSE = {"StartTimeSupported", "StopTimeSupported"};
constexpr std::array<const char*, 4> UNSUPPORTED = {"Priority", "StartTime", "StopTime", "Timeout"};

constexpr const char* BATCH = "MaximumBatchSize";
constexpr const char* PACING = "PacingInterval";
constexpr const char* EVENTS = "MaxEventsPerConsumer";
constexpr CORBA::ULongLong MOST_PACING = 600000000;  // a minute

template <class List>
bool isIn(const List& list, const char* name) {
  return std::any_of(list.begin(), list.end(), [&](const char* one) { return same(one, name); });
}

void checkOthers(const Property& property, PropertyErrorSeq& errors) {
  const auto fixed = std::find_if(FIXED_SHORTS.begin(), FIXED_SHORTS.end(),
                                  [&](const auto& one) { return same(one.name, property.name); });
  if (fixed != FIXED_SHORTS.end()) {
    checkNumber(property, fixed->value, errors);
  } else if (isIn(FIXED_FALSE, property.name)) {
    checkBoolean(property, false, errors);
  } else {
    append(errors, isIn(UNSUPPORTED, property.name) ? UNSUPPORTED_PROPERTY : BAD_PROPERTY,
           property.name);
  }
}

// The names that there are make a list of some twenty.
void checkLength(const PropertySeq& properties) {
  constexpr CORBA::ULong MOST_PROPERTIES = 64;
  if (properties.length() > MOST_PROPERTIES) {
    throw CORBA::BAD_PARAM();
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

Qos::Most Qos::mostOf(const ChannelSettings& settings) {
  return {static_cast<CORBA::Long>(settings.eventsPerCall),
          static_cast<CORBA::Long>(settings.eventsPerConsumer)};
}

QosValues Qos::checked(const QoSProperties& properties) const {
  checkLength(properties);
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
  for (const FixedShort& fixed : FIXED_SHORTS) {
    append(list.inout(), fixed.name, anyOf(fixed.value));
  }
  for (const char* const name : FIXED_FALSE) {
    append(list.inout(), name, anyOfBoolean(false));
  }
  append(list.inout(), BATCH, anyOf(now.batch));
  append(list.inout(), PACING, anyOf(now.pacing));
  append(list.inout(), EVENTS, anyOf(now.eventsPerConsumer));
  return list._retn();
}

void Qos::set(const QoSProperties& properties) {
  const QosValues wanted = checked(properties);
  const MutexLock guard(mutex_);
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
  const MutexLock guard(mutex_);
  return values_;
}

long Qos::limit() const {
  const CORBA::Long wanted = values().eventsPerConsumer;
  return wanted != 0 ? wanted : most_.eventsPerConsumer;
}

std::chrono::nanoseconds Qos::pacing() const {
  return std::chrono::nanoseconds(100 * static_cast<std::int64_t>(values().pacing));
}

AdminProperties* FixedProperties::get() const {
  AdminProperties_var list = new AdminProperties;
  append(list.inout(), "MaxQueueLength", anyOf(CORBA::Long{0}));
  append(list.inout(), "MaxConsumers", anyOf(maxConsumers_));
  append(list.inout(), "MaxSuppliers", anyOf(CORBA::Long{1}));
  append(list.inout(), "RejectNewEvents", anyOfBoolean(true));
  return list._retn();
}

void FixedProperties::check(const AdminProperties& properties) const {
  checkLength(properties);
  PropertyErrorSeq errors;
  for (CORBA::ULong i = 0; i < properties.length(); ++i) {
    const Property& property = properties[i];
    if (same(property.name, "RejectNewEvents")) {
      checkBoolean(property, true, errors);
    } else if (same(property.name, "MaxQueueLength")) {
      checkNumber<CORBA::Long>(property, 0, errors);
    } else if (same(property.name, "MaxConsumers")) {
      checkNumber<CORBA::Long>(property, maxConsumers_, errors);
    } else if (same(property.name, "MaxSuppliers")) {
      checkNumber<CORBA::Long>(property, 1, errors);
    } else {
      append(errors, BAD_PROPERTY, property.name);
    }
  }
  if (errors.length() != 0) {
    throw UnsupportedAdmin(errors);
  }
}

NamedPropertyRangeSeq* validateEventQos(const QoSProperties& properties) {
  checkLength(properties);
  PropertyErrorSeq errors;
  for (CORBA::ULong i = 0; i < properties.length(); ++i) {
    const bool known =
        isIn(UNSUPPORTED, properties[i].name) || same(properties[i].name, "EventReliability");
    append(errors, known ? UNSUPPORTED_PROPERTY : BAD_PROPERTY, properties[i].name);
  }
  if (errors.length() != 0) {
    throw UnsupportedQoS(errors);
  }
  return new NamedPropertyRangeSeq;
}

}  // namespace zk::agent
