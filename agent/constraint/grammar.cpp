#include "agent/constraint/grammar.h"

#include <initializer_list>
#include <limits>
#include <string>

#include "agent/constraint/invalidconstrainttext.h"
#include "agent/constraint/limits.h"

namespace zk::agent::etcl {

namespace {

// One function a rule of extended TCL, each stepping over what it accepts.
class Grammar {
 public:
  explicit Grammar(const std::vector<Token>& tokens) : next_(tokens.data()) {}

  void constraint() {
    disjunction();
    expect(TokenKind::end, "a constraint ends here");
  }

 private:
  bool at(std::initializer_list<TokenKind> kinds) const {
    for (const TokenKind kind : kinds) {
      if (next_->kind == kind) {
        return true;
      }
    }
    return false;
  }

  bool accept(std::initializer_list<TokenKind> kinds) {
    const bool here = at(kinds);
    next_ += here ? 1 : 0;
    return here;
  }

  [[noreturn]] void refuse(const std::string& reason) const {
    throw InvalidConstraintText(reason, next_->at);
  }

  void expect(TokenKind kind, const char* reason) {
    if (next_->kind != kind) {
      refuse(reason);
    }
    ++next_;
  }

  void disjunction() {
    do {
      conjunction();
    } while (accept({TokenKind::disjunction}));
  }

  void conjunction() {
    do {
      comparison();
    } while (accept({TokenKind::conjunction}));
  }

  void comparison() {
    containment();
    if (accept({TokenKind::equal, TokenKind::different, TokenKind::less, TokenKind::lessOrEqual,
                TokenKind::greater, TokenKind::greaterOrEqual})) {
      containment();
    }
  }

  void containment() {
    sum();
    if (accept({TokenKind::substring})) {
      sum();
    }
    if (accept({TokenKind::containment})) {
      variable("a name or a path follows 'in'");
    }
  }

  void variable(const char* reason) {
    if (accept({TokenKind::dollar})) {
      path();
    } else {
      expect(TokenKind::identifier, reason);
    }
  }

  void countOperator() {
    if (++operators_ > kMaxConstraintOperators) {
      refuse("more than " + std::to_string(kMaxConstraintOperators) + " sums and products");
    }
  }

  void sum() {
    for (product(); accept({TokenKind::plus, TokenKind::minus}); product()) {
      countOperator();
    }
  }

  void product() {
    for (factor(); accept({TokenKind::times, TokenKind::divided}); factor()) {
      countOperator();
    }
  }

  void factor() {
    accept({TokenKind::negation});
    if (accept({TokenKind::leftParenthesis})) {
      parenthesis();
    } else if (accept({TokenKind::plus, TokenKind::minus})) {
      number();
    } else if (accept({TokenKind::existence})) {
      variable("a name or a path follows 'exist'");
    } else if (accept({TokenKind::defaultArm})) {
      expect(TokenKind::dollar, "a path follows 'default'");
      path();
    } else if (accept({TokenKind::dollar})) {
      path();
    } else if (!accept({TokenKind::identifier, TokenKind::text, TokenKind::integer, TokenKind::real,
                        TokenKind::yes, TokenKind::no})) {
      refuse("a value is missing");
    }
  }

  void parenthesis() {
    if (++depth_ > kMaxConstraintDepth) {
      refuse("more than " + std::to_string(kMaxConstraintDepth) + " open parentheses");
    }
    disjunction();
    expect(TokenKind::rightParenthesis, "a closing parenthesis is missing");
    --depth_;
  }

  void number() {
    if (!accept({TokenKind::integer, TokenKind::real})) {
      refuse("a sign stands before a number only");
    }
  }

  void path();
  bool pathGoesOn();
  bool dotted();
  void unionArm();
  void position();

  const Token* next_;
  std::size_t depth_ = 0;
  std::size_t operators_ = 0;
};

void Grammar::path() {
  accept({TokenKind::identifier});
  for (std::size_t steps = 0; pathGoesOn(); ++steps) {
    if (steps == kMaxConstraintDepth) {
      refuse("more than " + std::to_string(kMaxConstraintDepth) + " steps in a path");
    }
  }
}

// One more step, if there is one that others may follow.
bool Grammar::pathGoesOn() {
  if (accept({TokenKind::dot})) {
    return dotted();
  }
  if (accept({TokenKind::leftBracket})) {
    position();
    expect(TokenKind::rightBracket, "a closing bracket is missing");
    return true;
  }
  if (accept({TokenKind::leftParenthesis})) {
    if (!accept({TokenKind::identifier, TokenKind::text})) {
      refuse("a name is missing between the parentheses");
    }
    expect(TokenKind::rightParenthesis, "a closing parenthesis is missing");
    return true;
  }
  return false;
}

bool Grammar::dotted() {
  if (accept({TokenKind::length, TokenKind::discriminator, TokenKind::typeId,
              TokenKind::repositoryId})) {
    return false;
  }
  if (accept({TokenKind::leftParenthesis})) {
    unionArm();
  } else if (!accept({TokenKind::identifier})) {
    position();
  }
  return true;
}

void Grammar::unionArm() {
  if (accept({TokenKind::plus, TokenKind::minus}) || at({TokenKind::integer})) {
    position();
  } else {
    accept({TokenKind::text});
  }
  expect(TokenKind::rightParenthesis, "a closing parenthesis is missing");
}

void Grammar::position() {
  if (next_->kind != TokenKind::integer) {
    refuse("a whole number or a member's name is missing");
  }
  const auto* value = std::get_if<std::int64_t>(&next_->number);
  if (value == nullptr || *value > std::numeric_limits<std::int32_t>::max()) {
    refuse("a position of more than 31 bits");
  }
  ++next_;
}

}  // namespace

void checkGrammar(const std::vector<Token>& tokens) { Grammar(tokens).constraint(); }

}  // namespace zk::agent::etcl
