// The text form of an AID's numbers: SetStrIDs and GetStrIDs.
#include <gtest/gtest.h>

#include "tests/names/names.h"

namespace zk::test {

namespace {

using NS_QUORCORBA::CAAIDName;

class AidText : public testing::Test {
 protected:
  AidText() {
    name_.ids_ = {99};
    name_.type_ = 77;
  }

  void expectSet(const std::string& text, unsigned long code, const std::string& ids) {
    CAAIDName name = name_;
    EXPECT_EQ(name.SetStrIDs(text.c_str()), code) << text;
    EXPECT_EQ(describe(name), "77 Quor/1 ids=" + ids) << text;
  }

  FixedEmsConfig config_;
  CapturedTrace trace_;
  CAAIDName name_;
};

TEST_F(AidText, isReadInEveryMixOfSeparators) {
  for (const char* text : {"/7/3/15", "7.3/15", "7/3/15", "7.3.15", ".7//3..15/", "7./3/.15"}) {
    expectSet(text, OK, "7,3,15");
  }
  expectSet("-7/+3", OK, "-7,3");
  EXPECT_TRUE(trace_.texts().empty());
}

TEST_F(AidText, isRefusedWithWhatWasReadSoFar) {
  expectSet("7/3x/15", BAD_NAME, "7,3");
  expectSet("7/x", BAD_NAME, "7,0");
  expectSet("7 /3", BAD_NAME, "7");
  EXPECT_TRUE(trace_.texts().empty());
}

TEST_F(AidText, isRefusedWithoutNumbers) {
  for (const char* text : {"", "/", ".", "//..//"}) {
    expectSet(text, BAD_NAME, "");
  }
  EXPECT_TRUE(trace_.texts().empty());
}

TEST_F(AidText, isTracedWhenNull) {
  EXPECT_EQ(name_.SetStrIDs(nullptr), BAD_NAME);
  EXPECT_EQ(describe(name_), "77 Quor/1 ids=99");
  const std::vector<TraceLine> lines = trace_.lines();
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_EQ(lines[0].level, 2);
  EXPECT_EQ(lines[0].text, "[CAAIDName::SetStrIDs] strIDs is null.");
  EXPECT_EQ(lines[0].file, "nameconvert");
  EXPECT_EQ(lines[0].function, "unknown");
  EXPECT_GT(lines[0].line, 0);
}

TEST_F(AidText, countsItsFirst245CharactersOnly) {
  const std::string zeros(240, '0');
  expectSet(zeros + "71/34", OK, "71,34");
  expectSet(zeros + "71/345", OK, "71,34");
  expectSet(zeros + "71/34x", OK, "71,34");
  expectSet(std::string(245, '.') + "7", BAD_NAME, "");
  expectSet("7/" + std::string(10000, '/'), OK, "7");
  EXPECT_TRUE(trace_.texts().empty());
}

TEST_F(AidText, isWrittenWithASlashBeforeEveryNumberAndANulAtTheEnd) {
  name_.ids_ = {7, 3, 15};
  std::string text = "old";
  EXPECT_EQ(name_.GetStrIDs(text), OK);
  EXPECT_EQ(text, std::string("/7/3/15\0", 8));
  name_.ids_ = {-7};
  EXPECT_EQ(name_.GetStrIDs(text), OK);
  EXPECT_EQ(text, std::string("/-7\0", 4));
}

TEST_F(AidText, isLeftAloneWithoutNumbers) {
  name_.ids_.clear();
  std::string text = "old";
  EXPECT_EQ(name_.GetStrIDs(text), BAD_NAME);
  EXPECT_EQ(text, "old");
}

TEST_F(AidText, comesBackWithItsNul) {
  ASSERT_EQ(name_.SetStrIDs("/1/2"), OK);
  std::string text;
  ASSERT_EQ(name_.GetStrIDs(text), OK);
  EXPECT_EQ(text, std::string("/1/2\0", 5));
  ASSERT_EQ(name_.SetStrIDs(text.c_str()), OK);
  EXPECT_EQ(describe(name_), "77 Quor/1 ids=1,2");
}

}  // namespace

}  // namespace zk::test
