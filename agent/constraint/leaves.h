// What stands in for the names and literals of a constraint while the parser
// has it: their places among the tokens. The parser cuts numbers to 32 bits and
// knows fewer names and texts than a constraint may hold; places it carries
// through unharmed. No shared state.
#ifndef ZK_AGENT_CONSTRAINT_LEAVES_H
#define ZK_AGENT_CONSTRAINT_LEAVES_H

#include <string>
#include <vector>

#include <ace/ETCL/ETCL_Constraint.h>

#include "agent/constraint/scanner.h"

namespace zk::agent::etcl {

// The tokens as the parser is to see them.
std::string textForParser(const std::vector<Token>& tokens);

// The token that a node of the parser's tree stands for.
const Token& tokenOf(const ETCL_Identifier& node, const std::vector<Token>& tokens);
const Token& tokenOf(const ETCL_Literal_Constraint& node, const std::vector<Token>& tokens);

// Whether the node is TRUE or FALSE, the literals that stand for themselves.
bool isTruth(const ETCL_Literal_Constraint& node);

}  // namespace zk::agent::etcl

#endif
