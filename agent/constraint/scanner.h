// A constraint's text as tokens. No shared state.
#ifndef ZK_AGENT_CONSTRAINT_SCANNER_H
#define ZK_AGENT_CONSTRAINT_SCANNER_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace zk::agent::etcl {

enum class TokenKind {
  end,
  identifier,
  text,
  integer,
  real,
  yes,
  no,
  conjunction,
  disjunction,
  negation,
  containment,
  existence,
  defaultArm,
  equal,
  different,
  less,
  lessOrEqual,
  greater,
  greaterOrEqual,
  substring,
  plus,
  minus,
  times,
  divided,
  leftParenthesis,
  rightParenthesis,
  leftBracket,
  rightBracket,
  dollar,
  dot,
  length,
  discriminator,
  typeId,
  repositoryId,
};

// Whole numbers that int64_t cannot hold are kept as long double, which holds
// those of 64 bits exactly on the machines this runs on.
using Number = std::variant<std::int64_t, long double>;

struct Token {
  TokenKind kind = TokenKind::end;
  std::string text;    // an identifier, or a literal text, with its escapes undone
  Number number = {};  // of integer and real
  std::size_t at = 0;  // offset in the constraint, in bytes
};

// The tokens, the last one of kind end. Throws InvalidConstraintText for what
// is no token and for a text over the limits.
std::vector<Token> scanConstraint(std::string_view constraint);

// As the constraint's author would write a fixed token; "" for the others.
std::string_view spelling(TokenKind kind);

}  // namespace zk::agent::etcl

#endif
