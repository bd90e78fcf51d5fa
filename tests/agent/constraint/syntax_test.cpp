// Which texts are constraints.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pthread.h>

#include <optional>

#include "agent/constraint/grammar.h"
#include "tests/agent/constraint/events.h"

namespace zk::test {

namespace {

// Why the text is refused; nothing when it is accepted.
std::optional<std::string> refusal(const std::string& text) {
  try {
    agent::Constraint::parse(text, DynamicAny::DynAnyFactory::_nil());
    return std::nullopt;
  } catch (const agent::InvalidConstraintText& refused) {
    return refused.what();
  }
}

std::string repeated(const std::string& text, std::size_t times) {
  std::string all;
  for (std::size_t i = 0; i < times; ++i) {
    all += text;
  }
  return all;
}

TEST(ConstraintSyntax, accepted) {
  for (const char* text : {"",
                           "  ",
                           "TRUE",
                           "a",
                           "$a",
                           "$",
                           "$.a",
                           "$a.b[3].c(d)._length",
                           "$a.0.1",
                           "$.0",
                           "$a.(1)",
                           "$a.(-1)",
                           "$a.(+1)",
                           "$a.('x').y",
                           "$a.()",
                           "$a('x')('y')[1]",
                           "$(x)",
                           "$[0]",
                           "$a ( x )",
                           "$a._d == 1",
                           "$.a._type_id == 'x'",
                           "$a._repos_id == ''",
                           "exist $a",
                           "exist a",
                           "exist $.a(b)",
                           "default $a",
                           "default $a._d",
                           "default $.a._d",
                           "not $a",
                           "not ($a)",
                           "not exist $a",
                           "$a == 1 and $b != 2 or $c < 3",
                           "'x' in $a",
                           "'x' in a",
                           "1 + 2 in $a.b",
                           "$a ~ $b",
                           "'\\'' == '\\\\'",
                           "-1 < +1",
                           "1.5e3 == 1500",
                           ".5 < 1",
                           "1E-3 < 1",
                           "$a == -1.5",
                           "((($a)))",
                           "$a\n==\t1",
                           "$a == b and c",
                           "$\\and",
                           "\\x == 1",
                           "18446744073709551615 > 0",
                           "$a<1and$b>2",
                           "'\xff\xfe' == $a",
                           "max == 1",
                           "$a[2147483647] == 1",
                           "$x == 'a' in $y"}) {
    EXPECT_EQ(refusal(text), std::nullopt) << "text: " << text;
  }
}

struct Refused {
  const char* text;
  const char* reason;
  int at;  // the character, counted from 1
};

constexpr const char* STRAY = "is no part of a constraint";
constexpr const char* NO_VALUE = "a value is missing";

constexpr Refused REFUSED[] = {
    {"$a ==", NO_VALUE, 6},
    {"== $a", NO_VALUE, 1},
    {"and", NO_VALUE, 1},
    {"$a and", NO_VALUE, 7},
    {"()", NO_VALUE, 2},
    {"(", NO_VALUE, 2},
    {")", NO_VALUE, 1},
    {"not not $a", NO_VALUE, 5},
    {"not", NO_VALUE, 4},
    {".", NO_VALUE, 1},
    {"$a = 1", STRAY, 4},
    {"$a <> 1", NO_VALUE, 5},
    {"$a && $b", STRAY, 4},
    {"$a || $b", STRAY, 4},
    {"! $a", STRAY, 1},
    {"$a;", STRAY, 3},
    {"# $a", STRAY, 1},
    {"\"x\" == $a", STRAY, 1},
    {"::a", STRAY, 1},
    {"$caf\xc3\xa9 == 1", "byte 0xc3", 5},
    {"\xff", "byte 0xff", 1},
    {"$a\x01", "byte 0x01", 3},
    {"'x", "without its closing quote", 1},
    {"'x\\'", "without its closing quote", 1},
    {"($a", "a closing parenthesis is missing", 4},
    {"$a)", "a constraint ends here", 3},
    {"$a b", "a constraint ends here", 4},
    {"$a == 1 == 2", "a constraint ends here", 9},
    {"$a AND $b", "a constraint ends here", 4},
    {"NOT $a", "a constraint ends here", 5},
    {"0x10 == 1", "a constraint ends here", 2},
    {"1. == 1", "a constraint ends here", 2},
    {"max $a", "a constraint ends here", 5},
    {"$a == true", "TRUE and FALSE", 7},
    {"false", "TRUE and FALSE", 1},
    {"-$a == 1", "a sign stands before a number only", 2},
    {"--1 == 1", "a sign stands before a number only", 2},
    {"exist", "follows 'exist'", 6},
    {"exist 'a'", "follows 'exist'", 7},
    {"exist not $a", "follows 'exist'", 7},
    {"default a", "follows 'default'", 9},
    {"'x' in 'y'", "follows 'in'", 8},
    {"$a[", "whole number", 4},
    {"$a[-1] == 1", "whole number", 4},
    {"$a[b] == 1", "whole number", 4},
    {"$a[1.5] == 1", "whole number", 4},
    {"$a.'b' == 1", "whole number", 4},
    {"$a. == 1", "whole number", 5},
    {"$a.(+) == 1", "whole number", 6},
    {"$a[1 == 1", "a closing bracket is missing", 6},
    {"$a() == 1", "a name is missing", 4},
    {"$a(1) == 1", "a name is missing", 4},
    {"$a(b c) == 1", "a closing parenthesis is missing", 6},
    {"$a._length.b == 1", "a constraint ends here", 11},
    {"$a[2147483648] == 1", "31 bits", 4},
    {"$a.(99999999999) == 1", "31 bits", 5},
    {"18446744073709551616 == 1", "64 bits", 1},
    {"1e9999 == 1", "too large", 1},
    {"$_a == 1", "backslash", 2},
    {"$\\ == 1", "no name after the backslash", 2},
    {"$\\1 == 1", "no name after the backslash", 2},
    {"1", "where a condition belongs", 1},
    {"'x'", "where a condition belongs", 1},
    {"1 + 2", "where a condition belongs", 1},
    {"-1", "where a condition belongs", 1},
    {"not 1 == 1", "where a condition belongs", 5},
    {"not 1", "where a condition belongs", 5},
    {"$a and 'x'", "where a condition belongs", 8},
    {"$curtime == 1", "not offered", 2},
    {"exist curtime", "not offered", 7},
    {"$a b ;", "a constraint ends here", 4},
    {"$a == 1 and\n$b = 2", STRAY, 16},
    {"'x' == $a and 'y", "without its closing quote", 15},
    {"($a == 1 or ($b == 2 and 1 + $c))", "where a condition belongs", 26},
    {"($a == 1 or ($b == 2)", "a closing parenthesis is missing", 22},
    {"$a.(1.5) == 1", "a closing parenthesis is missing", 5},
    {"$a.1e5 == 1", "a constraint ends here", 5},
    {"$a[1e5] == 1", "whole number", 4},
    {"$a.true == 1", "TRUE and FALSE", 4},
    {"- 18446744073709551616 < 1", "64 bits", 3},
    {"$a._d._length == 1", "a constraint ends here", 6},
};

TEST(ConstraintSyntax, refused) {
  for (const auto& [text, reason, at] : REFUSED) {
    SCOPED_TRACE(text);
    const std::string refused = refusal(text).value_or("accepted");
    EXPECT_THAT(refused, testing::HasSubstr(reason));
    EXPECT_THAT(refused, testing::EndsWith(" at character " + std::to_string(at)));
  }
}

TEST(ConstraintSyntax, refusesAnEmbeddedZeroCharacter) {
  for (const std::string& text : {std::string("TRUE\0FALSE", 10), std::string("\0", 1),
                                  std::string("'a\0b' == $a", 11), std::string("$a\0", 3)}) {
    EXPECT_TRUE(refusal(text)) << testing::PrintToString(text);
  }
}

TEST(ConstraintSyntax, tellsWhereItWentWrong) {
  EXPECT_EQ(refusal("$a = 1"), "'=' is no part of a constraint at character 4");
  EXPECT_EQ(refusal("$a ==\n"), "a value is missing at character 7");
  EXPECT_EQ(refusal("$a b"), "a constraint ends here or goes on with an operator at character 4");
}

// Whatever bytes it is given, the reason can go into a log or an exception.
TEST(ConstraintSyntax, reasonsArePrintable) {
  for (int c = 0; c < 256; ++c) {
    for (const std::string& text :
         {std::string(1, static_cast<char>(c)), std::string("$a ") + static_cast<char>(c) + " 1"}) {
      for (const char r : refusal(text).value_or("")) {
        EXPECT_TRUE(r >= ' ' && r <= '~') << "byte " << c;
      }
    }
  }
}

TEST(ConstraintSyntax, boundsSizeAndDepth) {
  using namespace agent::etcl;
  const std::string longText(MOST_BYTES - 2, 'x');
  EXPECT_EQ(refusal("$" + longText), std::nullopt);
  EXPECT_TRUE(refusal("$xx" + longText));
  EXPECT_TRUE(refusal(std::string(100 * MOST_BYTES, '(')));
  const auto nested = [](std::size_t depth) {
    return repeated("(", depth) + "$a" + repeated(")", depth);
  };
  EXPECT_EQ(refusal(nested(MOST_OPEN_PARENTHESES)), std::nullopt);
  EXPECT_EQ(refusal(nested(MOST_OPEN_PARENTHESES + 1)),
            "more than 64 open parentheses at character 65");
  EXPECT_EQ(refusal("$a" + repeated(".b", MOST_STEPS)), std::nullopt);
  EXPECT_TRUE(refusal("$a" + repeated(".b", MOST_STEPS + 1)));
  EXPECT_EQ(refusal("1" + repeated("+1", MOST_OPERATIONS) + "==2"), std::nullopt);
  EXPECT_TRUE(refusal("1" + repeated("+1", MOST_OPERATIONS + 1) + "==2"));
  EXPECT_TRUE(refusal(repeated("( ", 2 * MOST_TOKENS)));
  const auto flat = [](std::size_t pairs) { return repeated("a or ", pairs) + "a"; };
  EXPECT_EQ(refusal(flat(MOST_TOKENS / 2 - 1)), std::nullopt);
  EXPECT_EQ(refusal(flat(MOST_TOKENS / 2 - 1) + " "), std::nullopt);
  EXPECT_THAT(refusal("not " + flat(MOST_TOKENS / 2)).value_or(""),
              testing::HasSubstr("words and signs"));
  EXPECT_EQ(refusal(")" + repeated(" ", MOST_BYTES)), "more than 32768 bytes at character 32769");
}

// The longest conditions that are accepted, for a thread with little stack.
void* parseAndMatchTheLongest(void* matched) {
  const auto event = alarm();
  std::string text = "$probableCause == 'LOS'";
  const std::size_t clauses = agent::etcl::MOST_TOKENS / 3 - 3;
  text = repeated("$a or ", clauses) + text;
  const bool longest = parsed(text)->matches(event);
  const std::string sums = "1" + repeated("+1", agent::etcl::MOST_OPERATIONS) + " == 257";
  const std::string parentheses = repeated("(not ", agent::etcl::MOST_OPEN_PARENTHESES) + "TRUE" +
                                  repeated(")", agent::etcl::MOST_OPEN_PARENTHESES);
  *static_cast<bool*>(matched) =
      longest && parsed(sums)->matches(event) && parsed(parentheses)->matches(event);
  return nullptr;
}

TEST(ConstraintSyntax, longestConstraintsNeedLittleStack) {
  pthread_attr_t attributes;
  ASSERT_EQ(pthread_attr_init(&attributes), 0);
  ASSERT_EQ(pthread_attr_setstacksize(&attributes, std::size_t{1024} * 1024), 0);
  pthread_t thread{};
  bool matched = false;
  ASSERT_EQ(pthread_create(&thread, &attributes, parseAndMatchTheLongest, &matched), 0);
  ASSERT_EQ(pthread_join(thread, nullptr), 0);
  EXPECT_EQ(pthread_attr_destroy(&attributes), 0);
  EXPECT_TRUE(matched);
}

}  // namespace

}  // namespace zk::test
