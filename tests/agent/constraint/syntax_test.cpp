// Which texts are constraints.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pthread.h>

#include <optional>

#include "agent/constraint/limits.h"
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
};

TEST(ConstraintSyntax, refused) {
  constexpr const char* kStray = "is no part of a constraint";
  constexpr const char* kNoValue = "a value is missing";
  for (const auto& [text, reason] :
       std::initializer_list<Refused>{{"$a ==", kNoValue},
                                      {"== $a", kNoValue},
                                      {"and", kNoValue},
                                      {"$a and", kNoValue},
                                      {"()", kNoValue},
                                      {"(", kNoValue},
                                      {")", kNoValue},
                                      {"not not $a", kNoValue},
                                      {"not", kNoValue},
                                      {".", kNoValue},
                                      {"$a = 1", kStray},
                                      {"$a <> 1", kNoValue},
                                      {"$a && $b", kStray},
                                      {"$a || $b", kStray},
                                      {"! $a", kStray},
                                      {"$a;", kStray},
                                      {"# $a", kStray},
                                      {"\"x\" == $a", kStray},
                                      {"::a", kStray},
                                      {"$caf\xc3\xa9 == 1", "byte 0xc3"},
                                      {"\xff", "byte 0xff"},
                                      {"$a\x01", "byte 0x01"},
                                      {"'x", "without its closing quote"},
                                      {"'x\\'", "without its closing quote"},
                                      {"($a", "a closing parenthesis is missing"},
                                      {"$a)", "a constraint ends here"},
                                      {"$a b", "a constraint ends here"},
                                      {"$a == 1 == 2", "a constraint ends here"},
                                      {"$a AND $b", "a constraint ends here"},
                                      {"NOT $a", "a constraint ends here"},
                                      {"0x10 == 1", "a constraint ends here"},
                                      {"1. == 1", "a constraint ends here"},
                                      {"max $a", "a constraint ends here"},
                                      {"$a == true", "TRUE and FALSE"},
                                      {"false", "TRUE and FALSE"},
                                      {"-$a == 1", "a sign stands before a number only"},
                                      {"--1 == 1", "a sign stands before a number only"},
                                      {"exist", "follows 'exist'"},
                                      {"exist 'a'", "follows 'exist'"},
                                      {"exist not $a", "follows 'exist'"},
                                      {"default a", "follows 'default'"},
                                      {"'x' in 'y'", "follows 'in'"},
                                      {"$a[", "whole number"},
                                      {"$a[-1] == 1", "whole number"},
                                      {"$a[b] == 1", "whole number"},
                                      {"$a[1.5] == 1", "whole number"},
                                      {"$a.'b' == 1", "whole number"},
                                      {"$a. == 1", "whole number"},
                                      {"$a.(+) == 1", "whole number"},
                                      {"$a[1 == 1", "a closing bracket is missing"},
                                      {"$a() == 1", "a name is missing"},
                                      {"$a(1) == 1", "a name is missing"},
                                      {"$a(b c) == 1", "a closing parenthesis is missing"},
                                      {"$a._length.b == 1", "a constraint ends here"},
                                      {"$a[2147483648] == 1", "31 bits"},
                                      {"$a.(99999999999) == 1", "31 bits"},
                                      {"18446744073709551616 == 1", "64 bits"},
                                      {"1e9999 == 1", "too large"},
                                      {"$_a == 1", "backslash"},
                                      {"$\\ == 1", "no name after the backslash"},
                                      {"$\\1 == 1", "no name after the backslash"},
                                      {"1", "where a condition belongs"},
                                      {"'x'", "where a condition belongs"},
                                      {"1 + 2", "where a condition belongs"},
                                      {"-1", "where a condition belongs"},
                                      {"not 1 == 1", "where a condition belongs"},
                                      {"not 1", "where a condition belongs"},
                                      {"$a and 'x'", "where a condition belongs"},
                                      {"$curtime == 1", "not offered"},
                                      {"exist curtime", "not offered"}}) {
    SCOPED_TRACE(text);
    EXPECT_THAT(refusal(text).value_or("accepted"), testing::HasSubstr(reason));
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
  const std::string longText(kMaxConstraintBytes - 2, 'x');
  EXPECT_EQ(refusal("$" + longText), std::nullopt);
  EXPECT_TRUE(refusal("$xx" + longText));
  EXPECT_TRUE(refusal(std::string(100 * kMaxConstraintBytes, '(')));
  const auto nested = [](std::size_t depth) {
    return repeated("(", depth) + "$a" + repeated(")", depth);
  };
  EXPECT_EQ(refusal(nested(kMaxConstraintDepth)), std::nullopt);
  EXPECT_THAT(refusal(nested(kMaxConstraintDepth + 1)).value_or(""),
              testing::HasSubstr("open parentheses"));
  EXPECT_EQ(refusal("$a" + repeated(".b", kMaxConstraintDepth)), std::nullopt);
  EXPECT_TRUE(refusal("$a" + repeated(".b", kMaxConstraintDepth + 1)));
  EXPECT_EQ(refusal("1" + repeated("+1", kMaxConstraintOperators) + "==2"), std::nullopt);
  EXPECT_TRUE(refusal("1" + repeated("+1", kMaxConstraintOperators + 1) + "==2"));
  EXPECT_TRUE(refusal(repeated("( ", 2 * kMaxConstraintTokens)));
}

// The longest conditions that are accepted, for a thread with little stack.
void* parseAndMatchTheLongest(void* matched) {
  const auto event = alarm();
  std::string text = "$probableCause == 'LOS'";
  const std::size_t clauses = agent::etcl::kMaxConstraintTokens / 3 - 3;
  text = repeated("$a or ", clauses) + text;
  const bool longest = parsed(text)->matches(event);
  const std::string sums = "1" + repeated("+1", agent::etcl::kMaxConstraintOperators) + " == 257";
  const std::string parentheses = repeated("(not ", agent::etcl::kMaxConstraintDepth) + "TRUE" +
                                  repeated(")", agent::etcl::kMaxConstraintDepth);
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
