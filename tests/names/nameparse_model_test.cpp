// The helpers against a second, independent reading of the same texts.
#include <gtest/gtest.h>

#include "tests/names/parsemodel_generator.h"
#include "zk_quornex/names/nameparse.h"

namespace zk::test {
namespace {

namespace real = NS_QUORCORBA;

constexpr int ROUNDS = 100000;

// A comparison of only accepted or only refused texts would show little.
void expectBothAnswers(int accepted) {
  EXPECT_GT(accepted, ROUNDS / 20);
  EXPECT_LT(accepted, ROUNDS - ROUNDS / 20);
}

TEST(NameparseModel, agreesOnSplitting) {
  model::Generator generator(1);
  int accepted = 0;
  for (int round = 0; round < ROUNDS && !testing::Test::HasFailure(); ++round) {
    const std::string text = generator.numberList();
    const auto expected = model::split(text, '/');
    std::vector<std::string> pieces;
    EXPECT_EQ(real::SplitByChar(text, pieces, '/'), expected.accepted) << '\'' << text << '\'';
    EXPECT_EQ(pieces, expected.items) << '\'' << text << '\'';
    accepted += expected.accepted ? 1 : 0;
  }
  expectBothAnswers(accepted);
}

TEST(NameparseModel, agreesOnKeyValuePaths) {
  model::Generator generator(2);
  int accepted = 0;
  for (int round = 0; round < ROUNDS && !testing::Test::HasFailure(); ++round) {
    const std::string text = generator.keyValuePath();
    model::Pairs pairs = generator.pairsBefore();
    const auto expected = model::path(text.c_str(), pairs);
    EXPECT_EQ(real::ParseNameValuePath(text.c_str(), pairs), expected.accepted)
        << '\'' << text << '\'';
    EXPECT_EQ(pairs, expected.items) << '\'' << text << '\'';
    accepted += expected.accepted ? 1 : 0;
  }
  expectBothAnswers(accepted);
}

void compareNumbers(const std::string& text, int& accepted) {
  const auto path = model::numberPath(text);
  std::vector<unsigned long> identifiers;
  EXPECT_EQ(real::ParseNumberPath(text.c_str(), identifiers), path.accepted)
      << '\'' << text << '\'';
  EXPECT_EQ(identifiers, path.items) << '\'' << text << '\'';

  const auto list = model::numbers(text, "./");
  std::string cutUp = text;
  std::vector<long> numbers = {9};
  EXPECT_EQ(real::SplitNumbers(cutUp.data(), numbers, "./"), list.accepted) << '\'' << text << '\'';
  EXPECT_EQ(numbers, list.items) << '\'' << text << '\'';
  accepted += path.accepted ? 1 : 0;

  const auto id = model::id(text.c_str());
  unsigned long value = 77;
  EXPECT_EQ(real::ParseID(text.c_str(), value), id.has_value()) << '\'' << text << '\'';
  EXPECT_EQ(value, id.value_or(77)) << '\'' << text << '\'';
  EXPECT_EQ(real::ParseNumberOrInvalid(text.c_str()), model::numberOrInvalid(text.c_str()))
      << '\'' << text << '\'';
}

TEST(NameparseModel, agreesOnNumbers) {
  model::Generator generator(3);
  int accepted = 0;
  for (int round = 0; round < ROUNDS && !testing::Test::HasFailure(); ++round) {
    compareNumbers(generator.numberList(), accepted);
  }
  expectBothAnswers(accepted);
}

TEST(NameparseModel, agreesOnIndexedNames) {
  model::Generator generator(4);
  int accepted = 0;
  for (int round = 0; round < ROUNDS && !testing::Test::HasFailure(); ++round) {
    const std::string text = generator.indexedName();
    const auto expected = model::indexed(text.c_str());
    std::string name;
    unsigned long index = 77;
    EXPECT_EQ(real::ParseIndexedName(text.c_str(), name, index), expected.has_value())
        << '\'' << text << '\'';
    EXPECT_EQ(index, expected ? expected->index : 77) << '\'' << text << '\'';
    if (expected) {
      EXPECT_EQ(name, expected->name) << '\'' << text << '\'';
      ++accepted;
    }
  }
  expectBothAnswers(accepted);
}

}  // namespace
}  // namespace zk::test
