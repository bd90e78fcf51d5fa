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
  number_ = unsignedValue(value);
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
  push(calculation(sign, literal(std::int64_t{0}), literal(number_)), read);
}

template <typename Making>
void Builder::replaceLastTwo(Making made) {
  ExpressionPtr right = std::move(operands_.back().expression);
  operands_.pop_back();
  ExpressionPtr& left = operands_.back().expression;
  left = made(std::move(left), std::move(right));
}

void Builder::negate() {
  requireCondition(operands_.back());
  ExpressionPtr& last = operands_.back().expression;
  last = negation(std::move(last));
}

void Builder::calculate(std::string_view read, Operation what) {
  limit(++operations_, MOST_OPERATIONS, "sums and products", read);
  replaceLastTwo([what](ExpressionPtr left, ExpressionPtr right) {
    return calculation(what, std::move(left), std::move(right));
  });
}

void Builder::compare(Comparison how) {
  replaceLastTwo([how](ExpressionPtr left, ExpressionPtr right) {
    return comparison(how, std::move(left), std::move(right));
  });
}

void Builder::combine(Combination combination) { replaceLastTwo(combination); }

void Builder::combineConditions(Combination combination) {
  requireCondition(operands_[operands_.size() - 2]);
  requireCondition(operands_.back());
  replaceLastTwo(combination);
}

void Builder::findInList() {
  ExpressionPtr& element = operands_.back().expression;
  element = contained(std::move(element), takePath());
}

ExpressionPtr Builder::result() {
  requireCondition(operands_.back());
  return std::move(operands_.back().expression);
}

void Builder::requireCondition(const Operand& operand) {
  if (!operand.expression->isCondition()) {
    throw InvalidConstraintText("a number or a text where a condition belongs", operand.at);
  }
}

}  // namespace zk::agent::etcl
