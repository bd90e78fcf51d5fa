// How large a constraint may be. A client's text ends up in recursive code (the
// parser, the tree's destructor, the evaluation), so its depth is settled before
// any of that runs; the numbers leave room for a filter that lists a few hundred
// objects by name.
#ifndef ZK_AGENT_CONSTRAINT_LIMITS_H
#define ZK_AGENT_CONSTRAINT_LIMITS_H

#include <cstddef>

namespace zk::agent::etcl {

constexpr std::size_t kMaxConstraintBytes = std::size_t{32} * 1024;
constexpr std::size_t kMaxConstraintTokens = std::size_t{8} * 1024;
constexpr std::size_t kMaxConstraintDepth = 64;       // open parentheses, and steps of one path
constexpr std::size_t kMaxConstraintOperators = 256;  // of arithmetic

}  // namespace zk::agent::etcl

#endif
