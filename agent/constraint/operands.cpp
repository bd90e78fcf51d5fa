// The leaves of the tree: literals, names and parts of the event.
#include <utility>

#include "agent/constraint/expression.h"

namespace zk::agent::etcl {

namespace {

class Truth final : public Expression {
 public:
  explicit Truth(bool value) : value_(value) {}
  Value evaluate(Evaluation& /*evaluation*/) const override { return value_; }

 private:
  bool value_;
};

class NumberLiteral final : public Expression {
 public:
  explicit NumberLiteral(const Number& value)
      : value_(std::visit([](auto number) { return Value(number); }, value)) {}
  Value evaluate(Evaluation& /*evaluation*/) const override { return value_; }
  bool isCondition() const override { return false; }

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
  return special != nullptr && *special == Special::discriminator;
}

}  // namespace

ExpressionPtr truth(bool value) { return std::make_unique<Truth>(value); }
ExpressionPtr number(const Number& value) { return std::make_unique<NumberLiteral>(value); }
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

}  // namespace zk::agent::etcl
