#include "agent/constraint/builder.h"

#include <charconv>
#include <limits>

#include "agent/constraint/grammar.h"

namespace zk::agent::etcl {

void Builder::refuse(const std::string& reason, std::string_view read) const {
  throw InvalidConstraintText(reason, offsetOf(read.data()));
}

void Builder::limit(std::size_t count, std::size_t most, const char* what,
                    std::string_view read) const {
  if (count > most) {
    refuse("more than " + std::to_string(most) + " " + what, read);
  }
}

void Builder::countToken(std::string_view behind) {
  limit(++tokens_, MOST_TOKENS, "words and signs", behind);
}

void Builder::openGroup(std::string_view read) {
  limit(++open_, MOST_OPEN_PARENTHESES, "open parentheses", read);
}

// A backslash before anything but a quote or another backslash is itself.
void Builder::takeText(std::string_view read) {
  text_.clear();
  for (std::size_t i = 0; i < read.size(); ++i) {
    const char next = i + 1 < read.size() ? read[i + 1] : '\0';
    if (read[i] == '\\' && (next == '\'' || next == '\\')) {
      ++i;
    }
    text_ += read[i];
  }
}

void Builder::takeWhole(std::string_view read) {
  std::uint64_t value = 0;
  if (std::from_chars(read.data(), read.data() + read.size(), value).ec != std::errc()) {
    refuse("a whole number of more than 64 bits", read);
  }
  const bool fits = value <= static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
  number_ =
      fits ? Number(static_cast<std::int64_t>(value)) : Number(static_cast<long double>(value));
}

void Builder::takeReal(std::string_view read) {
  double value = 0;
  if (std::from_chars(read.data(), read.data() + read.size(), value).ec != std::errc()) {
    refuse("a number too large or too small", read);
  }
  number_ = static_cast<long double>(value);
}

void Builder::start(std::string_view read) {
  if (text_ == "curtime") {
    refuse("the variable curtime is not offered", read);
  }
  path_.variable = std::move(text_);
}

CORBA::ULong Builder::position(std::string_view read) const {
  const auto* value = std::get_if<std::int64_t>(&number_);
  if (value == nullptr || *value > std::numeric_limits<CORBA::Long>::max()) {
    refuse("a position of more than 31 bits", read);
  }
  return static_cast<CORBA::ULong>(*value);
}

void Builder::limitSteps(std::string_view read) const {
  limit(path_.steps.size(), MOST_STEPS, "steps in a path", read);
}

void Builder::push(ExpressionPtr expression, std::string_view read) {
  operands_.push_back({std::move(expression), offsetOf(read.data())});
}

void Builder::pushSigned(std::string_view read, Operation sign) {
  push(calculation(sign, number(std::int64_t{0}), number(number_)), read);
}

Builder::Operand Builder::pop() {
  Operand last = std::move(operands_.back());
  operands_.pop_back();
  return last;
}

ExpressionPtr Builder::condition(Operand operand) {
  if (!operand.expression->isCondition()) {
    throw InvalidConstraintText("a number or a text where a condition belongs", operand.at);
  }
  return std::move(operand.expression);
}

template <typename Joining>
void Builder::join(Joining joined) {
  Operand right = pop();
  Operand left = pop();
  const std::size_t at = left.at;
  operands_.push_back({joined(std::move(left), std::move(right)), at});
}

void Builder::negate(std::string_view read) { push(negation(condition(pop())), read); }

void Builder::calculate(std::string_view read, Operation what) {
  limit(++operations_, MOST_OPERATIONS, "sums and products", read);
  join([what](Operand left, Operand right) {
    return calculation(what, std::move(left.expression), std::move(right.expression));
  });
}

void Builder::compare(Comparison how) {
  join([how](Operand left, Operand right) {
    return comparison(how, std::move(left.expression), std::move(right.expression));
  });
}

void Builder::findSubstring() {
  join([](Operand left, Operand right) {
    return substring(std::move(left.expression), std::move(right.expression));
  });
}

void Builder::findInList() {
  Operand& element = operands_.back();
  element.expression = contained(std::move(element.expression), takePath());
}

void Builder::conjoin() {
  join([](Operand left, Operand right) {
    return conjunction(condition(std::move(left)), condition(std::move(right)));
  });
}

void Builder::disjoin() {
  join([](Operand left, Operand right) {
    return disjunction(condition(std::move(left)), condition(std::move(right)));
  });
}

}  // namespace zk::agent::etcl
