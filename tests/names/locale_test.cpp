// Frequencies in a process whose locale writes a decimal comma: they are read as
// ever.
#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>

#include "tests/names/parsemodel.h"
#include "zk_quornex/names/nameparse.h"

namespace zk::test {
namespace {

namespace fs = std::filesystem;

// A locale of the test's own making, in a folder of its own.
class CommaLocale : public testing::Test {
 protected:
  void SetUp() override {
    if (std::system("command -v localedef >/dev/null") != 0) {
      GTEST_SKIP() << "no localedef";
    }
    std::string folder = (fs::temp_directory_path() / "zk-locale-XXXXXX").string();
    ASSERT_NE(mkdtemp(folder.data()), nullptr);
    folder_ = folder;
    std::ofstream(folder_ / "comma.src") << "LC_NUMERIC\ndecimal_point \",\"\nthousands_sep "
                                            "\".\"\ngrouping 3;3\nEND LC_NUMERIC\n";
    // Complains about what it is not told and makes the locale all the same.
    const std::string command = "cd '" + folder +
                                "' && localedef -c --quiet -i comma.src -f ANSI_X3.4-1968 ./comma "
                                ">/dev/null 2>&1";
    static_cast<void>(std::system(command.c_str()));
    setenv("LOCPATH", folder.c_str(), 1);
  }

  void TearDown() override {
    std::setlocale(LC_ALL, "C");
    unsetenv("LOCPATH");
    if (!folder_.empty()) {
      fs::remove_all(folder_);
    }
  }

  static void enter() {
    ASSERT_NE(std::setlocale(LC_NUMERIC, "comma"), nullptr);
    ASSERT_EQ(std::strtod("1,5", nullptr), 1.5);
  }

 private:
  fs::path folder_;
};

unsigned long frequencyOf(const std::string& text) {
  std::map<std::string, unsigned long> values;
  unsigned int id = 0;
  NS_QUORCORBA::ParseTPLayeredName(("/frequency=" + text + "/id=1").c_str(), values, id);
  const auto found = values.find("frequency");
  return found != values.end() ? found->second : ~0UL;
}

TEST_F(CommaLocale, readsADecimalPoint) {
  enter();
  EXPECT_EQ(frequencyOf("191.35"), 19135UL);
  EXPECT_EQ(frequencyOf("191,35"), 19100UL);
}

TEST_F(CommaLocale, readsGeneratedTextsAsTheCLocaleDoes) {
  const std::string characters = "00112233456789..,,+eExXpPinfaINFNAty() \t";
  std::mt19937 random(20121120);
  std::vector<std::string> texts{"",    "inf",   "+inf",    "nan",   "NAN(7)", "0x1.8p3", "1e400",
                                 "1e5", "1.5e+", " \t 7.5", "+.5e1", ".",      "1..2",    "1.2,3"};
  for (int number = 0; number < 50000; ++number) {
    std::string text;
    for (std::size_t length = random() % 10; length > 0; --length) {
      text += characters[random() % characters.size()];
    }
    texts.push_back(text);
  }
  std::vector<unsigned long> expected;
  expected.reserve(texts.size());
  for (const std::string& text : texts) {
    const auto layered = model::layered(("/frequency=" + text + "/id=1").c_str(), {}, 0);
    const auto found = layered.values.find("frequency");
    expected.push_back(found != layered.values.end() ? found->second : ~0UL);
  }
  enter();
  for (std::size_t number = 0; number < texts.size(); ++number) {
    ASSERT_EQ(frequencyOf(texts[number]), expected[number]) << "\"" << texts[number] << "\"";
  }
}

}  // namespace
}  // namespace zk::test
