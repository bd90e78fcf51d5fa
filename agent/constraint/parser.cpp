#include "agent/constraint/parser.h"

#include <string>

#include <ace/ETCL/ETCL_Constraint.h>
#include <ace/ETCL/ETCL_Interpreter.h>

#include "agent/constraint/compiler.h"
#include "agent/constraint/grammar.h"
#include "agent/constraint/invalidconstrainttext.h"
#include "agent/constraint/leaves.h"

namespace zk::agent::etcl {

namespace {

// Owns the tree; its base deletes it.
class Interpreter final : private ETCL_Interpreter {
 public:
  Interpreter() { root_ = nullptr; }

  // build_tree locks: the grammar's tables and the scanner are global.
  ETCL_Constraint& parse(const std::string& text) {
    if (build_tree(text.c_str()) != 0 || root_ == nullptr) {
      throw InvalidConstraintText("the parser does not take this constraint", 0);
    }
    return *root_;
  }
};

}  // namespace

ExpressionPtr parseConstraint(std::string_view constraint) {
  const std::vector<Token> tokens = scanConstraint(constraint);
  if (tokens.size() == 1) {
    return truth(true);
  }
  checkGrammar(tokens);
  Interpreter interpreter;
  return compileConstraint(interpreter.parse(textForParser(tokens)), tokens);
}

}  // namespace zk::agent::etcl
