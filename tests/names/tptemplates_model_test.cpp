// The classifier against a second, independent reading of the same names:
// generated ones, and every name of a small world.
#include <gtest/gtest.h>

#include <iostream>

#include "tests/names/parsemodel_generator.h"
#include "zk_quornex/names/nameparse.h"

namespace zk::test {
namespace {

constexpr unsigned int UNTOUCHED = 99;

std::string dump(bool accepted, unsigned int id, const model::Values& values) {
  std::string text = accepted ? "accepted " : "refused ";
  text += std::to_string(id);
  for (const auto& [key, value] : values) {
    text += " " + key + "=" + std::to_string(value);
  }
  return text;
}

// How names were answered, so that a comparison of nothing but refusals shows.
struct Tally {
  long names = 0;
  long noTemplate = 0;
  std::map<unsigned int, long> accepted;
  std::map<unsigned int, long> refused;

  void add(const model::Layered& answer) {
    ++names;
    if (answer.templateId == UNTOUCHED) {
      ++noTemplate;
    } else {
      ++(answer.accepted ? accepted : refused)[answer.templateId];
    }
  }

  void print() const {
    std::cout << names << " names, " << noTemplate << " of no template;";
    for (unsigned int id = 1; id <= 23; ++id) {
      std::cout << " [" << id << "] " << at(accepted, id) << "/" << at(refused, id);
    }
    std::cout << " accepted/refused by template\n";
  }

  static long at(const std::map<unsigned int, long>& counts, unsigned int id) {
    const auto found = counts.find(id);
    return found == counts.end() ? 0 : found->second;
  }
};

void compare(const std::string& name, const model::Values& before, Tally& tally) {
  const model::Layered expected = model::layered(name.c_str(), before, UNTOUCHED);
  model::Values values = before;
  unsigned int id = UNTOUCHED;
  const bool accepted = NS_QUORCORBA::ParseTPLayeredName(name.c_str(), values, id);
  tally.add(expected);
  if (accepted != expected.accepted || id != expected.templateId || values != expected.values) {
    ADD_FAILURE() << '\'' << name << "' after " << dump(false, 0, before) << "\n is     "
                  << dump(accepted, id, values) << "\n not    "
                  << dump(expected.accepted, expected.templateId, expected.values);
  }
}

TEST(TPNameModel, agreesOnGeneratedNames) {
  constexpr int ROUNDS = 200000;
  model::Generator generator(20240601);
  Tally tally;
  for (int round = 0; round < ROUNDS && !HasFailure(); ++round) {
    const std::string name = generator.layeredName();
    compare(name, generator.valuesBefore(), tally);
  }
  tally.print();
  EXPECT_EQ(tally.names, ROUNDS);
  EXPECT_GT(tally.noTemplate, ROUNDS / 10);
  for (unsigned int id = 1; id <= 23; ++id) {
    EXPECT_GE(Tally::at(tally.accepted, id), 100) << id;
    EXPECT_GE(Tally::at(tally.refused, id), 100) << id;
  }
}

using Texts = std::vector<std::string>;

const Texts KEYS = {"rack",  "shelf",    "slot",   "port",   "sts3c_au4", "j",         "tu3_vc3",
                    "k",     "vt2_tu12", "l",      "m",      "frequency", "id",        "dsr",
                    "dsr_1", "dsr_4",    "dsr_16", "dsr_64", "dsr_Gb",    "direction", "stranger"};

// Values with their sign; the empty one makes a bare key.
const Texts VALUES = {"", "=0", "=1", "=2", "=3", "=4", "=7", "=8", "=x", "= 1 ", "=src", "=sink"};

Texts itemsOf(const Texts& keys, const Texts& values) {
  Texts items;
  for (const std::string& key : keys) {
    for (const std::string& value : values) {
      items.push_back(key + value);
    }
  }
  return items;
}

// Every name of one item for each level.
void compareAll(const std::vector<Texts>& levels, char separator, Tally& tally,
                const std::string& head = "", std::size_t level = 0) {
  if (level == levels.size()) {
    compare(head, {}, tally);
    return;
  }
  for (const std::string& item : levels[level]) {
    if (testing::Test::HasFailure()) {
      return;
    }
    std::string longer = head;
    longer += level == 0 ? '/' : separator;
    longer += item;
    compareAll(levels, separator, tally, longer, level + 1);
  }
}

void compareAll(const std::vector<Texts>& levels, Tally& tally) {
  compareAll(levels, '/', tally);
  compareAll(levels, '-', tally);
}

TEST(TPNameModel, agreesOnEveryNameOfTwoLevels) {
  const Texts items = itemsOf(KEYS, VALUES);
  Tally tally;
  compareAll({items}, '/', tally);
  compareAll({items, items}, tally);
  tally.print();
  EXPECT_EQ(tally.names, 252 + 2 * 252 * 252);
}

TEST(TPNameModel, agreesOnEveryNameOfThreeLevelsWithFewValues) {
  Texts items = itemsOf(KEYS, {"", "=1"});
  items.push_back("direction=sink");
  Tally tally;
  compareAll({items, items, items}, tally);
  tally.print();
  EXPECT_EQ(tally.names, 2 * 43 * 43 * 43);
}

// The deep templates, each level with its own key only.
TEST(TPNameModel, agreesOnEveryValueOfTheDeepTemplates) {
  const auto level = [](const char* key, const Texts& values) { return itemsOf({key}, values); };
  const Texts few = {"", "=1", "=2"};
  const Texts bareOrOne = {"", "=1"};
  Tally tally;
  compareAll({level("rack", few), level("shelf", VALUES), level("slot", few), level("port", VALUES),
              level("direction", {"", "=src", "=sink", "=both"})},
             tally);
  compareAll({level("sts3c_au4", few), level("j", few), level("tu3_vc3", few), level("k", VALUES)},
             tally);
  compareAll({level("sts3c_au4", bareOrOne), level("j", few), level("vt2_tu12", bareOrOne),
              level("k", VALUES), level("l", VALUES), level("m", VALUES)},
             tally);
  tally.print();
  EXPECT_GT(Tally::at(tally.accepted, 7), 0);
  EXPECT_GT(Tally::at(tally.refused, 7), 0);
}

}  // namespace
}  // namespace zk::test
