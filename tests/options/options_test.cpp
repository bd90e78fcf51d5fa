#include "options/options.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <stdexcept>

namespace zk::options {
namespace {

using std::chrono::seconds;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

// Set for the lifetime of the object.
class Variable {
 public:
  Variable(const char* name, const char* value) : name_(name) { setenv(name, value, 1); }
  ~Variable() { unsetenv(name_); }
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;

 private:
  const char* name_;
};

class ConfigurationFile {
 public:
  explicit ConfigurationFile(const std::string& text) { std::ofstream(path_) << text; }
  ~ConfigurationFile() { std::remove(path_.c_str()); }
  ConfigurationFile(const ConfigurationFile&) = delete;
  ConfigurationFile& operator=(const ConfigurationFile&) = delete;

  const char* path() const { return path_.c_str(); }

 private:
  const std::string path_ =
      testing::TempDir() + "options_test." + std::to_string(getpid()) + ".conf";
};

enum class Color { RED, GREEN };

class Options : public testing::Test {
 protected:
  std::optional<Ending> parse(const std::vector<const char*>& arguments) {
    std::vector<const char*> argv = {"paint"};
    argv.insert(argv.end(), arguments.begin(), arguments.end());
    return program_.parse(static_cast<int>(argv.size()), argv.data());
  }

  // What is wrong with the usage; empty: nothing.
  std::string refusal(const std::vector<const char*>& arguments) {
    const auto ending = parse(arguments);
    return ending ? ending->error : "";
  }

  std::string help(const std::vector<const char*>& arguments = {"--help"}) {
    const auto ending = parse(arguments);
    return ending && ending->status == 0 ? ending->output : "no help";
  }

