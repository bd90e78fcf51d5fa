// The rules that the values of a template obey.
#include <gtest/gtest.h>

#include "zk_quornex/names/nameparse.h"

namespace NS_QUORCORBA {
namespace {

using Values = std::map<std::string, unsigned long>;
using Ids = std::vector<unsigned int>;

constexpr unsigned long MOST = 18446744073709551615UL;

Ids idsFrom(unsigned int first, unsigned int last) {
  Ids ids;
  for (unsigned int id = first; id <= last; ++id) {
    ids.push_back(id);
  }
  return ids;
}

struct Rule {
  const char* key;
  std::vector<unsigned long> accepted;
  std::vector<unsigned long> refused;
};

void expectRule(const Ids& ids, const Rule& rule) {
  for (const unsigned int id : ids) {
    for (const unsigned long value : rule.accepted) {
      EXPECT_TRUE(CheckTPValues({{rule.key, value}}, id))
          << "template " << id << ", " << rule.key << '=' << value;
    }
    for (const unsigned long value : rule.refused) {
      EXPECT_FALSE(CheckTPValues({{rule.key, value}}, id))
          << "template " << id << ", " << rule.key << '=' << value;
    }
  }
}

void expectOnlyNonZero(const Ids& ids, const std::vector<const char*>& keys) {
  for (const char* key : keys) {
    expectRule(ids, {key, {1, 2, 4, 8, 4294967296, MOST}, {0}});
  }
}

TEST(CheckTPValues, wantsRackOneInEquipmentNames) {
  expectRule(idsFrom(1, 4), {"rack", {1}, {0, 2, 3, 4294967297, MOST}});
  expectOnlyNonZero(idsFrom(5, 23), {"rack"});
}

TEST(CheckTPValues, wantsNonZeroOtherKeysInEquipmentNames) {
  expectOnlyNonZero(idsFrom(1, 4), {"shelf", "slot", "port", "k", "l", "m", "j", "sts3c_au4",
                                    "tu3_vc3", "vt2_tu12", "Rack", "x", ""});
}

TEST(CheckTPValues, wantsADirectionOfOneOrTwoFromPortsOn) {
  expectOnlyNonZero(idsFrom(1, 3), {"direction"});
  expectRule(idsFrom(4, 23), {"direction", {1, 2}, {0, 3, 4294967297, MOST}});
}

TEST(CheckTPValues, boundsTheNumbersInsideAVC4) {
  expectRule(idsFrom(5, 23), {"k", {1, 2, 3}, {0, 4, 7, MOST}});
  expectRule(idsFrom(5, 23), {"l", {1, 3, 4, 7}, {0, 8, MOST}});
  expectRule(idsFrom(5, 23), {"m", {1, 2, 3}, {0, 4, 7, MOST}});
  expectOnlyNonZero(idsFrom(5, 23), {"K", "L", "M", "kk"});
}

TEST(CheckTPValues, wantsTheLayersToBeOne) {
  for (const char* key : {"sts3c_au4", "tu3_vc3", "vt2_tu12"}) {
    expectRule(idsFrom(5, 23), {key, {1}, {0, 2, 4294967297, MOST}});
  }
}

TEST(CheckTPValues, wantsNonZeroOtherKeysInLayerNames) {
  expectOnlyNonZero(idsFrom(5, 23), {"j", "frequency", "id", "dsr", "dsr_1", "dsr_4", "dsr_16",
                                     "dsr_64", "dsr_Gb", "shelf", "slot", "port", "x", ""});
}

TEST(CheckTPValues, refusesForOneBadEntryWhereverItStands) {
  const Values good = {{"a", 1}, {"k", 3}, {"z", 1}};
  EXPECT_TRUE(CheckTPValues(good, 7));
  for (const char* key : {"a", "k", "z"}) {
    Values bad = good;
    bad[key] = 0;
    EXPECT_FALSE(CheckTPValues(bad, 7)) << key;
    EXPECT_FALSE(CheckTPValues(bad, 1)) << key;
  }
}

TEST(CheckTPValues, acceptsNoValues) {
  for (const unsigned int id : idsFrom(0, 24)) {
    EXPECT_TRUE(CheckTPValues({}, id)) << id;
  }
}

TEST(CheckTPValues, hasNoRuleForOtherTemplates) {
  const Values values = {{"rack", 0}, {"direction", 9}, {"k", 4}, {"sts3c_au4", 0}, {"x", 0}};
  for (const unsigned int id : {0U, 24U, 25U, 100U, 0x80000000U, 0xFFFFFFFFU}) {
    EXPECT_TRUE(CheckTPValues(values, id)) << id;
  }
  for (const unsigned int id : idsFrom(1, 23)) {
    EXPECT_FALSE(CheckTPValues(values, id)) << id;
  }
}

}  // namespace
}  // namespace NS_QUORCORBA
