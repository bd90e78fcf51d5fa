// Properties as values, and what is wrong with one that a client sent, as the
// entries of UnsupportedQoS and UnsupportedAdmin. No state.
#ifndef ZK_AGENT_CHANNEL_PROPERTYCHECKS_H
#define ZK_AGENT_CHANNEL_PROPERTYCHECKS_H

#include <cstring>

#include "zk_quornex/idl/events.h"

namespace zk::agent {

inline CORBA::Any anyOf(CORBA::Long value) {
  CORBA::Any any;
  any <<= value;
  return any;
}
inline CORBA::Any anyOf(CORBA::Short value) {
  CORBA::Any any;
  any <<= value;
  return any;
}
inline CORBA::Any anyOf(CORBA::ULongLong value) {
  CORBA::Any any;
  any <<= value;
  return any;
}
inline CORBA::Any anyOfBoolean(bool value) {
  CORBA::Any any;
  any <<= CORBA::Any::from_boolean(value);
  return any;
}

inline void append(CosNotification::PropertySeq& list, const char* name, const CORBA::Any& value) {
  const CORBA::ULong last = list.length();
  list.length(last + 1);
  list[last].name = CORBA::string_dup(name);
  list[last].value = value;
}

inline void append(CosNotification::NamedPropertyRangeSeq& list, const char* name,
                   const CORBA::Any& low, const CORBA::Any& high) {
  const CORBA::ULong last = list.length();
  list.length(last + 1);
  list[last].name = CORBA::string_dup(name);
  list[last].range.low_val = low;
  list[last].range.high_val = high;
}

// The range is of two empty values where none is available.
inline void append(CosNotification::PropertyErrorSeq& list, CosNotification::QoSError_code code,
                   const char* name, const CORBA::Any& low = {}, const CORBA::Any& high = {}) {
  const CORBA::ULong last = list.length();
  list.length(last + 1);
  list[last].code = code;
  list[last].name = CORBA::string_dup(name);
  list[last].available_range.low_val = low;
  list[last].available_range.high_val = high;
}

inline bool same(const char* left, const char* right) { return std::strcmp(left, right) == 0; }

// Takes the value into where it goes, or says why not. Below low a value makes no
// sense, above high it is more than there is.
template <class Number>
void takeNumber(const CosNotification::Property& property, Number low, Number high, Number& where,
                CosNotification::PropertyErrorSeq& errors) {
  Number value{};
  if (!(property.value >>= value)) {
    append(errors, CosNotification::BAD_TYPE, property.name, anyOf(low), anyOf(high));
  } else if (value < low) {
    append(errors, CosNotification::BAD_VALUE, property.name, anyOf(low), anyOf(high));
  } else if (value > high) {
    append(errors, CosNotification::UNSUPPORTED_VALUE, property.name, anyOf(low), anyOf(high));
  } else {
    where = value;
  }
}

// A property that has one value here.
template <class Number>
void checkNumber(const CosNotification::Property& property, Number fixed,
                 CosNotification::PropertyErrorSeq& errors) {
  Number value{};
  if (!(property.value >>= value)) {
    append(errors, CosNotification::BAD_TYPE, property.name, anyOf(fixed), anyOf(fixed));
  } else if (value != fixed) {
    append(errors, CosNotification::UNSUPPORTED_VALUE, property.name, anyOf(fixed), anyOf(fixed));
  }
}

inline void checkBoolean(const CosNotification::Property& property, bool fixed,
                         CosNotification::PropertyErrorSeq& errors) {
  CORBA::Boolean value = false;
  if (!(property.value >>= CORBA::Any::to_boolean(value))) {
    append(errors, CosNotification::BAD_TYPE, property.name, anyOfBoolean(fixed),
           anyOfBoolean(fixed));
  } else if (value != fixed) {
    append(errors, CosNotification::UNSUPPORTED_VALUE, property.name, anyOfBoolean(fixed),
           anyOfBoolean(fixed));
  }
}

}  // namespace zk::agent

#endif
