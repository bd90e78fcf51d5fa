// Puts a constraint's expression together while the grammar reads it. On the
// stack of one thread.
#ifndef ZK_AGENT_CONSTRAINT_BUILDER_H
#define ZK_AGENT_CONSTRAINT_BUILDER_H

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "agent/constraint/expression.h"

namespace zk::agent::etcl {

// Operands wait on a stack for what comes of them. Texts and names, numbers and
// paths are taken in first and then used by the step or operand they are part
// of. Every read is a part of the constraint's text: where it starts is where an
// error in it is. Everything may throw InvalidConstraintText.
class Builder {
 public:
  explicit Builder(std::string_view constraint) : constraint_(constraint) {}

  // In the constraint, of something read from it.
  std::size_t offsetOf(const char* place) const {
    return static_cast<std::size_t>(place - constraint_.data());
  }

  void countToken(std::string_view behind);
  void openGroup(std::string_view read);
  void closeGroup() { --open_; }

  void takeName(std::string_view read) { text_ = read; }
  void takeText(std::string_view read);
  void takeWhole(std::string_view read);
  void takeReal(std::string_view read);

  // The variable that a path starts at, else it starts at the event.
  void start(std::string_view read);
  void member() { addStep(Member{std::move(text_)}); }
  void memberAt(std::string_view read) { addStep(Position{position(read)}); }
  void element(std::string_view read) { addStep(Element{position(read)}); }
  void associated() { addStep(Associated{std::move(text_)}); }
  void arm(std::string_view read) { addStep(Arm{std::int64_t{position(read)}}); }
  void negativeArm(std::string_view read) { addStep(Arm{-std::int64_t{position(read)}}); }
  void namedArm() { addStep(Arm{std::move(text_)}); }
  void defaultArm() { addStep(Arm{}); }
  void limitSteps(std::string_view read) const;
  void special(Special what) { addStep(what); }

  void pushTruth(std::string_view read, bool value) { push(literal(value), read); }
  void pushNumber(std::string_view read) { push(literal(number_), read); }
  void pushSigned(std::string_view read, Operation sign);
  void pushText(std::string_view read) { push(text(std::move(text_)), read); }
  void pushName(std::string_view read) { push(name(std::move(text_)), read); }
  void pushPart(std::string_view read) { push(part(takePath()), read); }
  void pushExists(std::string_view read) { push(exists(takePath()), read); }
  void pushDefault(std::string_view read) { push(isDefault(takePath()), read); }

  // Put what they make in the place of the last operand, or of the last two.
  using Combination = ExpressionPtr (*)(ExpressionPtr left, ExpressionPtr right);
  void negate();
  void calculate(std::string_view read, Operation what);
  void compare(Comparison how);
  void combine(Combination combination);
  void combineConditions(Combination combination);
  void findInList();

  // The only operand left, a condition.
  ExpressionPtr result();
  std::size_t tokens() const { return tokens_; }

 private:
  struct Operand {
    ExpressionPtr expression;
    std::size_t at;
  };

  [[noreturn]] void refuse(const std::string& reason, std::string_view read) const;
  void limit(std::size_t count, std::size_t most, const char* what, std::string_view read) const;
  CORBA::ULong position(std::string_view read) const;
  void addStep(Step step) { path_.steps.push_back(std::move(step)); }
  Path takePath() { return std::exchange(path_, Path()); }
  void push(ExpressionPtr expression, std::string_view read);
  static void requireCondition(const Operand& operand);
  template <typename Making>
  void replaceLastTwo(Making made);

  std::string_view constraint_;
  std::size_t tokens_ = 0;
  std::size_t open_ = 0;
  std::size_t operations_ = 0;
  std::string text_;
  Value number_;
  Path path_;
  std::vector<Operand> operands_;
};

}  // namespace zk::agent::etcl

#endif
