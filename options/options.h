// What a program is told at its start: command line, configuration file,
// environment, the first of them that says it. For one thread. Options and
// commands are handles into the program, which must outlive them; the values
// that options fill must outlive parse.
#ifndef ZK_OPTIONS_OPTIONS_H
#define ZK_OPTIONS_OPTIONS_H

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace zk::options {

// Says what is wrong with a value; an empty text: nothing.
using Check = std::function<std::string(const std::string& value)>;

// What an option's value may be, each word standing for a value.
template <class Value>
using Choices = std::vector<std::pair<std::string, Value>>;

// Each function returns the option itself, so that calls can be chained.
class Option {
 public:
  explicit Option(CLI::Option* option) : option_(option) {}

  // Where the value comes from when neither line nor file has it.
  Option& environment(const std::string& variable);
  Option& required();
  // Help shows the value that the variable has now.
  Option& showDefault();
  Option& showDefault(const std::string& text);

  // What help shows for the value, in place of its type.
  Option& form(const std::string& text);
  // What help shows after the name, in place of type, default and all else.
  Option& formOnly(const std::string& text);

  // Calls for each value. form is shown after the type.
  Option& check(Check check, const std::string& form = "");
  // Both ends belong to it. Of int, unsigned and double.
  template <class Number>
  Option& range(Number low, Number high);
  Option& oneOf(const std::vector<std::string>& words);

  // Not together with the other; not without it.
  Option& excludes(const Option& other);
  Option& needs(const Option& other);

  // Once parsed: whether anybody gave it.
  bool given() const;

 private:
  CLI::Option* option_;
};

// A program or one of its commands. An option's names are separated by commas,
// as in "-o,--output"; a name without dashes is an argument known by its place.
class Command {
 public:
  explicit Command(CLI::App* command) : command_(command) {}

  // A value of a text, a number, an optional<double>, std::chrono::seconds, or
  // a vector of texts, whose option may be repeated. Unset without the option.
  template <class Value>
  Option add(const std::string& names, Value& value, const std::string& help);

  // take is called with the text and says what is wrong with it.
  Option read(const std::string& names, Check take, const std::string& help);

  // One of the words. Help shows them, and that of the value it has now.
  template <class Value>
  Option choice(const std::string& names, Value& value, const Choices<Value>& choices,
                const std::string& help);

  Option flag(const std::string& names, bool& value, const std::string& help);
  Option flag(const std::string& names, std::function<void()> whenGiven, const std::string& help);

  // An option added before, by one of its names; throws std::logic_error for another.
  Option option(const std::string& name) const;

  Command subcommand(const std::string& name, const std::string& summary);
  // How many of them it must be given at least and at most; any number without this.
  void requireSubcommands(std::size_t least, std::size_t most);
  // Calls at the end of parsing, once all values are filled, when it was given.
  void whenGiven(std::function<void()> then);
  void footer(const std::string& text);

  bool given() const;

 protected:
  CLI::App* command_;
};

// What to print, and the status to exit with.
struct Ending {
  int status;
  std::string output;  // for standard output: help or version
  std::string error;   // for standard error: what is wrong with the usage
};

// How a program says that its usage was wrong: prefix, reason, and the hint on a
// line of its own.
struct WrongUsage {
  int status;
  std::string prefix;
  std::string hint;
};

class Program : public Command {
 public:
  Program(const std::string& name, const std::string& description, WrongUsage wrongUsage);
  ~Program();
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  // --version prints it.
  void version(const std::string& text);
  // The option names a file of lines NAME=VALUE, NAME without dashes; a name that
  // is no option is wrong usage.
  void configurationFile(const std::string& option, const std::string& help);
  // Options of the program may stand behind a command's name too. For the
  // commands added from now on.
  void fallThrough();

  // Nothing: go on, the values are filled. After wrong usage some may be. What a
  // function given to it throws is passed on.
  std::optional<Ending> parse(int argc, const char* const* argv);

 private:
  const std::unique_ptr<CLI::App> program_;
  const WrongUsage wrongUsage_;
};

template <class Value>
Option Command::choice(const std::string& names, Value& value, const Choices<Value>& choices,
                       const std::string& help) {
  std::vector<std::string> words;
  std::string now;
  for (const auto& [word, meaning] : choices) {
    words.push_back(word);
    now = meaning == value ? word : now;
  }
  const auto take = [choices, &value](const std::string& text) {
    for (const auto& [word, meaning] : choices) {
      if (word == text) {
        value = meaning;
      }
    }
    return std::string();
  };
  return read(names, take, help).showDefault(now).oneOf(words);
}

}  // namespace zk::options

#endif
