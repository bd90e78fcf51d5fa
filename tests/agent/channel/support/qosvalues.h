// Properties of the channel as one comparable text.
#ifndef ZK_TESTS_AGENT_CHANNEL_SUPPORT_QOSVALUES_H
#define ZK_TESTS_AGENT_CHANNEL_SUPPORT_QOSVALUES_H

#include <array>
#include <string>

#include "tests/agent/channel/support/events.h"
#include "tests/support/dump.h"

namespace zk::test {

inline CosNotification::PropertySeq property(const char* name, const CORBA::Any& value) {
  CosNotification::PropertySeq list;
  list.length(1);
  list[0].name = CORBA::string_dup(name);
  list[0].value = value;
  return list;
}

inline CORBA::Any flag(bool value) {
  CORBA::Any any;
  any <<= CORBA::Any::from_boolean(value);
  return any;
}

// "long:3"; 64-bit and 16-bit numbers, too.
inline std::string dumpValue(const CORBA::Any& any) {
  CORBA::ULongLong large = 0;
  CORBA::Short small = 0;
  if (any >>= large) {
    return "ulonglong:" + std::to_string(large);
  }
  if (any >>= small) {
    return "short:" + std::to_string(small);
  }
  return dumpAny(any);
}

// "CODE name low..high", one a line.
inline std::string dumpErrors(const CosNotification::PropertyErrorSeq& errors) {
  static const std::array<const char*, 7> codes = {"UNSUPPORTED_PROPERTY",
                                                   "UNAVAILABLE_PROPERTY",
                                                   "UNSUPPORTED_VALUE",
                                                   "UNAVAILABLE_VALUE",
                                                   "BAD_PROPERTY",
                                                   "BAD_TYPE",
                                                   "BAD_VALUE"};
  std::string text;
  for (CORBA::ULong i = 0; i < errors.length(); ++i) {
    text += (i == 0 ? "" : "\n") + std::string(codes.at(errors[i].code)) + " " +
            std::string(errors[i].name) + " " + dumpValue(errors[i].available_range.low_val) +
            ".." + dumpValue(errors[i].available_range.high_val);
  }
  return text;
}

// What is wrong with it; "" when it is accepted.
template <class Target>
std::string refusalOfQos(Target target, const CosNotification::QoSProperties& wanted) {
  try {
    target->set_qos(wanted);
    return "";
  } catch (const CosNotification::UnsupportedQoS& refused) {
    return dumpErrors(refused.qos_err);
  }
}

template <class List>
std::string dumpProperties(const List& list) {
  std::string text;
  for (CORBA::ULong i = 0; i < list.length(); ++i) {
    text += (i == 0 ? "" : "|") + std::string(list[i].name) + "=" + dumpValue(list[i].value);
  }
  return text;
}

}  // namespace zk::test

#endif
