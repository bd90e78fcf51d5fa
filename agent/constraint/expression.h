// A constraint as a tree of questions. Immutable once built: any number of
// threads may evaluate the same tree.
#ifndef ZK_AGENT_CONSTRAINT_EXPRESSION_H
#define ZK_AGENT_CONSTRAINT_EXPRESSION_H

#include <memory>
#include <optional>
#include <string>

#include "agent/constraint/path.h"

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

using ExpressionPtr = std::unique_ptr<Expression>;

ExpressionPtr literal(const Value& value);  // a truth value or a number
ExpressionPtr text(std::string value);
ExpressionPtr name(std::string value);
ExpressionPtr part(Path path);

ExpressionPtr exists(Path path);
ExpressionPtr isDefault(Path path);
ExpressionPtr negation(ExpressionPtr condition);
ExpressionPtr comparison(Comparison how, ExpressionPtr left, ExpressionPtr right);
ExpressionPtr calculation(Operation what, ExpressionPtr left, ExpressionPtr right);
ExpressionPtr substring(ExpressionPtr needle, ExpressionPtr hay);
ExpressionPtr contained(ExpressionPtr element, Path list);

// A left that is of the same kind itself takes right in as one condition more,
// so that the tree does not get deeper as a constraint gets longer.
ExpressionPtr conjunction(ExpressionPtr left, ExpressionPtr right);
ExpressionPtr disjunction(ExpressionPtr left, ExpressionPtr right);

// TRUE, FALSE, or no answer for whatever else a condition comes to.
std::optional<bool> answer(const Expression& condition, Evaluation& evaluation);

}  // namespace zk::agent::etcl

#endif
