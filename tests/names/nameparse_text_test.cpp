// Trimming, splitting and key=value paths.
#include <gtest/gtest.h>

#include "zk_quornex/names/nameparse.h"

namespace NS_QUORCORBA {
namespace {

using Texts = std::vector<std::string>;
using Pairs = std::map<std::string, std::string>;

struct TrimCase {
  const char* text;
  bool digitsOnly;
  bool accepted;
  const char* left;
};

TEST(TrimAndCheck, trimsBlanksInPlaceAndChecksWhatIsLeft) {
  const TrimCase cases[] = {
      {"12", true, true, "12"},
      {"  12  ", true, true, "12"},
      {"0123456789", true, true, "0123456789"},
      {" a b ", false, true, "a b"},
      {"\t", false, true, "\t"},
      {" \t ", false, true, "\t"},
      {" \n12 ", false, true, "\n12"},
      {"", false, false, ""},
      {"", true, false, ""},
      {" ", false, false, ""},
      {"    ", true, false, ""},
      {" 1 2 ", true, false, "1 2"},
      {" +1", true, false, "+1"},
      {"-1 ", true, false, "-1"},
      {"1.0", true, false, "1.0"},
      {"\t12", true, false, "\t12"},
      {"12\t ", true, false, "12\t"},
      {" 12a", true, false, "12a"},
      {"/", true, false, "/"},
      {":", true, false, ":"},
      {"\xB2", true, false, "\xB2"},
  };
  for (const TrimCase& c : cases) {
    std::string text = c.text;
    EXPECT_EQ(TrimAndCheck(text, c.digitsOnly), c.accepted) << '\'' << c.text << '\'';
    EXPECT_EQ(text, c.left) << '\'' << c.text << '\'';
  }
}

TEST(TrimAndCheck, keepsAZeroCharacterAsText) {
  std::string text(" \0 ", 3);
  EXPECT_TRUE(TrimAndCheck(text, false));
  EXPECT_EQ(text, std::string(1, '\0'));
  EXPECT_FALSE(TrimAndCheck(text, true));
}

TEST(AssignNonEmpty, copiesUntrimmed) {
  for (const char* text : {"a", " ", " a ", "\t", "/id=5"}) {
    std::string out = "before";
    EXPECT_TRUE(AssignNonEmpty(text, out)) << '\'' << text << '\'';
    EXPECT_EQ(out, text);
  }
}

TEST(AssignNonEmpty, leavesTheTargetForNullAndEmpty) {
  std::string out = "before";
  EXPECT_FALSE(AssignNonEmpty(nullptr, out));
  EXPECT_FALSE(AssignNonEmpty("", out));
  EXPECT_EQ(out, "before");
}

struct SplitCase {
  const char* text;
  Texts pieces;
};

TEST(SplitByChar, splitsAndTrims) {
  const SplitCase cases[] = {
      {"a", {"a"}},          {"a/b/c", {"a", "b", "c"}}, {" a / b ", {"a", "b"}},
      {"\t/b", {"\t", "b"}}, {"a-b", {"a-b"}},           {"a b/c", {"a b", "c"}},
  };
  for (const SplitCase& c : cases) {
    Texts pieces;
    EXPECT_TRUE(SplitByChar(c.text, pieces, '/')) << '\'' << c.text << '\'';
    EXPECT_EQ(pieces, c.pieces) << '\'' << c.text << '\'';
  }
}

TEST(SplitByChar, keepsWhatStoodBeforeAnEmptyPiece) {
  const SplitCase cases[] = {
      {"", {}},
      {"/", {}},
      {" ", {}},
      {"/a", {}},
      {"a/", {"a"}},
      {"a//b", {"a"}},
      {"a/ /b", {"a"}},
      {"a/b/", {"a", "b"}},
      {"a/b/ ", {"a", "b"}},
  };
  for (const SplitCase& c : cases) {
    Texts pieces;
    EXPECT_FALSE(SplitByChar(c.text, pieces, '/')) << '\'' << c.text << '\'';
    EXPECT_EQ(pieces, c.pieces) << '\'' << c.text << '\'';
  }
}

TEST(SplitByChar, appendsToWhatIsThere) {
  Texts pieces = {"before"};
  EXPECT_TRUE(SplitByChar("a-b", pieces, '-'));
  EXPECT_FALSE(SplitByChar("c-", pieces, '-'));
  EXPECT_FALSE(SplitByChar("", pieces, '-'));
  EXPECT_EQ(pieces, (Texts{"before", "a", "b", "c"}));
}

TEST(SplitByChar, refusesEverythingWhenBlankSeparates) {
  Texts pieces;
  EXPECT_TRUE(SplitByChar("a b", pieces, ' '));
  EXPECT_FALSE(SplitByChar("a  b", pieces, ' '));
  EXPECT_EQ(pieces, (Texts{"a", "b", "a"}));
}

struct ItemCase {
  const char* item;
  const char* key;
  const char* value;
};

TEST(SplitNameValue, splitsAtTheFirstEqualsSign) {
  const ItemCase cases[] = {
      {"a=1", "a", "1"},   {"a", "a", ""},          {"a=", "a", ""},  {"a=b=c", "a", "b=c"},
      {"a==", "a", "="},   {" a = 1 ", "a", " 1 "}, {" a ", "a", ""}, {"a b=1", "a b", "1"},
      {"\t=1", "\t", "1"}, {"a= ", "a", " "},
  };
  for (const ItemCase& c : cases) {
    std::string key = "before";
    std::string value = "before";
    EXPECT_TRUE(SplitNameValue(c.item, key, value)) << '\'' << c.item << '\'';
    EXPECT_EQ(key, c.key) << '\'' << c.item << '\'';
    EXPECT_EQ(value, c.value) << '\'' << c.item << '\'';
  }
}

TEST(SplitNameValue, refusesAnItemWithoutKey) {
  const ItemCase cases[] = {
      {"=1", "", "1"}, {" =1", "", "1"}, {"=", "", ""}, {" ", "", ""}, {"==", "", "="},
  };
  for (const ItemCase& c : cases) {
    std::string key = "before";
    std::string value = "before";
    EXPECT_FALSE(SplitNameValue(c.item, key, value)) << '\'' << c.item << '\'';
    EXPECT_EQ(key, c.key) << '\'' << c.item << '\'';
    EXPECT_EQ(value, c.value) << '\'' << c.item << '\'';
  }
}

TEST(SplitNameValue, leavesBothForAnEmptyItem) {
  std::string key = "key";
  std::string value = "value";
  EXPECT_FALSE(SplitNameValue("", key, value));
  EXPECT_EQ(key, "key");
  EXPECT_EQ(value, "value");
}

TEST(SplitNameValue, mayWriteIntoTheItemItself) {
  std::string item = "a=1";
  std::string other;
  EXPECT_TRUE(SplitNameValue(item, item, other));
  EXPECT_EQ(item, "a");
  EXPECT_EQ(other, "1");
  item = "a=1";
  EXPECT_TRUE(SplitNameValue(item, other, item));
  EXPECT_EQ(other, "a");
  EXPECT_EQ(item, "1");
}

struct PathCase {
  const char* path;
  Pairs pairs;
};

TEST(ParseNameValuePath, readsKeysAndValues) {
  const PathCase cases[] = {
      {"/parentid=3/id=17", {{"parentid", "3"}, {"id", "17"}}},
      {"/id=17", {{"id", "17"}}},
      {"/a", {{"a", ""}}},
      {"/a=", {{"a", ""}}},
      {"/a=b=c", {{"a", "b=c"}}},
      {"/ a = b / c ", {{"a", " b"}, {"c", ""}}},
      {"/id=17/id=18", {{"id", "17"}}},
      {"/id/id=18", {{"id", ""}}},
      {"/Id=1/id=2", {{"Id", "1"}, {"id", "2"}}},
      {"/a-b=c-d", {{"a-b", "c-d"}}},
      {"/\ta=1", {{"\ta", "1"}}},
  };
  for (const PathCase& c : cases) {
    Pairs pairs;
    EXPECT_TRUE(ParseNameValuePath(c.path, pairs)) << '\'' << c.path << '\'';
    EXPECT_EQ(pairs, c.pairs) << '\'' << c.path << '\'';
  }
}

TEST(ParseNameValuePath, refusesBadSegmentsBeforeItKeepsAnyPair) {
  for (const char* path :
       {"", "a=1", " /a=1", "/", "/ ", "//a=1", "/a=1/", "/a=1//b=2", "/a=1/ /b=2", "/a=1/b=2/ "}) {
    Pairs pairs = {{"before", "1"}};
    EXPECT_FALSE(ParseNameValuePath(path, pairs)) << '\'' << path << '\'';
    EXPECT_EQ(pairs, (Pairs{{"before", "1"}})) << '\'' << path << '\'';
  }
}

TEST(ParseNameValuePath, keepsPairsBeforeASegmentWithoutKey) {
  Pairs pairs;
  EXPECT_FALSE(ParseNameValuePath("/a=1/ b=2/=3/c=4", pairs));
  EXPECT_EQ(pairs, (Pairs{{"a", "1"}, {"b", "2"}}));
}

TEST(ParseNameValuePath, refusesNull) {
  Pairs pairs = {{"before", "1"}};
  EXPECT_FALSE(ParseNameValuePath(nullptr, pairs));
  EXPECT_EQ(pairs.size(), 1U);
}

TEST(ParseNameValuePath, keepsPairsThatAreThereBefore) {
  Pairs pairs = {{"id", "1"}, {"x", "y"}};
  EXPECT_TRUE(ParseNameValuePath("/id=2/parentid=3", pairs));
  EXPECT_EQ(pairs, (Pairs{{"id", "1"}, {"parentid", "3"}, {"x", "y"}}));
}

}  // namespace
}  // namespace NS_QUORCORBA