  Program program_{"paint", "Paints a wall", {3, "paint: ", "Try: paint --help"}};
};

TEST_F(Options, fillValuesOfEveryType) {
  std::string text;
  int whole = 0;
  unsigned count = 0;
  std::size_t size = 0;
  double real = 0;
  std::optional<double> maybe;
  seconds wait{0};
  program_.add("--text", text, "");
  program_.add("--whole", whole, "");
  program_.add("--count", count, "");
  program_.add("--size", size, "");
  program_.add("--real", real, "");
  program_.add("--maybe", maybe, "");
  program_.add("--wait", wait, "");
  ASSERT_FALSE(parse({"--text", "a b", "--whole", "-7", "--count", "8", "--size", "9", "--real",
                      "0.5", "--maybe", "1.5", "--wait", "60"}));
  EXPECT_EQ(text, "a b");
  EXPECT_EQ(whole, -7);
  EXPECT_EQ(count, 8U);
  EXPECT_EQ(size, 9U);
  EXPECT_EQ(real, 0.5);
  EXPECT_EQ(maybe, 1.5);
  EXPECT_EQ(wait, seconds(60));
}

TEST_F(Options, leaveValuesThatAreNotGiven) {
  std::string text = "before";
  std::optional<double> maybe;
  Option option = program_.add("--text", text, "");
  program_.add("--maybe", maybe, "");
  ASSERT_FALSE(parse({}));
  EXPECT_EQ(text, "before");
  EXPECT_FALSE(maybe);
  EXPECT_FALSE(option.given());
}

TEST_F(Options, refuseWhatIsNoNumber) {
  unsigned count = 0;
  seconds wait{0};
  program_.add("--count", count, "");
  program_.add("--wait", wait, "");
  for (const char* text : {"many", "-1", "1x"}) {
    EXPECT_THAT(refusal({"--count", text}), HasSubstr("--count")) << text;
  }
  EXPECT_THAT(refusal({"--wait", "long"}), HasSubstr("--wait"));
}

TEST_F(Options, mayBeRepeatedAndTakeOneValueEach) {
  std::vector<std::string> texts;
  std::string place;
  program_.add("--text", texts, "");
  program_.add("place", place, "");
  ASSERT_FALSE(parse({"--text", "a", "--text", "b", "wall"}));
  EXPECT_THAT(texts, ElementsAre("a", "b"));
  EXPECT_EQ(place, "wall");
}

TEST_F(Options, areFlags) {
  bool wet = false;
  bool dry = false;
  int times = 0;
  Option given = program_.flag("-w,--wet", wet, "");
  program_.flag("--dry", dry, "");
  program_.flag(
      "--again", [&times] { ++times; }, "");
  ASSERT_FALSE(parse({"-w", "--again"}));
  EXPECT_TRUE(wet);
  EXPECT_TRUE(given.given());
  EXPECT_FALSE(dry);
  EXPECT_EQ(times, 1);
}

TEST_F(Options, chooseBetweenWords) {
  Color color = Color::RED;
  program_.choice("--color", color, {{"red", Color::RED}, {"green", Color::GREEN}}, "Which");
  EXPECT_THAT(help(), HasSubstr("--color TEXT:{red,green}=red"));
  EXPECT_THAT(refusal({"--color", "blue"}), HasSubstr("blue not in {red,green}"));
  EXPECT_EQ(color, Color::RED);
  ASSERT_FALSE(parse({"--color", "green"}));
  EXPECT_EQ(color, Color::GREEN);
}

TEST_F(Options, readTextsTheirOwnWay) {
  std::size_t length = 0;
  program_.read(
      "-t,--text",
      [&length](const std::string& text) {
        length = text.size();
        return text.empty() ? "nothing there" : "";
      },
      "");
  ASSERT_FALSE(parse({"-t", "four"}));
  EXPECT_EQ(length, 4U);
  EXPECT_EQ(refusal({"--text", ""}), "paint: --text: nothing there\nTry: paint --help\n");
}

TEST_F(Options, areChecked) {
  std::string text;
  unsigned count = 5;
  const auto noBlank = [](const std::string& value) {
    return value.find(' ') == std::string::npos ? "" : "'" + value + "' has a blank";
  };
  program_.add("--text", text, "").check(noBlank, "WORD");
  program_.add("--count", count, "").range(1U, 10U).showDefault();
  EXPECT_EQ(refusal({"--text", "a b"}), "paint: --text: 'a b' has a blank\nTry: paint --help\n");
  EXPECT_EQ(refusal({"--text", "ab"}), "");
  EXPECT_EQ(refusal({"--count", "1"}), "");
  EXPECT_EQ(refusal({"--count", "10"}), "");
  EXPECT_THAT(refusal({"--count", "0"}), HasSubstr("0 not in range 1 to 10"));
  EXPECT_THAT(refusal({"--count", "11"}), HasSubstr("11 not in range 1 to 10"));
  EXPECT_THAT(help(), HasSubstr("--text TEXT:WORD"));
}

TEST_F(Options, belongTogetherOrNot) {
  std::string brush;
  bool roller = false;
  bool wide = false;
  program_.add("--brush", brush, "");
  Option rollerGiven = program_.flag("--roller", roller, "").excludes(program_.option("--brush"));
  program_.flag("--wide", wide, "").needs(rollerGiven);
  EXPECT_EQ(refusal({"--roller", "--wide"}), "");
  EXPECT_THAT(refusal({"--roller", "--brush", "b"}), HasSubstr("--brush excludes --roller"));
  EXPECT_THAT(refusal({"--wide"}), HasSubstr("--wide requires --roller"));
  EXPECT_THROW(program_.option("--bucket"), std::logic_error);
}

TEST_F(Options, mayBeRequired) {
  std::string place;
  program_.add("place", place, "").required();
  EXPECT_THAT(refusal({}), HasSubstr("place is required"));
  EXPECT_EQ(refusal({"wall"}), "");
}

TEST_F(Options, comeFromTheLineBeforeTheFileBeforeTheEnvironment) {
  std::string first, second, third;
  bool dry = false;
  program_.configurationFile("--config", "");
  program_.add("--first-of-all", first, "").environment("ZK_TEST_FIRST");
  program_.add("--second", second, "").environment("ZK_TEST_SECOND");
  program_.add("--third", third, "").environment("ZK_TEST_THIRD");
  program_.flag("--dry", dry, "");
  const ConfigurationFile file("first-of-all=file\nsecond=file\ndry=true\n");
  const Variable one("ZK_TEST_FIRST", "environment");
  const Variable two("ZK_TEST_SECOND", "environment");
  const Variable three("ZK_TEST_THIRD", "environment");
  ASSERT_FALSE(parse({"--config", file.path(), "--first-of-all", "line"}));
  EXPECT_EQ(first, "line");
  EXPECT_EQ(second, "file");
  EXPECT_EQ(third, "environment");
  EXPECT_TRUE(dry);
}

TEST_F(Options, refuseFilesThatCannotBeReadOrNameNoOption) {
  program_.configurationFile("--config", "");
  const ConfigurationFile file("colour=red\n");
  EXPECT_THAT(refusal({"--config", file.path()}), HasSubstr("colour"));
  EXPECT_THAT(refusal({"--config", "/nowhere/paint.conf"}), HasSubstr("/nowhere/paint.conf"));
}

TEST_F(Options, areShownInHelp) {
  unsigned coats = 2;
  seconds wait{90};
  std::string color, place;
  program_.add("--coats", coats, "How often").showDefault().environment("ZK_TEST_COATS");
  program_.add("--wait", wait, "How long").showDefault().range(1, 100);
  program_.add("--color", color, "Which").form("NAME").showDefault("white");
  program_.add("place", place, "Where").formOnly("WALL");
  program_.footer("Paint dries.\n");
  const std::string text = help();
  EXPECT_THAT(text, HasSubstr("Paints a wall\nUsage: paint [OPTIONS] [place]"));
  EXPECT_THAT(text, HasSubstr("--coats UINT=2 (Env:ZK_TEST_COATS)"));
  EXPECT_THAT(text, HasSubstr("--wait INT:INT in [1 - 100]=90"));
  EXPECT_THAT(text, HasSubstr("--color NAME=white"));
  EXPECT_THAT(text, HasSubstr("place WALL"));
  EXPECT_THAT(text, HasSubstr("Paint dries."));
}

TEST_F(Options, tellTheVersion) {
  program_.version("paint 1.2");
  const auto ending = parse({"--version"});
  ASSERT_TRUE(ending);
  EXPECT_EQ(ending->status, 0);
  EXPECT_EQ(ending->output, "paint 1.2\n");
  EXPECT_EQ(ending->error, "");
}

TEST_F(Options, endWrongUsageTheProgramsOwnWay) {
  const auto ending = parse({"--nonsense"});
  ASSERT_TRUE(ending);
  EXPECT_EQ(ending->status, 3);
  EXPECT_EQ(ending->output, "");
  EXPECT_THAT(ending->error, testing::StartsWith("paint: "));
  EXPECT_THAT(ending->error, HasSubstr("--nonsense"));
  EXPECT_THAT(ending->error, testing::EndsWith("\nTry: paint --help\n"));
}

class Commands : public Options {
 protected:
  Commands() {
    program_.requireSubcommands(0, 1);
    program_.flag("--quiet", quiet_, "");
    wall_.add("color", color_, "Which").required();
    wall_.whenGiven([this] { painted_ = color_; });
    wall_.footer("Walls are large.\n");
  }

