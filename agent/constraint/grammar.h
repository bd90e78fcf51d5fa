// The grammar of extended TCL. No shared state.
#ifndef ZK_AGENT_CONSTRAINT_GRAMMAR_H
#define ZK_AGENT_CONSTRAINT_GRAMMAR_H

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

#include "agent/constraint/expression.h"

namespace zk::agent {

// Why a constraint was refused, and where. what() is one line of printable ASCII,
// whatever the constraint held.
class InvalidConstraintText : public std::runtime_error {
 public:
  // at: the offset, in bytes from 0, of what is wrong.
  InvalidConstraintText(const std::string& reason, std::size_t at)
      : std::runtime_error(reason + " at character " + std::to_string(at + 1)) {}
};

namespace etcl {

// How large a constraint may be. A client's text ends up in recursive code (the
// parser, the tree's destructor, the evaluation), so each of these is checked
// before that code goes deeper; the numbers leave room for a filter that lists a
// few hundred objects by name.
constexpr std::size_t MOST_BYTES = std::size_t{32} * 1024;
constexpr std::size_t MOST_TOKENS = std::size_t{8} * 1024;  // words, signs and literals
constexpr std::size_t MOST_OPEN_PARENTHESES = 64;
constexpr std::size_t MOST_STEPS = 64;        // of one path
constexpr std::size_t MOST_OPERATIONS = 256;  // of arithmetic

// A condition. An empty text, or one of nothing but spaces, holds for every
// event. Throws InvalidConstraintText at the first place where the text goes
// wrong, also where a number or a text stands for a condition, since that would
// hold for no event ever.
struct Parsed {
  ExpressionPtr root;
  std::size_t tokens;
};
Parsed parseConstraint(std::string_view constraint);

}  // namespace etcl

}  // namespace zk::agent

#endif
