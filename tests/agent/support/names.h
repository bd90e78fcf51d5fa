// Names as tests write them: named("ManagedElement", "7").
#ifndef ZK_TESTS_AGENT_SUPPORT_NAMES_H
#define ZK_TESTS_AGENT_SUPPORT_NAMES_H

#include <string>
#include <utility>
#include <vector>

#include "zk_quornex/idl/names.h"

namespace zk::test {

inline globaldefs::NVSList_T nameOf(const std::vector<std::pair<std::string, std::string>>& pairs) {
  globaldefs::NVSList_T name;
  name.length(static_cast<CORBA::ULong>(pairs.size()));
  for (CORBA::ULong i = 0; i < name.length(); ++i) {
    name[i].name = CORBA::string_dup(pairs[i].first.c_str());
    name[i].value = CORBA::string_dup(pairs[i].second.c_str());
  }
  return name;
}

// Of the EMS that the default platform is configured with.
inline globaldefs::NVSList_T named(const std::string& kind, const std::string& id) {
  return nameOf({{"EMS", "Quor/1"}, {kind, id}});
}

// The name as one comparable text.
inline std::string dump(const globaldefs::NVSList_T& name) {
  std::string text;
  for (CORBA::ULong i = 0; i < name.length(); ++i) {
    text += (i == 0 ? "" : "|") + std::string(name[i].name) + "=" + std::string(name[i].value);
  }
  return text;
}

}  // namespace zk::test

#endif
