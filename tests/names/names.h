// What the tests of the name classes share: the result codes by their values,
// the two-level kinds as a table, and an object's fields as text.
#ifndef ZK_TESTS_NAMES_NAMES_H
#define ZK_TESTS_NAMES_NAMES_H

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "tests/support/doubles.h"
#include "tests/support/dump.h"
#include "zk_quornex/names/aidname.h"
#include "zk_quornex/names/mapname.h"
#include "zk_quornex/names/tename.h"

namespace zk::test {

// Written as numbers, not taken from the library: callers outside it know only
// these.
constexpr unsigned long OK = 0;
constexpr unsigned long BAD_NAME = 0x41180060;
constexpr unsigned long EMPTY_NAME = 0x411800BD;
constexpr unsigned long OTHER_EMS = 0x411800CB;
constexpr unsigned long NO_ELEMENT_ID = 0x411800CC;
constexpr unsigned long LINK_REFUSED = 0x411800D4;
constexpr unsigned long SUBNETWORK_REFUSED = 0x411800D5;

// Every field of the object, such as "16 Quor/1 id=17 parent=3".
std::string describe(const NS_QUORCORBA::TEName& name);

// One class whose names have two levels.
struct TwoLevelKind {
  const char* pairName;
  std::unique_ptr<NS_QUORCORBA::TEName> (*make)();
  const char* value;     // one that is read, and written back as it is
  const char* badValue;  // one that is refused as malformed
  bool writesConfiguredEms;
};

extern const std::vector<TwoLevelKind> TWO_LEVEL_KINDS;

inline void PrintTo(const TwoLevelKind& kind, std::ostream* out) { *out << kind.pairName; }

// The second pair as ("EMS", "Quor/1"), (pairName, value).
inline globaldefs::NVSList_T named(const char* pairName, const char* value) {
  return makeName({{"EMS", "Quor/1"}, {pairName, value}});
}

}  // namespace zk::test

#endif
