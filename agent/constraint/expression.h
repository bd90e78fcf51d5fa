// A constraint as a tree of questions. Immutable once built: any number of
// threads may evaluate the same tree.
#ifndef ZK_AGENT_CONSTRAINT_EXPRESSION_H
#define ZK_AGENT_CONSTRAINT_EXPRESSION_H

#include <memory>
#include <string>
#include <vector>

#include "agent/constraint/path.h"
#include "agent/constraint/scanner.h"

namespace zk::agent::etcl {

// Conditions give true, false or Nothing. Nothing spreads: what is missing makes
// neither a condition nor its negation hold, and gives way only to a FALSE in a
// conjunction and to a TRUE in a disjunction.
class Expression {
 public:
  virtual ~Expression() = default;
  virtual Value evaluate(Evaluation& evaluation) const = 0;

  // Whether this can ever be true or false.
  virtual bool isCondition() const { return true; }
};

using ExpressionPtr = std::unique_ptr<const Expression>;
using Expressions = std::vector<ExpressionPtr>;

ExpressionPtr truth(bool value);
ExpressionPtr number(const Number& value);
ExpressionPtr text(std::string value);
ExpressionPtr name(std::string value);
ExpressionPtr part(Path path);

ExpressionPtr exists(Path path);
ExpressionPtr isDefault(Path path);
ExpressionPtr allOf(Expressions conditions);
ExpressionPtr anyOf(Expressions conditions);
ExpressionPtr negation(ExpressionPtr condition);
ExpressionPtr comparison(Comparison how, ExpressionPtr left, ExpressionPtr right);
ExpressionPtr calculation(Operation what, ExpressionPtr left, ExpressionPtr right);
ExpressionPtr substring(ExpressionPtr needle, ExpressionPtr hay);
ExpressionPtr contained(ExpressionPtr element, Path list);

// What a bare name stands for where no enumeration gives it a meaning.
inline Value lookedUp(const Value& value, Evaluation& evaluation) {
  const auto* bare = std::get_if<Name>(&value);
  return bare != nullptr ? variable(bare->text, evaluation) : value;
}

}  // namespace zk::agent::etcl

#endif
