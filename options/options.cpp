#include "options/options.h"

#include <CLI/CLI.hpp>
#include <chrono>
#include <sstream>
#include <stdexcept>

namespace zk::options {

Option& Option::environment(const std::string& variable) {
  option_->envname(variable);
  return *this;
}

Option& Option::required() {
  option_->required();
  return *this;
}

Option& Option::showDefault() {
  option_->capture_default_str();
  return *this;
}

Option& Option::showDefault(const std::string& text) {
  option_->default_str(text);
  return *this;
}

Option& Option::form(const std::string& text) {
  option_->type_name(text);
  return *this;
}

Option& Option::formOnly(const std::string& text) {
  option_->option_text(text);
  return *this;
}

Option& Option::check(Check check, const std::string& form) {
  option_->check(std::move(check), form);
  return *this;
}

template <class Number>
Option& Option::range(Number low, Number high) {
  option_->check(CLI::Range(low, high));
  return *this;
}

template Option& Option::range(int, int);
template Option& Option::range(unsigned, unsigned);
template Option& Option::range(double, double);

Option& Option::oneOf(const std::vector<std::string>& words) {
  option_->check(CLI::IsMember(words));
  return *this;
}

Option& Option::excludes(const Option& other) {
  option_->excludes(other.option_);
  return *this;
}

Option& Option::needs(const Option& other) {
  option_->needs(other.option_);
  return *this;
}

bool Option::given() const { return option_->count() > 0; }

template <class Value>
Option Command::add(const std::string& names, Value& value, const std::string& help) {
  return Option(command_->add_option(names, value, help));
}

template Option Command::add(const std::string&, std::string&, const std::string&);
template Option Command::add(const std::string&, int&, const std::string&);
template Option Command::add(const std::string&, unsigned&, const std::string&);
template Option Command::add(const std::string&, long&, const std::string&);
template Option Command::add(const std::string&, unsigned long&, const std::string&);
template Option Command::add(const std::string&, double&, const std::string&);
template Option Command::add(const std::string&, std::optional<double>&, const std::string&);

template <>
Option Command::add(const std::string& names, std::vector<std::string>& values,
                    const std::string& help) {
  CLI::Option* const option = command_->add_option(names, values, help);
  option->expected(1)->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
  // Else arguments that follow a value would be taken for further ones.
  return Option(option->allow_extra_args(false));
}

template <>
Option Command::add(const std::string& names, std::chrono::seconds& value,
                    const std::string& help) {
  const auto take = [&value](long given) { value = std::chrono::seconds(given); };
  return Option(command_->add_option_function<long>(names, take, help)->default_function([&value] {
    return std::to_string(value.count());
  }));
}

Option Command::read(const std::string& names, Check take, const std::string& help) {
  const std::string name = names.substr(names.rfind(',') + 1);
  const auto takeOrRefuse = [name, take = std::move(take)](const std::string& text) {
    const std::string complaint = take(text);
    if (!complaint.empty()) {
      throw CLI::ValidationError(name, complaint);
    }
  };
  return Option(command_->add_option_function<std::string>(names, takeOrRefuse, help));
}

Option Command::flag(const std::string& names, bool& value, const std::string& help) {
  return Option(command_->add_flag(names, value, help));
}

Option Command::flag(const std::string& names, std::function<void()> whenGiven,
                     const std::string& help) {
  return Option(command_->add_flag_callback(names, std::move(whenGiven), help));
}

Option Command::option(const std::string& name) const {
  CLI::Option* const found = command_->get_option_no_throw(name);
  if (found == nullptr) {
    throw std::logic_error("no such option: " + name);
  }
  return Option(found);
}

Command Command::subcommand(const std::string& name, const std::string& summary) {
  return Command(command_->add_subcommand(name, summary));
}

void Command::requireSubcommands(std::size_t least, std::size_t most) {
  command_->require_subcommand(least, most);
}

void Command::whenGiven(std::function<void()> then) { command_->final_callback(std::move(then)); }

void Command::footer(const std::string& text) { command_->footer(text); }

bool Command::given() const { return command_->parsed(); }

Program::Program(const std::string& name, const std::string& description, WrongUsage wrongUsage)
    : Command(nullptr),
      program_(std::make_unique<CLI::App>(description, name)),
      wrongUsage_(std::move(wrongUsage)) {
  command_ = program_.get();
}

Program::~Program() = default;

void Program::version(const std::string& text) { program_->set_version_flag("--version", text); }

void Program::configurationFile(const std::string& option, const std::string& help) {
  program_->set_config(option, "", help);
  program_->allow_config_extras(CLI::config_extras_mode::error);
}

void Program::fallThrough() { program_->fallthrough(); }

std::optional<Ending> Program::parse(int argc, const char* const* argv) {
  try {
    program_->parse(argc, argv);
    return std::nullopt;
  } catch (const CLI::ParseError& wrong) {
    if (wrong.get_exit_code() != 0) {
      return Ending{wrongUsage_.status, "",
                    wrongUsage_.prefix + wrong.what() + "\n" + wrongUsage_.hint + "\n"};
    }
    std::ostringstream output;
    program_->exit(wrong, output, output);
    return Ending{0, output.str(), ""};
  }
}

}  // namespace zk::options
