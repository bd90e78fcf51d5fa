#include "agent/constraint/compiler.h"

#include <algorithm>
#include <utility>

#include <ace/ETCL/ETCL_Constraint.h>
#include <ace/ETCL/ETCL_Constraint_Visitor.h>
#include <ace/ETCL/ETCL_y.h>

#include "agent/constraint/invalidconstrainttext.h"
#include "agent/constraint/leaves.h"
#include "agent/constraint/pathcompiler.h"

namespace zk::agent::etcl {

namespace {

Comparison comparisonOf(int type) {
  switch (type) {
    case ETCL_EQ:
      return Comparison::equal;
    case ETCL_NE:
      return Comparison::different;
    case ETCL_LT:
      return Comparison::less;
    case ETCL_LE:
      return Comparison::lessOrEqual;
    case ETCL_GT:
      return Comparison::greater;
    default:
      return Comparison::greaterOrEqual;
  }
}

Operation operationOf(int type) {
  switch (type) {
    case ETCL_PLUS:
      return Operation::add;
    case ETCL_MINUS:
      return Operation::subtract;
    case ETCL_MULT:
      return Operation::multiply;
    default:
      return Operation::divide;
  }
}

class Compiler final : public ETCL_Constraint_Visitor {
 public:
  explicit Compiler(const std::vector<Token>& tokens) : tokens_(tokens) {}

  ExpressionPtr compile(ETCL_Constraint* node) {
    node->accept(this);
    return std::move(result_);
  }

  ExpressionPtr condition(ETCL_Constraint* node) {
    ExpressionPtr compiled = compile(node);
    if (!compiled->isCondition()) {
      throw InvalidConstraintText("a number or a text where a condition belongs", lastLeaf_);
    }
    return compiled;
  }

  int visit_literal(ETCL_Literal_Constraint* node) override {
    result_ = isTruth(*node) ? truth(static_cast<ACE_CDR::Boolean>(*node)) : literal(*node);
    return 0;
  }
  int visit_identifier(ETCL_Identifier* node) override {
    const Token& token = tokenOf(*node, tokens_);
    lastLeaf_ = token.at;
    result_ = name(token.text);
    return 0;
  }
  int visit_eval(ETCL_Eval* node) override {
    result_ = part(compilePath(node->component(), tokens_));
    return 0;
  }
  int visit_exist(ETCL_Exist* node) override {
    result_ = exists(compilePath(node->component(), tokens_));
    return 0;
  }
  int visit_default(ETCL_Default* node) override {
    result_ = isDefault(compilePath(node->component(), tokens_));
    return 0;
  }
  int visit_unary_expr(ETCL_Unary_Expr* node) override;
  int visit_binary_expr(ETCL_Binary_Expr* node) override;

 private:
  ExpressionPtr literal(const ETCL_Literal_Constraint& node) {
    const Token& token = tokenOf(node, tokens_);
    lastLeaf_ = token.at;
    return token.kind == TokenKind::text ? text(token.text) : number(token.number);
  }

  Expressions operandsOf(ETCL_Binary_Expr* last);
  ExpressionPtr binary(ETCL_Binary_Expr* node);

  const std::vector<Token>& tokens_;
  ExpressionPtr result_;
  std::size_t lastLeaf_ = 0;
};

int Compiler::visit_unary_expr(ETCL_Unary_Expr* node) {
  if (node->type() == ETCL_NOT) {
    result_ = negation(condition(node->subexpr()));
  } else {
    const auto what = node->type() == ETCL_MINUS ? Operation::subtract : Operation::add;
    result_ = calculation(what, number(std::int64_t{0}), compile(node->subexpr()));
  }
  return 0;
}

// "a and b and c" is ((a and b) and c) to the parser: a slope as deep as the
// constraint is long, taken here as one level.
Expressions Compiler::operandsOf(ETCL_Binary_Expr* last) {
  std::vector<ETCL_Constraint*> backwards;
  ETCL_Constraint* first = last;
  for (auto* node = last; node != nullptr && node->type() == last->type();
       node = dynamic_cast<ETCL_Binary_Expr*>(first)) {
    backwards.push_back(node->rhs());
    first = node->lhs();
  }
  backwards.push_back(first);
  Expressions operands;
  for (auto node = backwards.rbegin(); node != backwards.rend(); ++node) {
    operands.push_back(condition(*node));
  }
  return operands;
}

ExpressionPtr Compiler::binary(ETCL_Binary_Expr* node) {
  if (node->type() == ETCL_IN) {
    ExpressionPtr element = compile(node->lhs());
    return contained(std::move(element), compilePath(node->rhs(), tokens_));
  }
  ExpressionPtr left = compile(node->lhs());
  ExpressionPtr right = compile(node->rhs());
  switch (node->type()) {
    case ETCL_TWIDDLE:
      return substring(std::move(left), std::move(right));
    case ETCL_PLUS:
    case ETCL_MINUS:
    case ETCL_MULT:
    case ETCL_DIV:
      return calculation(operationOf(node->type()), std::move(left), std::move(right));
    default:
      return comparison(comparisonOf(node->type()), std::move(left), std::move(right));
  }
}

int Compiler::visit_binary_expr(ETCL_Binary_Expr* node) {
  if (node->type() == ETCL_AND) {
    result_ = allOf(operandsOf(node));
  } else if (node->type() == ETCL_OR) {
    result_ = anyOf(operandsOf(node));
  } else {
    result_ = binary(node);
  }
  return 0;
}

}  // namespace

ExpressionPtr compileConstraint(ETCL_Constraint& root, const std::vector<Token>& tokens) {
  return Compiler(tokens).condition(&root);
}

}  // namespace zk::agent::etcl
