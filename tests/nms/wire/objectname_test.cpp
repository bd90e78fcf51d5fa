#include <gtest/gtest.h>

#include <random>

#include "nms/wire/failure.h"
#include "nms/wire/text.h"

namespace zk::nms {
namespace {

struct Accepted {
  const char* text;
  Pairs pairs;
  const char* writtenBack;
};

const Accepted ACCEPTED[] = {
    {"EMS=Quor/1", {{"EMS", "Quor/1"}}, "EMS=Quor/1"},
    {"EMS=Quor/1,ManagedElement=7",
     {{"EMS", "Quor/1"}, {"ManagedElement", "7"}},
     "EMS=Quor/1,ManagedElement=7"},
    {"EMS=", {{"EMS", ""}}, "EMS="},
    {"EMS=,Node=", {{"EMS", ""}, {"Node", ""}}, "EMS=,Node="},
    {"Node=/parentid=0/id=17", {{"Node", "/parentid=0/id=17"}}, "Node=/parentid=0/id=17"},
    {"A==", {{"A", "="}}, "A=="},
    {"A=\\=", {{"A", "="}}, "A=="},
    {"A=x\\,y", {{"A", "x,y"}}, "A=x\\,y"},
    {"A=x\\\\", {{"A", "x\\"}}, "A=x\\\\"},
    {"A\\=B=c", {{"A=B", "c"}}, "A\\=B=c"},
    {"A\\,B=c", {{"A,B", "c"}}, "A\\,B=c"},
    {" A = b ", {{" A ", " b "}}, " A = b "},
    {"A=M\xC3\xBCnchen", {{"A", "M\xC3\xBCnchen"}}, "A=M\xC3\xBCnchen"},
    {"A=two\nlines", {{"A", "two\nlines"}}, "A=two\nlines"},
    {"A=|;'\"$", {{"A", "|;'\"$"}}, "A=|;'\"$"},
};

TEST(TypedName, readsAndWritesBack) {
  for (const Accepted& entry : ACCEPTED) {
    EXPECT_EQ(parsePairs(entry.text), entry.pairs) << entry.text;
    EXPECT_EQ(formatPairs(entry.pairs), entry.writtenBack) << entry.text;
  }
}

struct Refused {
  const char* text;
  const char* reason;
};

const Refused REFUSED_TEXTS[] = {
    {"", "each pair is NAME=VALUE"},         {"7", "each pair is NAME=VALUE"},
    {"EMS=a,", "each pair is NAME=VALUE"},   {"EMS=a,b", "each pair is NAME=VALUE"},
    {",EMS=a", "each pair is NAME=VALUE"},   {"EMS=a,,ManagedElement=7", "each pair is NAME=VALUE"},
    {"A\\=b", "each pair is NAME=VALUE"},    {"=a", "a pair has no name"},
    {"EMS=a,=b", "a pair has no name"},      {"EMS=a\\", "a backslash stands only"},
    {"EMS=a\\n", "a backslash stands only"}, {"\\EMS=a", "a backslash stands only"},
};

TEST(TypedName, refusesWithTheTextAndTheReason) {
  for (const Refused& entry : REFUSED_TEXTS) {
    try {
      parsePairs(entry.text);
      ADD_FAILURE() << "accepted: " << entry.text;
    } catch (const UsageError& error) {
      const std::string message = error.what();
      EXPECT_NE(message.find("'" + std::string(entry.text) + "'"), std::string::npos) << message;
      EXPECT_NE(message.find(entry.reason), std::string::npos) << message;
    }
  }
}

TEST(TypedName, whatIsWrittenReadsBackTheSame) {
  std::mt19937 random(814);
  const std::string alphabet = "aE,=\\/ 7\n\xC3";
  const auto text = [&](std::size_t least) {
    std::string result;
    const std::size_t size = least + random() % 6;
    while (result.size() < size) {
      result += alphabet[random() % alphabet.size()];
    }
    return result;
  };
  for (int round = 0; round < 20000; ++round) {
    Pairs pairs;
    for (std::size_t i = 0; i <= random() % 4; ++i) {
      pairs.emplace_back(text(1), text(0));
    }
    const std::string written = formatPairs(pairs);
    ASSERT_EQ(parsePairs(written), pairs) << written;
  }
}

TEST(TypedName, goesToTheWireAndBack) {
  const Pairs pairs = {{"EMS", "Quor/1"}, {"ManagedElement", "a,b"}};
  const globaldefs::NVSList_T name = toName(pairs);
  ASSERT_EQ(name.length(), 2U);
  EXPECT_STREQ(name[0].name.in(), "EMS");
  EXPECT_STREQ(name[0].value.in(), "Quor/1");
  EXPECT_STREQ(name[1].name.in(), "ManagedElement");
  EXPECT_STREQ(name[1].value.in(), "a,b");
  EXPECT_EQ(toPairs(name), pairs);
  EXPECT_EQ(formatName(name), "EMS=Quor/1,ManagedElement=a\\,b");
}

TEST(TypedName, ofAnEmptyNameIsEmpty) { EXPECT_EQ(formatName(globaldefs::NVSList_T()), ""); }

TEST(Argument, withEqualsSignIsAFullNameUnlessItIsAPath) {
  EXPECT_TRUE(isFullName("EMS=Quor/1,ManagedElement=7"));
  EXPECT_TRUE(isFullName("ManagedElement=7"));
  EXPECT_FALSE(isFullName("7"));
  EXPECT_FALSE(isFullName("Quor/1"));
  EXPECT_FALSE(isFullName("/parentid=0/id=17"));
  EXPECT_FALSE(isFullName(""));
}

TEST(Argument, isCheckedBeforeLoggingIn) {
  EXPECT_NO_THROW(checkArgument("7"));
  EXPECT_NO_THROW(checkArgument("a,b\\"));  // an id is taken letter for letter
  EXPECT_NO_THROW(checkArgument("/id=17"));
  EXPECT_NO_THROW(checkArgument("EMS=x"));
  EXPECT_THROW(checkArgument(""), UsageError);
  EXPECT_THROW(checkArgument("EMS=x,7"), UsageError);
}

}  // namespace
}  // namespace zk::nms
