// A constraint's text as a tree. Any thread; the parser itself runs one text at
// a time.
#ifndef ZK_AGENT_CONSTRAINT_PARSER_H
#define ZK_AGENT_CONSTRAINT_PARSER_H

#include <string_view>

#include "agent/constraint/expression.h"

namespace zk::agent::etcl {

// An empty text, or one of nothing but spaces, holds for every event. Throws
// InvalidConstraintText.
ExpressionPtr parseConstraint(std::string_view constraint);

}  // namespace zk::agent::etcl

#endif