  Program& falling() {
    program_.fallThrough();
    return program_;
  }

  bool quiet_ = false;
  std::string color_;
  std::string painted_;
  Command wall_ = falling().subcommand("wall", "Paint a wall");
  Command door_ = program_.subcommand("door", "Paint a door");
};

TEST_F(Commands, areToldFromEachOther) {
  ASSERT_FALSE(parse({"wall", "red"}));
  EXPECT_EQ(painted_, "red");
  EXPECT_TRUE(wall_.given());
  EXPECT_FALSE(door_.given());
}

TEST_F(Commands, leaveTheProgramsOptionsWhereTheyStand) {
  ASSERT_FALSE(parse({"wall", "red", "--quiet"}));
  EXPECT_TRUE(quiet_);
}

TEST_F(Commands, areLimitedInNumber) {
  EXPECT_EQ(refusal({}), "");
  EXPECT_NE(refusal({"door", "wall", "red"}), "");
  door_.subcommand("handle", "");
  door_.requireSubcommands(1, 1);
  EXPECT_NE(refusal({"door"}), "");
  EXPECT_EQ(refusal({"door", "handle"}), "");
}

TEST_F(Commands, areNotRunWhenTheUsageIsWrong) {
  EXPECT_NE(refusal({"wall"}), "");
  EXPECT_EQ(painted_, "");
}

TEST_F(Commands, haveHelpOfTheirOwn) {
  const std::string text = help({"wall", "--help"});
  EXPECT_THAT(text, HasSubstr("Walls are large."));
  EXPECT_THAT(text, Not(HasSubstr("--quiet")));
  EXPECT_THAT(help(), HasSubstr("  wall "));
}

TEST_F(Commands, passOnWhatTheyThrow) {
  door_.whenGiven([] { throw std::runtime_error("no door"); });
  EXPECT_THROW(parse({"door"}), std::runtime_error);
}

}  // namespace
}  // namespace zk::options
