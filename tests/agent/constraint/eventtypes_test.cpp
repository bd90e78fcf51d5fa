#include "agent/constraint/eventtypes.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/agent/constraint/events.h"

namespace zk::test {

namespace {

CosNotification::EventType typeOf(const char* domain, const char* type) {
  CosNotification::EventType made;
  made.domain_name = CORBA::string_dup(domain);
  made.type_name = CORBA::string_dup(type);
  return made;
}

TEST(EventTypes, patterns) {
  struct Case {
    const char* pattern;
    const char* text;
    bool expected;
  };
  for (const auto& [pattern, text, expected] :
       std::initializer_list<Case>{{"", "NT_ALARM", true},
                                   {"", "", true},
                                   {"*", "NT_ALARM", true},
                                   {"*", "", true},
                                   {"%ALL", "NT_ALARM", true},
                                   {"%all", "NT_ALARM", false},
                                   {"NT_ALARM", "NT_ALARM", true},
                                   {"NT_ALARM", "NT_ALARMS", false},
                                   {"NT_ALARM", "nt_alarm", false},
                                   {"NT_ALARM", "", false},
                                   {"NT_*", "NT_ALARM", true},
                                   {"NT_*", "NT_", true},
                                   {"NT_*", "XNT_A", false},
                                   {"*_CHANGE", "NT_STATE_CHANGE", true},
                                   {"*_CHANGE", "NT_CHANGE_STATE", false},
                                   {"NT_*_CHANGE", "NT_ATTRIBUTE_VALUE_CHANGE", true},
                                   {"*A*A*M*", "NT_ALARM", true},
                                   {"*A*A*A*", "NT_ALARM", false},
                                   {"**", "x", true},
                                   {"a*b*", "a*b", true},
                                   {"*ab", "aab", true}}) {
    EXPECT_EQ(agent::matchesTypePattern(pattern, text), expected) << pattern << " over " << text;
  }
}

// Would not come back within the test's time if stars were tried against each other.
TEST(EventTypes, manyStarsStayCheap) {
  std::string pattern;
  for (int i = 0; i < 5000; ++i) {
    pattern += "*a";
  }
  EXPECT_FALSE(agent::matchesTypePattern(pattern + "b", std::string(20000, 'a')));
}

TEST(EventTypes, domainAndTypeBothCount) {
  const auto alarmType = typeOf("tmf_mtnm", "NT_ALARM");
  EXPECT_TRUE(agent::matchesEventType(typeOf("tmf_mtnm", "NT_ALARM"), alarmType));
  EXPECT_TRUE(agent::matchesEventType(typeOf("*", "*"), alarmType));
  EXPECT_TRUE(agent::matchesEventType(typeOf("", "%ALL"), alarmType));
  EXPECT_FALSE(agent::matchesEventType(typeOf("other", "NT_ALARM"), alarmType));
  EXPECT_FALSE(agent::matchesEventType(typeOf("tmf_mtnm", "NT_TCA"), alarmType));
}

TEST(EventTypes, anyOfAListAndAllOfNone) {
  const auto alarmType = typeOf("tmf_mtnm", "NT_ALARM");
  CosNotification::EventTypeSeq patterns;
  EXPECT_TRUE(agent::matchesEventTypes(patterns, alarmType));
  patterns.length(2);
  patterns[0] = typeOf("tmf_mtnm", "NT_TCA");
  patterns[1] = typeOf("tmf_mtnm", "NT_HEARTBEAT");
  EXPECT_FALSE(agent::matchesEventTypes(patterns, alarmType));
  patterns[1] = typeOf("*", "NT_A*");
  EXPECT_TRUE(agent::matchesEventTypes(patterns, alarmType));
}

}  // namespace

}  // namespace zk::test
