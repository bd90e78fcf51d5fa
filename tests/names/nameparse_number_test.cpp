// Identifiers, number lists and numbered names.
#include <gtest/gtest.h>

#include <climits>

#include "zk_quornex/names/nameparse.h"

namespace NS_QUORCORBA {
namespace {

constexpr unsigned long ALL_ONES = 18446744073709551615UL;

TEST(IsNumeric, acceptsDigitsBetweenBlanks) {
  for (const char* text :
       {"0", "7", "  12", "12  ", " 12 ", "00012", "0123456789", "99999999999999999999999999"}) {
    EXPECT_TRUE(IsNumeric(text)) << '\'' << text << '\'';
  }
}

TEST(IsNumeric, refusesAnythingElse) {
  EXPECT_FALSE(IsNumeric(nullptr));
  for (const char* text : {"", " ", "\t", "a", "12a", "a12", "-1", "+1", "1.0", "1 2", "\t12",
                           "12\t", "12\n", "0x10", "1e3", "\xD9\xA1"}) {
    EXPECT_FALSE(IsNumeric(text)) << '\'' << text << '\'';
  }
}

struct IdCase {
  const char* text;
  unsigned long value;
};

// Every identifier goes through 32 bits with a sign, and through the limits of
// 64 bits before that.
const IdCase IDS[] = {
    {"0", 0},
    {"12", 12},
    {" 12 ", 12},
    {"00012", 12},
    {"2147483647", 2147483647},
    {"2147483648", 18446744071562067968UL},
    {"4294967295", ALL_ONES},
    {"4294967296", 0},
    {"4294967297", 1},
    {"6442450944", 18446744071562067968UL},
    {"9223372036854775806", ALL_ONES - 1},
    {"9223372036854775807", ALL_ONES},
    {"9223372036854775808", ALL_ONES},
    {"18446744073709551616", ALL_ONES},
    {"100000000000000000000", ALL_ONES},
    {"99999999999999999999999999999999999999999999", ALL_ONES},
    {"0000000000000000000000000000000000000000000012", 12},
};

TEST(ParseID, readsThrough32Bits) {
  for (const IdCase& c : IDS) {
    unsigned long value = 77;
    EXPECT_TRUE(ParseID(c.text, value)) << c.text;
    EXPECT_EQ(value, c.value) << c.text;
  }
}

TEST(ParseID, refusesOtherTextsAndLeavesTheValue) {
  unsigned long value = 77;
  EXPECT_FALSE(ParseID(nullptr, value));
  for (const char* text : {"", " ", "12a", "-1", "+1", "1 2", "\t12", "12\n", "1.5", "0x1"}) {
    EXPECT_FALSE(ParseID(text, value)) << '\'' << text << '\'';
  }
  EXPECT_EQ(value, 77U);
}

struct PathCase {
  const char* text;
  std::vector<unsigned long> numbers;
};

TEST(ParseNumberPath, readsNumbersBetweenSlashes) {
  const PathCase cases[] = {
      {"1", {1}},
      {"1/2/3", {1, 2, 3}},
      {" 1 / 2 ", {1, 2}},
      {"0/00", {0, 0}},
      {"4294967297/2147483648/99999999999999999999", {1, 18446744071562067968UL, ALL_ONES}},
  };
  for (const PathCase& c : cases) {
    std::vector<unsigned long> numbers = {9, 9};
    EXPECT_TRUE(ParseNumberPath(c.text, numbers)) << '\'' << c.text << '\'';
    EXPECT_EQ(numbers, c.numbers) << '\'' << c.text << '\'';
  }
}

TEST(ParseNumberPath, keepsTheNumbersBeforeABadOne) {
  const PathCase cases[] = {
      {"1//2", {1}},  {"/1", {}},     {"1/", {1}},      {"/", {}},      {" ", {}},
      {"1/x/3", {1}}, {"-1", {}},     {"1/+2", {1}},    {"1/ /2", {1}}, {"1/2/3 4", {1, 2}},
      {"1.2", {}},    {"1/\t2", {1}}, {"1/2/", {1, 2}},
  };
  for (const PathCase& c : cases) {
    std::vector<unsigned long> numbers = {9, 9};
    EXPECT_FALSE(ParseNumberPath(c.text, numbers)) << '\'' << c.text << '\'';
    EXPECT_EQ(numbers, c.numbers) << '\'' << c.text << '\'';
  }
}

TEST(ParseNumberPath, leavesTheListForNullAndEmpty) {
  std::vector<unsigned long> numbers = {9};
  EXPECT_FALSE(ParseNumberPath(nullptr, numbers));
  EXPECT_FALSE(ParseNumberPath("", numbers));
  EXPECT_EQ(numbers, std::vector<unsigned long>{9});
}

struct ListCase {
  const char* text;
  const char* delimiters;
  std::vector<long> numbers;
};

void checkNumbers(const ListCase& c, bool accepted) {
  std::string text = c.text;
  std::vector<long> numbers = {9, 9};
  EXPECT_EQ(SplitNumbers(text.data(), numbers, c.delimiters), accepted) << '\'' << c.text << '\'';
  EXPECT_EQ(numbers, c.numbers) << '\'' << c.text << '\'';
}

TEST(SplitNumbers, readsNumbersBetweenRunsOfDelimiters) {
  const ListCase cases[] = {
      {"3,,4", ",", {3, 4}},
      {",3,", ",", {3}},
      {"/7/3.15/", "./", {7, 3, 15}},
      {"7..3//15", "./", {7, 3, 15}},
      {"", ",", {}},
      {",,,", ",", {}},
      {"34", "", {34}},
      {" 3,\t4,\n5", ",", {3, 4, 5}},
      {"-3,+4,-0", ",", {-3, 4, 0}},
      {"4294967297,2147483648", ",", {4294967297, 2147483648}},
      {"9223372036854775807,9223372036854775808", ",", {LONG_MAX, LONG_MAX}},
      {"-9223372036854775808,-9223372036854775809", ",", {LONG_MIN, LONG_MIN}},
      {"99999999999999999999999999", ",", {LONG_MAX}},
      {"010,08", ",", {10, 8}},
  };
  for (const ListCase& c : cases) {
    checkNumbers(c, true);
  }
}

TEST(SplitNumbers, keepsTheNumberItRefuses) {
  const ListCase cases[] = {
      {"3,4x", ",", {3, 4}}, {"3,x,5", ",", {3, 0}},
      {"3 ,4", ",", {3}},    {"3, ,4", ",", {3, 0}},
      {"+", ",", {0}},       {"--1", ",", {0}},
      {"0x10", ",", {0}},    {"1.5,2", ",", {1}},
      {"3,4", "", {3}},      {"99999999999999999999x", ",", {LONG_MAX}},
  };
  for (const ListCase& c : cases) {
    checkNumbers(c, false);
  }
}

TEST(SplitNumbers, cutsTheTextUpInPlace) {
  char text[] = ",3,4";
  std::vector<long> numbers;
  EXPECT_TRUE(SplitNumbers(text, numbers, ","));
  EXPECT_EQ(std::string(text, sizeof(text)), std::string(",3\0004\0", 5));
}

TEST(SplitNumbers, leavesTheListForNull) {
  char text[] = "1";
  std::vector<long> numbers = {9};
  EXPECT_FALSE(SplitNumbers(nullptr, numbers, ","));
  EXPECT_FALSE(SplitNumbers(text, numbers, nullptr));
  EXPECT_FALSE(SplitNumbers(nullptr, numbers, nullptr));
  EXPECT_EQ(numbers, std::vector<long>{9});
  EXPECT_STREQ(text, "1");
}

struct IndexedCase {
  const char* text;
  const char* name;
  unsigned long index;
};

TEST(ParseIndexedName, readsNameAndNumber) {
  const IndexedCase cases[] = {
      {"port(1)", "port", 1},
      {" port ( 12 )", "port", 12},
      {"a b(0)", "a b", 0},
      {"\t(3)", "\t", 3},
      {"a(4294967297)", "a", 1},
      {"a(2147483648)", "a", 18446744071562067968UL},
      {"a(99999999999999999999)", "a", ALL_ONES},
  };
  for (const IndexedCase& c : cases) {
    std::string name;
    unsigned long index = 77;
    EXPECT_TRUE(ParseIndexedName(c.text, name, index)) << '\'' << c.text << '\'';
    EXPECT_EQ(name, c.name) << '\'' << c.text << '\'';
    EXPECT_EQ(index, c.index) << '\'' << c.text << '\'';
  }
}

TEST(ParseIndexedName, refusesAfterTheNameIsRead) {
  const IndexedCase cases[] = {
      {"(1)", "", 77},      {" (1)", "", 77},     {"a()", "a", 77},    {"a(", "a", 77},
      {"a(1", "a", 77},     {"a(1)x", "a", 77},   {"a(1) ", "a", 77},  {"a)(1)", "a)", 77},
      {"a)b(1", "a)b", 77}, {"a(1)(2)", "a", 77}, {"a((1)", "a", 77},  {"a(1))", "a", 77},
      {"a( )", "a", 77},    {"a(-1)", "a", 77},   {"a(1 2)", "a", 77}, {"a(\t1)", "a", 77},
      {"a(x)", "a", 77},    {"a(1.5)", "a", 77},
  };
  for (const IndexedCase& c : cases) {
    std::string name = "before";
    unsigned long index = 77;
    EXPECT_FALSE(ParseIndexedName(c.text, name, index)) << '\'' << c.text << '\'';
    EXPECT_EQ(name, c.name) << '\'' << c.text << '\'';
    EXPECT_EQ(index, c.index) << '\'' << c.text << '\'';
  }
}

TEST(ParseIndexedName, leavesEverythingWithoutAnOpeningBracket) {
  std::string name = "before";
  unsigned long index = 77;
  EXPECT_FALSE(ParseIndexedName(nullptr, name, index));
  for (const char* text : {"", " ", "a", "1)", ")"}) {
    EXPECT_FALSE(ParseIndexedName(text, name, index)) << '\'' << text << '\'';
  }
  EXPECT_EQ(name, "before");
  EXPECT_EQ(index, 77U);
}

struct NumberCase {
  const char* text;
  long number;
};

TEST(ParseNumberOrInvalid, readsAll64Bits) {
  const NumberCase cases[] = {
      {"0", 0},
      {"123", 123},
      {" 123 ", 123},
      {"00012", 12},
      {"2147483648", 2147483648},
      {"4294967295", 4294967295},
      {"4294967297", 4294967297},
      {"9223372036854775807", LONG_MAX},
      {"9223372036854775808", LONG_MAX},
      {"99999999999999999999999", LONG_MAX},
  };
  for (const NumberCase& c : cases) {
    EXPECT_EQ(ParseNumberOrInvalid(c.text), c.number) << '\'' << c.text << '\'';
  }
}

TEST(ParseNumberOrInvalid, givesTheInvalidNumberForOtherTexts) {
  for (const char* text : {"", " ", "abc", "-1", "+1", "1a", "1 2", "\t1", "1.0", "0x1"}) {
    EXPECT_EQ(ParseNumberOrInvalid(text), 4294967295) << '\'' << text << '\'';
  }
}

}  // namespace
}  // namespace NS_QUORCORBA
