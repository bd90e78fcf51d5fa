#include "agent/constraint/leaves.h"

#include <cstdlib>

namespace zk::agent::etcl {

namespace {

// Opens the parser's kinds of literal, which only its own nodes may name.
struct LiteralKinds : ETCL_Constraint {
  static constexpr Literal_Type kText = ACE_ETCL_STRING;
  static constexpr Literal_Type kTruth = ACE_ETCL_BOOLEAN;
};

std::string standIn(const Token& token, std::size_t place) {
  switch (token.kind) {
    case TokenKind::identifier:
      return "n" + std::to_string(place);
    case TokenKind::text:
      return "'" + std::to_string(place) + "'";
    case TokenKind::integer:
    case TokenKind::real:
      return std::to_string(place);
    default:
      return std::string(spelling(token.kind));
  }
}

// The text between parentheses that follow a step is the name of a pair, for
// which the parser takes identifiers only; after a dot it is a union's label.
bool isPairName(const std::vector<Token>& tokens, std::size_t place) {
  return tokens[place].kind == TokenKind::text && place >= 2 &&
         tokens[place - 1].kind == TokenKind::leftParenthesis &&
         tokens[place + 1].kind == TokenKind::rightParenthesis &&
         (tokens[place - 2].kind == TokenKind::identifier ||
          tokens[place - 2].kind == TokenKind::integer ||
          tokens[place - 2].kind == TokenKind::dollar ||
          tokens[place - 2].kind == TokenKind::rightParenthesis ||
          tokens[place - 2].kind == TokenKind::rightBracket);
}

}  // namespace

std::string textForParser(const std::vector<Token>& tokens) {
  std::string text;
  for (std::size_t place = 0; place < tokens.size(); ++place) {
    const bool named = isPairName(tokens, place);
    text += named ? "n" + std::to_string(place) : standIn(tokens[place], place);
    text += ' ';
  }
  return text;
}

const Token& tokenOf(const ETCL_Identifier& node, const std::vector<Token>& tokens) {
  return tokens.at(std::strtoul(node.value() + 1, nullptr, 10));
}

const Token& tokenOf(const ETCL_Literal_Constraint& node, const std::vector<Token>& tokens) {
  if (node.expr_type() == LiteralKinds::kText) {
    return tokens.at(std::strtoul(static_cast<const char*>(node), nullptr, 10));
  }
  return tokens.at(static_cast<ACE_CDR::ULong>(node));
}

bool isTruth(const ETCL_Literal_Constraint& node) {
  return node.expr_type() == LiteralKinds::kTruth;
}

}  // namespace zk::agent::etcl
