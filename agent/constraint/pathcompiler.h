// The parser's path as ours. No shared state.
#ifndef ZK_AGENT_CONSTRAINT_PATHCOMPILER_H
#define ZK_AGENT_CONSTRAINT_PATHCOMPILER_H

#include <vector>

#include <ace/ETCL/ETCL_Constraint.h>

#include "agent/constraint/path.h"
#include "agent/constraint/scanner.h"

namespace zk::agent::etcl {

// component is a path, a bare name or null, which is the event itself; its names
// and literals are places in tokens (see parser.h). Throws InvalidConstraintText
// for a variable that is not offered.
Path compilePath(ETCL_Constraint* component, const std::vector<Token>& tokens);

}  // namespace zk::agent::etcl

#endif
