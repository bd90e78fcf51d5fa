// Texts for comparing the text parsing with its model: well-formed ones for the
// most part, then damaged. The same seed gives the same texts everywhere.
#ifndef ZK_TESTS_NAMES_PARSEMODEL_GENERATOR_H
#define ZK_TESTS_NAMES_PARSEMODEL_GENERATOR_H

#include <random>
#include <string>

#include "tests/names/parsemodel.h"

namespace zk::test::model {

class Generator {
 public:
  explicit Generator(std::uint32_t seed) : random_(seed) {}

  std::string layeredName();
  std::string keyValuePath();
  std::string numberList();  // numbers and separators of all kinds
  std::string indexedName();
  Values valuesBefore();  // mostly none
  Pairs pairsBefore();

 private:
  // 0 to limit - 1; the standard's distributions differ between libraries.
  std::size_t below(std::size_t limit) { return random_() % limit; }
  bool oneIn(std::size_t chances) { return below(chances) == 0; }
  template <class Items>
  auto oneOf(const Items& items) {
    return std::data(items)[below(std::size(items))];
  }

  std::string item(const std::string& key);
  std::string number();
  std::string frequency();
  std::string blanks();
  char oneCharacterOf(const std::string& set) { return set[below(set.size())]; }
  std::string damaged(std::string text);

  std::mt19937 random_;
};

}  // namespace zk::test::model

#endif
