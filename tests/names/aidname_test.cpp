// AID and DN names: reading and writing the three-level name.
#include "zk_quornex/names/aidname.h"

#include <gtest/gtest.h>

#include "tests/names/names.h"

namespace zk::test {

namespace {

using namespace NS_QUORCORBA;
using globaldefs::NVSList_T;

NVSList_T inside(const char* third, const char* path, const char* element = "7") {
  return makeName({{"EMS", "Quor/1"}, {"ManagedElement", element}, {third, path}});
}

class AidName : public testing::Test {
 protected:
  // An object that reading can be seen to change.
  AidName() {
    name_.ids_ = {99};
    name_.type_ = 77;
    name_.emsName_ = "as before";
  }

  void expectRead(const NVSList_T& list, unsigned long code, const std::string& fields) {
    CAAIDName name = name_;
    EXPECT_EQ(name.Nms2EmsName(list), code) << dumpName(list);
    EXPECT_EQ(describe(name), fields) << dumpName(list);
  }

  std::string written() {
    NVSList_T list = makeName({{"a", "1"}});
    const unsigned long code = name_.Ems2NmsName(list);
    return code == OK ? dumpName(list) : std::to_string(code) + " " + dumpName(list);
  }

  FixedEmsConfig config_;
  CAAIDName name_;
};

TEST_F(AidName, readsTheNumbersOfTheThirdPair) {
  const std::pair<const char*, const char*> accepted[] = {
      {"7", "7"},
      {"7/3/15", "7,3,15"},
      {"7.3.15", "7,3,15"},
      {"7.3/15", "7,3,15"},
      {"/7/3/15", "7,3,15"},
      {"7..3//15/", "7,3,15"},
      {"./.7/./3./", "7,3"},
      {"7/-3/+15", "7,-3,15"},
      {" 7/ 3/\t15", "7,3,15"},
      {"007/03", "7,3"},
      {"0/0", "0,0"},
      {"9223372036854775807/-9223372036854775808", "9223372036854775807,-9223372036854775808"},
      {"9223372036854775808/-99999999999999999999", "9223372036854775807,-9223372036854775808"},
      {"4294967303", "4294967303"},
  };
  for (const auto& [path, ids] : accepted) {
    expectRead(inside("AID", path), OK, std::string("12 Quor/1 ids=") + ids);
    expectRead(inside("DN", path), OK, std::string("20 Quor/1 ids=") + ids);
  }
}

TEST_F(AidName, keepsTheNumbersReadUpToTheRefusedOne) {
  const std::pair<const char*, const char*> refused[] = {
      {"7/3x", "7,3"}, {"7/x3", "7,0"},   {"7/3x/15", "7,3"}, {"7 /3", "7"},
      {"7/3 ", "7,3"}, {"x", "0"},        {"-", "0"},         {"7,3", "7"},
      {"7-3", "7"},    {"7/0x10", "7,0"}, {" ", "0"},         {"7/1e3", "7,1"},
  };
  for (const auto& [path, ids] : refused) {
    expectRead(inside("AID", path), BAD_NAME, std::string("12 Quor/1 ids=") + ids);
    expectRead(inside("DN", path), BAD_NAME, std::string("20 Quor/1 ids=") + ids);
  }
}

TEST_F(AidName, refusesAPathWithoutNumbersAndClearsTheList) {
  for (const char* path : {"", "/", ".", "/./..//"}) {
    expectRead(inside("AID", path), BAD_NAME, "12 Quor/1 ids=");
    expectRead(inside("DN", path), BAD_NAME, "20 Quor/1 ids=");
  }
}

TEST_F(AidName, refusesANullPath) {
  NVSList_T list = inside("AID", "7");
  list[2].value = static_cast<char*>(nullptr);
  EXPECT_EQ(name_.Nms2EmsName(list), BAD_NAME);
}

TEST_F(AidName, comparesTheThirdPairsNameExactly) {
  for (const char* third :
       {"aid", "Aid", "dn", "Dn", "AID ", " AID", "AIDS", "DNA", "D", "", "PTP"}) {
    expectRead(inside(third, "7/3"), BAD_NAME, "77 Quor/1 ids=99");
  }
}

TEST_F(AidName, checksTheElementOfAThreeLevelNameWithoutStoringIt) {
  expectRead(inside("AID", "7/3", "8"), OK, "12 Quor/1 ids=7,3");
  expectRead(inside("AID", "7/3", "0"), OK, "12 Quor/1 ids=7,3");
  for (const char* element : {"", " ", "12a", "-1", "+1"}) {
    expectRead(inside("AID", "7/3", element), BAD_NAME, "77 Quor/1 ids=99");
  }
}

TEST_F(AidName, appendsTheElementOfATwoLevelName) {
  const std::pair<const char*, const char*> accepted[] = {
      {"7", "7"},          {" 12 ", "12"},
      {"0", "0"},          {"2147483647", "2147483647"},
      {"4294967303", "7"}, {"2147483648", "-2147483648"},
      {"4294967295", "-1"}};
  for (const auto& [element, id] : accepted) {
    expectRead(named("ManagedElement", element), OK, std::string("77 Quor/1 ids=99,") + id);
  }
}

TEST_F(AidName, refusesAnElementThatIsNoNumber) {
  for (const char* element : {"", " ", "12a", "-1", "+1", "7/3", "\t7"}) {
    expectRead(named("ManagedElement", element), BAD_NAME, "77 Quor/1 ids=99");
  }
}

TEST_F(AidName, keepsItsTypeWithATwoLevelName) {
  CAAIDName name;
  ASSERT_EQ(name.Nms2EmsName(inside("DN", "7/3")), OK);
  ASSERT_EQ(name.Nms2EmsName(named("ManagedElement", "8")), OK);
  EXPECT_EQ(describe(name), "20 Quor/1 ids=7,3,8");
  ASSERT_EQ(name.Nms2EmsName(inside("AID", "1")), OK);
  EXPECT_EQ(describe(name), "12 Quor/1 ids=1");
}

TEST_F(AidName, holdsTwoNumbersAfterReadingATwoLevelNameTwice) {
  CAAIDName name;
  ASSERT_EQ(name.Nms2EmsName(named("ManagedElement", "7")), OK);
  ASSERT_EQ(name.Nms2EmsName(named("ManagedElement", "7")), OK);
  EXPECT_EQ(describe(name), "12 Quor/1 ids=7,7");
}

TEST_F(AidName, refusesTooFewPairsUntouched) {
  expectRead(makeName({}), BAD_NAME, "77 as before ids=99");
  expectRead(makeName({{"EMS", "Quor/1"}}), BAD_NAME, "77 as before ids=99");
  expectRead(makeName({{"EMS", "other"}}), BAD_NAME, "77 as before ids=99");
}

TEST_F(AidName, looksAtTheFirstTwoPairsNamesBeforeTheEms) {
  for (const char* second : {"managedElement", "Node", "", "AID"}) {
    expectRead(makeName({{"EMS", "other"}, {second, "7"}}), BAD_NAME, "77 as before ids=99");
  }
  expectRead(makeName({{"ems", "other"}, {"ManagedElement", "7"}}), BAD_NAME,
             "77 as before ids=99");
}

TEST_F(AidName, looksAtTheEmsBeforeTheRest) {
  expectRead(makeName({{"EMS", "other"}, {"ManagedElement", "x"}}), OTHER_EMS,
             "77 as before ids=99");
  expectRead(makeName({{"EMS", "quor/1"}, {"ManagedElement", "7"}, {"aid", "x"}}), OTHER_EMS,
             "77 as before ids=99");
}

TEST_F(AidName, looksAtTheElementBeforeTheThirdPair) {
  expectRead(inside("AID", "7/3", "x"), BAD_NAME, "77 Quor/1 ids=99");
}

TEST_F(AidName, judgesMoreThanThreePairsLast) {
  const auto four = [](const char* ems, const char* element) {
    return makeName({{"EMS", ems}, {"ManagedElement", element}, {"AID", "7"}, {"AID", "7"}});
  };
  expectRead(four("Quor/1", "7"), BAD_NAME, "77 Quor/1 ids=99");
  expectRead(four("other", "7"), OTHER_EMS, "77 as before ids=99");
  expectRead(four("Quor/1", "x"), BAD_NAME, "77 Quor/1 ids=99");
  expectRead(makeName({{"EMS", "other"}, {"Node", "7"}, {"AID", "7"}, {"AID", "7"}}), BAD_NAME,
             "77 as before ids=99");
}

TEST_F(AidName, readsTheFirst245CharactersOfThePath) {
  const std::string zeros(240, '0');
  expectRead(inside("AID", (zeros + "71/34").c_str()), OK, "12 Quor/1 ids=71,34");
  expectRead(inside("AID", (zeros + "71/345").c_str()), OK, "12 Quor/1 ids=71,34");
  expectRead(inside("AID", (zeros + "71/34x").c_str()), OK, "12 Quor/1 ids=71,34");
  expectRead(inside("AID", (zeros + "71/3/5/8").c_str()), OK, "12 Quor/1 ids=71,3");
  expectRead(inside("AID", (std::string(245, '/') + "7").c_str()), BAD_NAME, "12 Quor/1 ids=");
  expectRead(inside("AID", ("7/" + std::string(5000, '3')).c_str()), OK,
             "12 Quor/1 ids=7,9223372036854775807");
}

TEST_F(AidName, isWrittenWithThreeLevels) {
  name_.type_ = NAME_AID;
  name_.ids_ = {7, 3, 15};
  EXPECT_EQ(written(), "EMS=Quor/1|ManagedElement=7|AID=7/3/15");
  name_.ids_ = {7};
  EXPECT_EQ(written(), "EMS=Quor/1|ManagedElement=7|AID=7");
  name_.ids_ = {-7, 9223372036854775807, 0};
  EXPECT_EQ(written(), "EMS=Quor/1|ManagedElement=-7|AID=-7/9223372036854775807/0");
}

TEST_F(AidName, isWrittenAsADnForEveryTypeButAid) {
  name_.ids_ = {7, 3};
  for (const int type : {20, 0, 11, 13, -1}) {
    name_.type_ = type;
    EXPECT_EQ(written(), "EMS=Quor/1|ManagedElement=7|DN=7/3") << type;
  }
}

TEST_F(AidName, asksTheConfigurationForTheEmsWhenWritten) {
  name_.ids_ = {7};
  name_.type_ = NAME_AID;
  config_.emsName = "Quor/2";
  EXPECT_EQ(written(), "EMS=Quor/2|ManagedElement=7|AID=7");
}

TEST_F(AidName, isNotWrittenWithoutNumbers) {
  name_.ids_.clear();
  EXPECT_EQ(written(), std::to_string(EMPTY_NAME) + " a=1");
}

TEST_F(AidName, leavesExactlyThreePairs) {
  for (const CORBA::ULong length : {0U, 2U, 3U, 6U}) {
    NVSList_T list;
    list.length(length);
    name_.type_ = NAME_AID;
    EXPECT_EQ(name_.Ems2NmsName(list), OK);
    EXPECT_EQ(dumpName(list), "EMS=Quor/1|ManagedElement=99|AID=99") << length;
  }
}

TEST_F(AidName, comesBackFromTwoLevelsWithThree) {
  CAAIDName name;
  ASSERT_EQ(name.Nms2EmsName(named("ManagedElement", "7")), OK);
  EXPECT_EQ(describe(name), "12 Quor/1 ids=7");
  NVSList_T list;
  ASSERT_EQ(name.Ems2NmsName(list), OK);
  EXPECT_EQ(dumpName(list), "EMS=Quor/1|ManagedElement=7|AID=7");
}

}  // namespace

}  // namespace zk::test
