// The inner nodes of the tree.
#include <utility>

#include "agent/constraint/expression.h"

namespace zk::agent::etcl {

namespace {

// TRUE, FALSE, or no answer for whatever else an operand comes to.
std::optional<bool> answer(const Expression& condition, Evaluation& evaluation) {
  const Value value = lookedUp(condition.evaluate(evaluation), evaluation);
  const auto* holds = std::get_if<bool>(&value);
  return holds != nullptr ? std::optional(*holds) : std::nullopt;
}

// A conjunction (deciding: false) or a disjunction (deciding: true).
class Junction final : public Expression {
 public:
  Junction(bool deciding, Expressions conditions)
      : deciding_(deciding), conditions_(std::move(conditions)) {}

  Value evaluate(Evaluation& evaluation) const override {
    bool undecided = false;
    for (const auto& condition : conditions_) {
      const auto holds = answer(*condition, evaluation);
      if (holds == deciding_) {
        return deciding_;
      }
      undecided |= !holds;
    }
    return undecided ? Value() : Value(!deciding_);
  }

 private:
  bool deciding_;
  Expressions conditions_;
};

class Negation final : public Expression {
 public:
  explicit Negation(ExpressionPtr condition) : condition_(std::move(condition)) {}

  Value evaluate(Evaluation& evaluation) const override {
    const auto holds = answer(*condition_, evaluation);
    return holds ? Value(!*holds) : Value();
  }

 private:
  ExpressionPtr condition_;
};

Value compareNamed(Comparison how, const Value& left, const Value& right, Evaluation& evaluation) {
  const bool labels =
      std::holds_alternative<Enumerated>(left) || std::holds_alternative<Enumerated>(right);
  return labels ? compare(how, left, right)
                : compare(how, lookedUp(left, evaluation), lookedUp(right, evaluation));
}

class ComparisonNode final : public Expression {
 public:
  ComparisonNode(Comparison how, ExpressionPtr left, ExpressionPtr right)
      : how_(how), left_(std::move(left)), right_(std::move(right)) {}

  Value evaluate(Evaluation& evaluation) const override {
    const Value left = left_->evaluate(evaluation);
    return isNothing(left) ? Value()
                           : compareNamed(how_, left, right_->evaluate(evaluation), evaluation);
  }

 private:
  Comparison how_;
  ExpressionPtr left_;
  ExpressionPtr right_;
};

class Calculation final : public Expression {
 public:
  Calculation(Operation what, ExpressionPtr left, ExpressionPtr right)
      : what_(what), left_(std::move(left)), right_(std::move(right)) {}

  Value evaluate(Evaluation& evaluation) const override {
    return calculate(what_, lookedUp(left_->evaluate(evaluation), evaluation),
                     lookedUp(right_->evaluate(evaluation), evaluation));
  }
  bool isCondition() const override { return false; }

 private:
  Operation what_;
  ExpressionPtr left_;
  ExpressionPtr right_;
};

class Substring final : public Expression {
 public:
  Substring(ExpressionPtr needle, ExpressionPtr hay)
      : needle_(std::move(needle)), hay_(std::move(hay)) {}

  Value evaluate(Evaluation& evaluation) const override {
    const Value needle = lookedUp(needle_->evaluate(evaluation), evaluation);
    const Value hay = lookedUp(hay_->evaluate(evaluation), evaluation);
    const auto* sought = std::get_if<std::string_view>(&needle);
    const auto* text = std::get_if<std::string_view>(&hay);
    return sought != nullptr && text != nullptr
               ? Value(text->find(*sought) != std::string_view::npos)
               : Value();
  }

 private:
  ExpressionPtr needle_;
  ExpressionPtr hay_;
};

class Contained final : public Expression {
 public:
  Contained(ExpressionPtr element, Path list)
      : element_(std::move(element)), list_(std::move(list)) {}

  Value evaluate(Evaluation& evaluation) const override {
    const Value element = element_->evaluate(evaluation);
    const Value list = follow(list_, evaluation);
    const auto length = lengthOf(list);
    if (isNothing(element) || !length) {
      return Nothing{};
    }
    for (CORBA::ULong i = 0; i < *length; ++i) {
      const Value same =
          compareNamed(Comparison::equal, element, elementAt(list, i, evaluation), evaluation);
      if (const auto* holds = std::get_if<bool>(&same); holds != nullptr && *holds) {
        return true;
      }
    }
    return false;
  }

 private:
  ExpressionPtr element_;
  Path list_;
};

}  // namespace

ExpressionPtr allOf(Expressions conditions) {
  return std::make_unique<Junction>(false, std::move(conditions));
}
ExpressionPtr anyOf(Expressions conditions) {
  return std::make_unique<Junction>(true, std::move(conditions));
}
ExpressionPtr negation(ExpressionPtr condition) {
  return std::make_unique<Negation>(std::move(condition));
}
ExpressionPtr comparison(Comparison how, ExpressionPtr left, ExpressionPtr right) {
  return std::make_unique<ComparisonNode>(how, std::move(left), std::move(right));
}
ExpressionPtr calculation(Operation what, ExpressionPtr left, ExpressionPtr right) {
  return std::make_unique<Calculation>(what, std::move(left), std::move(right));
}
ExpressionPtr substring(ExpressionPtr needle, ExpressionPtr hay) {
  return std::make_unique<Substring>(std::move(needle), std::move(hay));
}
ExpressionPtr contained(ExpressionPtr element, Path list) {
  return std::make_unique<Contained>(std::move(element), std::move(list));
}

}  // namespace zk::agent::etcl
