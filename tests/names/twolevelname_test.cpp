// What all two-level names have in common: the checks that open the reading, in
// their order, and the shape of what is written.
#include <gtest/gtest.h>

#include <cctype>

#include "tests/names/names.h"

namespace zk::test {

namespace {

using globaldefs::NVSList_T;
using NS_QUORCORBA::TEName;

class TwoLevelName : public testing::TestWithParam<TwoLevelKind> {
 protected:
  // An object whose EMS name tells whether reading has set it.
  std::unique_ptr<TEName> fresh() const {
    auto name = GetParam().make();
    name->emsName_ = "as before";
    return name;
  }

  // Reading list gives code and changes no field.
  void expectUntouched(const NVSList_T& list, unsigned long code) const {
    const auto name = fresh();
    const std::string before = describe(*name);
    EXPECT_EQ(name->Nms2EmsName(list), code) << dumpName(list);
    EXPECT_EQ(describe(*name), before) << dumpName(list);
  }

  NVSList_T good() const { return named(GetParam().pairName, GetParam().value); }

  FixedEmsConfig config_;
};

TEST_P(TwoLevelName, readsItsOwnPairs) {
  const auto name = fresh();
  EXPECT_EQ(name->Nms2EmsName(good()), OK);
  EXPECT_EQ(name->emsName_, "Quor/1");
}

TEST_P(TwoLevelName, writesWhatItRead) {
  const auto name = fresh();
  ASSERT_EQ(name->Nms2EmsName(good()), OK);
  NVSList_T list;
  EXPECT_EQ(name->Ems2NmsName(list), OK);
  EXPECT_EQ(dumpName(list), dumpName(good()));
}

TEST_P(TwoLevelName, refusesEveryOtherCountOfPairs) {
  const char* pair = GetParam().pairName;
  const char* value = GetParam().value;
  expectUntouched(makeName({}), BAD_NAME);
  expectUntouched(makeName({{"EMS", "Quor/1"}}), BAD_NAME);
  expectUntouched(makeName({{pair, value}}), BAD_NAME);
  expectUntouched(makeName({{"EMS", "Quor/1"}, {pair, value}, {pair, value}}), BAD_NAME);
  expectUntouched(makeName({{"EMS", "Quor/1"}, {pair, value}, {"TopologicalLink", "5"}}), BAD_NAME);
}

TEST_P(TwoLevelName, looksAtTheCountBeforeTheEms) {
  const char* pair = GetParam().pairName;
  expectUntouched(makeName({{"EMS", "other"}}), BAD_NAME);
  expectUntouched(makeName({{"EMS", "other"}, {pair, "1"}, {pair, "1"}}), BAD_NAME);
}

TEST_P(TwoLevelName, refusesAFirstPairNotNamedEms) {
  for (const char* first : {"ems", "Ems", "EMS ", " EMS", "EMSS", "EM", "", "ManagedElement"}) {
    expectUntouched(makeName({{first, "Quor/1"}, {GetParam().pairName, GetParam().value}}),
                    BAD_NAME);
  }
}

TEST_P(TwoLevelName, refusesTheSecondPairOfEveryOtherKind) {
  for (const char* second : {"EMS", "ManagedElement", "MultiLayerSubnetwork", "TopologicalLink",
                             "Node", "SubMap", "DisplayLink", "PhysicalLink", "AID", "DN", ""}) {
    if (std::string(second) != GetParam().pairName) {
      expectUntouched(named(second, GetParam().value), BAD_NAME);
    }
  }
}

TEST_P(TwoLevelName, comparesTheSecondPairsNameExactly) {
  const std::string pair = GetParam().pairName;
  std::string otherCase = pair;
  otherCase[0] = static_cast<char>(std::tolower(otherCase[0]));
  for (const std::string& second :
       {otherCase, pair + " ", " " + pair, pair + "s", pair.substr(0, pair.size() - 1)}) {
    expectUntouched(named(second.c_str(), GetParam().value), BAD_NAME);
  }
}

TEST_P(TwoLevelName, looksAtThePairNamesBeforeTheEms) {
  expectUntouched(makeName({{"ems", "other"}, {GetParam().pairName, GetParam().value}}), BAD_NAME);
  expectUntouched(makeName({{"EMS", "other"}, {"Nothing", GetParam().value}}), BAD_NAME);
}

TEST_P(TwoLevelName, refusesAnotherEms) {
  for (const char* ems : {"other", "quor/1", "Quor/1 ", " Quor/1", "Quor/", "Quor/11", ""}) {
    expectUntouched(makeName({{"EMS", ems}, {GetParam().pairName, GetParam().value}}), OTHER_EMS);
  }
}

TEST_P(TwoLevelName, looksAtTheEmsBeforeTheValue) {
  expectUntouched(makeName({{"EMS", "other"}, {GetParam().pairName, GetParam().badValue}}),
                  OTHER_EMS);
  expectUntouched(makeName({{"EMS", "other"}, {GetParam().pairName, ""}}), OTHER_EMS);
}

TEST_P(TwoLevelName, setsOnlyTheEmsWhenTheValueIsMalformed) {
  const auto name = fresh();
  name->emsName_ = "Quor/1";
  const std::string expected = describe(*name);
  name->emsName_ = "as before";
  EXPECT_EQ(name->Nms2EmsName(named(GetParam().pairName, GetParam().badValue)), BAD_NAME);
  EXPECT_EQ(describe(*name), expected);
}

TEST_P(TwoLevelName, refusesNullTexts) {
  const auto withNull = [this](CORBA::ULong pair, bool value) {
    NVSList_T list = good();
    (value ? list[pair].value : list[pair].name) = static_cast<char*>(nullptr);
    return list;
  };
  EXPECT_EQ(fresh()->Nms2EmsName(withNull(0, false)), BAD_NAME);
  EXPECT_EQ(fresh()->Nms2EmsName(withNull(1, false)), BAD_NAME);
  EXPECT_EQ(fresh()->Nms2EmsName(withNull(0, true)), OTHER_EMS);
  EXPECT_EQ(fresh()->Nms2EmsName(withNull(1, true)), BAD_NAME);
}

TEST_P(TwoLevelName, followsTheConfigurationAndNotTheObject) {
  const auto name = fresh();
  config_.emsName = "Quor/2";
  EXPECT_EQ(name->Nms2EmsName(good()), OTHER_EMS);
  NVSList_T list = good();
  list[0].value = CORBA::string_dup("Quor/2");
  EXPECT_EQ(name->Nms2EmsName(list), OK);
  EXPECT_EQ(name->emsName_, "Quor/2");
}

TEST_P(TwoLevelName, writesExactlyTwoPairsOverWhateverWasThere) {
  const auto name = fresh();
  ASSERT_EQ(name->Nms2EmsName(good()), OK);
  for (const CORBA::ULong length : {0U, 1U, 2U, 3U, 7U}) {
    NVSList_T list;
    list.length(length);
    EXPECT_EQ(name->Ems2NmsName(list), OK);
    EXPECT_EQ(dumpName(list), dumpName(good())) << length;
  }
}

TEST_P(TwoLevelName, writesItsOwnEmsNameUnlessItsKindAsksTheConfiguration) {
  const auto name = fresh();
  ASSERT_EQ(name->Nms2EmsName(good()), OK);
  for (const char* ems : {"elsewhere", ""}) {
    name->emsName_ = ems;
    NVSList_T list;
    EXPECT_EQ(name->Ems2NmsName(list), OK);
    EXPECT_STREQ(list[0].value.in(), GetParam().writesConfiguredEms ? "Quor/1" : ems);
  }
}

TEST_P(TwoLevelName, readsAndWritesWithoutTracing) {
  const CapturedTrace trace;
  const auto name = fresh();
  NVSList_T list;
  name->Nms2EmsName(makeName({}));
  name->Nms2EmsName(makeName({{"EMS", "other"}, {GetParam().pairName, "1"}}));
  name->Nms2EmsName(named(GetParam().pairName, GetParam().badValue));
  name->Nms2EmsName(good());
  name->Ems2NmsName(list);
  EXPECT_TRUE(trace.texts().empty());
}

INSTANTIATE_TEST_SUITE_P(Kinds, TwoLevelName, testing::ValuesIn(TWO_LEVEL_KINDS),
                         [](const auto& kind) { return std::string(kind.param.pairName); });

}  // namespace

}  // namespace zk::test
