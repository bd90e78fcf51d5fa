// Every function at once on several threads: each works on its own arguments.
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "tests/names/parsemodel_generator.h"
#include "tests/support/apart.h"
#include "zk_quornex/names/nameparse.h"

namespace zk::test {
namespace {

using namespace NS_QUORCORBA;

int disagreementsOnNumbers(model::Generator& generator) {
  const std::string text = generator.numberList();
  std::vector<unsigned long> identifiers;
  std::vector<long> numbers;
  std::string cutUp = text;
  unsigned long value = 0;
  int count = 0;
  count += ParseNumberPath(text.c_str(), identifiers) != model::numberPath(text).accepted;
  count += identifiers != model::numberPath(text).items;
  count += SplitNumbers(cutUp.data(), numbers, "./") != model::numbers(text, "./").accepted;
  count += numbers != model::numbers(text, "./").items;
  count += ParseID(text.c_str(), value) != model::id(text.c_str()).has_value();
  count += ParseNumberOrInvalid(text.c_str()) != model::numberOrInvalid(text.c_str());
  count += ParseNumberOrInvalid(nullptr) != 4294967295;
  count += IsNumeric(text.c_str()) != model::isDigits(model::trimmed(text));
  return count;
}

int disagreementsOnTexts(model::Generator& generator) {
  const std::string text = generator.keyValuePath();
  std::string trimmed = text;
  std::string copy;
  std::string key;
  std::string value;
  std::vector<std::string> pieces;
  model::Pairs pairs;
  int count = 0;
  TrimAndCheck(trimmed, false);
  count += trimmed != model::trimmed(text);
  count += AssignNonEmpty(text.c_str(), copy) != !text.empty() || copy != text;
  count += SplitByChar(text, pieces, '/') != model::split(text, '/').accepted;
  count += SplitNameValue(text, key, value) != model::keyValue(text).has_value();
  count += ParseNameValuePath(text.c_str(), pairs) != model::path(text.c_str(), {}).accepted;
  return count;
}

int disagreementsOnNames(model::Generator& generator) {
  const std::string name = generator.layeredName();
  const std::string indexed = generator.indexedName();
  const model::Layered expected = model::layered(name.c_str(), {}, 0);
  model::Values values;
  std::string text;
  unsigned long index = 0;
  unsigned int id = 0;
  int count = 0;
  count += ParseTPLayeredName(name.c_str(), values, id) != expected.accepted;
  count += values != expected.values || id != expected.templateId;
  count += CheckTPValues(values, 7) != model::allowed(values, 7);
  count +=
      ParseIndexedName(indexed.c_str(), text, index) != model::indexed(indexed.c_str()).has_value();
  return count;
}

TEST(Nameparse, answersAlikeOnManyThreads) {
  runApart([] {
    constexpr unsigned int THREADS = 8;
    constexpr int ROUNDS = 2000;
    std::atomic<int> disagreements{0};
    std::vector<std::thread> threads;
    for (unsigned int seed = 0; seed < THREADS; ++seed) {
      threads.emplace_back([seed, &disagreements] {
        model::Generator generator(seed);
        for (int round = 0; round < ROUNDS; ++round) {
          disagreements += disagreementsOnNumbers(generator) + disagreementsOnTexts(generator) +
                           disagreementsOnNames(generator);
        }
      });
    }
    for (std::thread& thread : threads) {
      thread.join();
    }
    EXPECT_EQ(disagreements, 0);
  });
}

}  // namespace
}  // namespace zk::test
