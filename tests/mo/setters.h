// The two attribute setters that follow the same rules, as the value that a
// test runs with, and the platform around them.
#ifndef ZK_TESTS_MO_SETTERS_H
#define ZK_TESTS_MO_SETTERS_H

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

#include "tests/support/dump.h"
#include "tests/support/journal.h"
#include "tests/support/objectevent.h"
#include "zk_quornex/mo/commonfunc.h"

namespace zk::test {

struct Setter {
  const char* attribute;
  const char* service;  // what the EMS is called by
  unsigned long (*byNmsName)(const globaldefs::NVSList_T&, const char*);
  unsigned long (*byName)(NS_QUORCORBA::TEName*, const char*);
  unsigned long JournalEms::*result;
};

// Part of the test's name in ctest.
inline void PrintTo(const Setter& setter, std::ostream* out) { *out << setter.attribute; }

inline unsigned long setUserLabelUnrefused(const globaldefs::NVSList_T& name, const char* text) {
  return NS_QUORCORBA::TECommonFunc::OnSetUserLabel(name, text, false);
}

inline const Setter OWNER{"owner", "setOwner", &NS_QUORCORBA::TECommonFunc::OnSetOwner,
                          &NS_QUORCORBA::TECommonFunc::OnSetOwner, &JournalEms::ownerResult};
inline const Setter USER_LABEL{"userLabel", "setUserLabel", &setUserLabelUnrefused,
                               &NS_QUORCORBA::TECommonFunc::OnSetUserLabel,
                               &JournalEms::userLabelResult};

class SetterTest : public testing::TestWithParam<Setter> {
 protected:
  unsigned long set(const globaldefs::NVSList_T& name, const char* text) {
    return GetParam().byNmsName(name, text);
  }
  unsigned long set(NS_QUORCORBA::TEName* name, const char* text) {
    return GetParam().byName(name, text);
  }

  // What a change that the EMS accepted and the NMS is told calls, in order.
  Journal reported() const {
    return {GetParam().service, "header NT_ATTRIBUTE_VALUE_CHANGE", "time", "time", "push"};
  }

  std::string changed(const std::string& text) const {
    return "attributeList=NVList_T:[" + pair(text) + "]";
  }
  std::string pair(const std::string& text) const {
    return std::string(GetParam().attribute) + "=string:" + text;
  }

  FixedEmsConfig config;
  Journal journal;
  JournalClock clock{journal};
  JournalPusher pusher{journal};
  JournalEms backend{journal};
};

inline std::string setterName(const testing::TestParamInfo<Setter>& tested) {
  return tested.param.attribute;
}

}  // namespace zk::test

#endif
