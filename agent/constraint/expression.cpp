#include "agent/constraint/expression.h"

#include <cstring>
#include <utility>
#include <vector>

namespace zk::agent::etcl {

namespace {

constexpr std::size_t BYTES_A_UNIT = 64;  // of a text that is compared

class Literal final : public Expression {
 public:
  explicit Literal(const Value& value) : value_(value) {}
  Value evaluate(Evaluation& /*evaluation*/) const override { return value_; }
  bool isCondition() const override { return std::holds_alternative<bool>(value_); }

 private:
  Value value_;
};

class TextLiteral final : public Expression {
 public:
  explicit TextLiteral(std::string value) : value_(std::move(value)) {}
  Value evaluate(Evaluation& /*evaluation*/) const override { return std::string_view(value_); }
  bool isCondition() const override { return false; }

 private:
  std::string value_;
};

class BareName final : public Expression {
 public:
  explicit BareName(std::string value) : value_(std::move(value)) {}
  Value evaluate(Evaluation& /*evaluation*/) const override { return Name{value_}; }

 private:
  std::string value_;
};

class Part final : public Expression {
 public:
  explicit Part(Path path) : path_(std::move(path)) {}
  Value evaluate(Evaluation& evaluation) const override { return follow(path_, evaluation); }

 private:
  Path path_;
};

class Exists final : public Expression {
 public:
  explicit Exists(Path path) : path_(std::move(path)) {}
  Value evaluate(Evaluation& evaluation) const override {
    return !isNothing(follow(path_, evaluation));
  }

 private:
  Path path_;
};

class IsDefault final : public Expression {
 public:
  explicit IsDefault(Path path) : path_(std::move(path)) {}
  Value evaluate(Evaluation& evaluation) const override {
    return showsDefault(follow(path_, evaluation), evaluation);
  }

 private:
  Path path_;
};

bool isDiscriminator(const Step& step) {
  const auto* special = std::get_if<Special>(&step);
  return special != nullptr && *special == Special::DISCRIMINATOR;
}

// What a bare name stands for where no enumeration gives it a meaning.
Value lookedUp(const Value& value, Evaluation& evaluation) {
  const auto* bare = std::get_if<Name>(&value);
  return bare != nullptr ? variable(bare->text, evaluation) : value;
}

// A conjunction (deciding: false) or a disjunction (deciding: true).
class Junction final : public Expression {
 public:
  static ExpressionPtr joined(bool deciding, ExpressionPtr left, ExpressionPtr right) {
    auto* junction = dynamic_cast<Junction*>(left.get());
    if (junction == nullptr || junction->deciding_ != deciding) {
      auto made = std::make_unique<Junction>(deciding);
      junction = made.get();
      junction->conditions_.push_back(std::exchange(left, std::move(made)));
    }
    junction->conditions_.push_back(std::move(right));
    return left;
  }

  explicit Junction(bool deciding) : deciding_(deciding) {}

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
  std::vector<ExpressionPtr> conditions_;
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

// A comparison costs by the text that it may have to read.
void spendOn(const Value& text, Evaluation& evaluation) {
  const auto* read = std::get_if<std::string_view>(&text);
  evaluation.work().spend(1 + (read != nullptr ? read->size() / BYTES_A_UNIT : 0));
}

Value compareNamed(Comparison how, const Value& left, const Value& right, Evaluation& evaluation) {
  spendOn(left, evaluation);
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
    evaluation.work().spend(1);
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
    return sought != nullptr && text != nullptr ? Value(holds(*text, *sought, evaluation))
                                                : Value();
  }

  // Not with std::string_view::find, which takes the product of both lengths for
  // texts that are made for it. A unit for each byte: those there are still cost
  // some nanoseconds each.
  static bool holds(std::string_view text, std::string_view sought, Evaluation& evaluation) {
    evaluation.work().spend(1 + text.size() + sought.size());
    return memmem(text.data(), text.size(), sought.data(), sought.size()) != nullptr;
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
      evaluation.work().spend(1);
      const Value here = elementAt(list, i, evaluation);
      if (isTrue(compareNamed(Comparison::EQUAL, element, here, evaluation))) {
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

ExpressionPtr literal(const Value& value) { return std::make_unique<Literal>(value); }
ExpressionPtr text(std::string value) { return std::make_unique<TextLiteral>(std::move(value)); }
ExpressionPtr name(std::string value) { return std::make_unique<BareName>(std::move(value)); }
ExpressionPtr part(Path path) { return std::make_unique<Part>(std::move(path)); }
ExpressionPtr exists(Path path) { return std::make_unique<Exists>(std::move(path)); }
ExpressionPtr isDefault(Path path) {
  // "default $u._d" and "default $u" ask the same.
  if (!path.steps.empty() && isDiscriminator(path.steps.back())) {
    path.steps.pop_back();
  }
  return std::make_unique<IsDefault>(std::move(path));
}

ExpressionPtr conjunction(ExpressionPtr left, ExpressionPtr right) {
  return Junction::joined(false, std::move(left), std::move(right));
}
ExpressionPtr disjunction(ExpressionPtr left, ExpressionPtr right) {
  return Junction::joined(true, std::move(left), std::move(right));
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

std::optional<bool> answer(const Expression& condition, Evaluation& evaluation) {
  evaluation.work().spend(1);
  const Value value = lookedUp(condition.evaluate(evaluation), evaluation);
  const auto* holds = std::get_if<bool>(&value);
  return holds != nullptr ? std::optional(*holds) : std::nullopt;
}

}  // namespace zk::agent::etcl
