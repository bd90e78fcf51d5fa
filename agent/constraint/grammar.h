// Whether tokens make a constraint. No shared state.
#ifndef ZK_AGENT_CONSTRAINT_GRAMMAR_H
#define ZK_AGENT_CONSTRAINT_GRAMMAR_H

#include <vector>

#include "agent/constraint/scanner.h"

namespace zk::agent::etcl {

// Throws InvalidConstraintText at the first token that does not fit, and for a
// nesting over the limits. The parser behind this leaks what it had built of a
// text that it refuses and passes over what it does not know: it must see
// nothing that does not pass here. At least one token before the end.
void checkGrammar(const std::vector<Token>& tokens);

}  // namespace zk::agent::etcl

#endif
