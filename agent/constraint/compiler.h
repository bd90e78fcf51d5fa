// The parser's tree as ours. No shared state.
#ifndef ZK_AGENT_CONSTRAINT_COMPILER_H
#define ZK_AGENT_CONSTRAINT_COMPILER_H

#include <vector>

#include <ace/ETCL/ETCL_Constraint.h>

#include "agent/constraint/expression.h"
#include "agent/constraint/scanner.h"

namespace zk::agent::etcl {

// A condition. Throws InvalidConstraintText where a number or a text stands in
// for one, since that would hold for no event ever.
ExpressionPtr compileConstraint(ETCL_Constraint& root, const std::vector<Token>& tokens);

}  // namespace zk::agent::etcl

#endif
