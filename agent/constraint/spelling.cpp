#include <array>
#include <utility>

#include "agent/constraint/scanner.h"

namespace zk::agent::etcl {

namespace {

using Spelling = std::pair<TokenKind, std::string_view>;

constexpr std::array kSpellings = {
    Spelling{TokenKind::yes, "TRUE"},
    Spelling{TokenKind::no, "FALSE"},
    Spelling{TokenKind::conjunction, "and"},
    Spelling{TokenKind::disjunction, "or"},
    Spelling{TokenKind::negation, "not"},
    Spelling{TokenKind::containment, "in"},
    Spelling{TokenKind::existence, "exist"},
    Spelling{TokenKind::defaultArm, "default"},
    Spelling{TokenKind::equal, "=="},
    Spelling{TokenKind::different, "!="},
    Spelling{TokenKind::less, "<"},
    Spelling{TokenKind::lessOrEqual, "<="},
    Spelling{TokenKind::greater, ">"},
    Spelling{TokenKind::greaterOrEqual, ">="},
    Spelling{TokenKind::substring, "~"},
    Spelling{TokenKind::plus, "+"},
    Spelling{TokenKind::minus, "-"},
    Spelling{TokenKind::times, "*"},
    Spelling{TokenKind::divided, "/"},
    Spelling{TokenKind::leftParenthesis, "("},
    Spelling{TokenKind::rightParenthesis, ")"},
    Spelling{TokenKind::leftBracket, "["},
    Spelling{TokenKind::rightBracket, "]"},
    Spelling{TokenKind::dollar, "$"},
    Spelling{TokenKind::dot, "."},
    Spelling{TokenKind::length, "_length"},
    Spelling{TokenKind::discriminator, "_d"},
    Spelling{TokenKind::typeId, "_type_id"},
    Spelling{TokenKind::repositoryId, "_repos_id"},
};

}  // namespace

std::string_view spelling(TokenKind kind) {
  for (const auto& [known, text] : kSpellings) {
    if (known == kind) {
      return text;
    }
  }
  return {};
}

}  // namespace zk::agent::etcl
