#include "agent/constraint/scanner.h"

#include <array>
#include <charconv>
#include <limits>
#include <optional>
#include <utility>

#include "agent/constraint/invalidconstrainttext.h"
#include "agent/constraint/limits.h"

namespace zk::agent::etcl {

namespace {

// Not those of <cctype>: the language is ASCII whatever the locale.
bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool isWordPart(char c) { return isLetter(c) || isDigit(c) || c == '_'; }
bool isSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

constexpr std::array kWords = {
    TokenKind::yes,      TokenKind::no,          TokenKind::conjunction,  TokenKind::disjunction,
    TokenKind::negation, TokenKind::containment, TokenKind::existence,    TokenKind::defaultArm,
    TokenKind::length,   TokenKind::typeId,      TokenKind::repositoryId, TokenKind::discriminator};

// The longer of two that start alike comes first.
constexpr std::array kSigns = {TokenKind::equal,
                               TokenKind::different,
                               TokenKind::lessOrEqual,
                               TokenKind::greaterOrEqual,
                               TokenKind::less,
                               TokenKind::greater,
                               TokenKind::substring,
                               TokenKind::plus,
                               TokenKind::minus,
                               TokenKind::times,
                               TokenKind::divided,
                               TokenKind::leftParenthesis,
                               TokenKind::rightParenthesis,
                               TokenKind::leftBracket,
                               TokenKind::rightBracket,
                               TokenKind::dollar,
                               TokenKind::dot};

// A dot after one of these goes on along a path; any other dot before a digit
// starts a number.
bool endsStep(TokenKind kind) {
  return kind == TokenKind::dollar || kind == TokenKind::identifier || kind == TokenKind::integer ||
         kind == TokenKind::rightParenthesis || kind == TokenKind::rightBracket;
}

std::string describe(char c) {
  if (c > ' ' && c < '\x7f') {
    return std::string("'") + c + "'";
  }
  constexpr const char* kHex = "0123456789abcdef";
  const auto byte = static_cast<unsigned char>(c);
  return std::string("byte 0x") + kHex[byte / 16] + kHex[byte % 16];
}

class Scanner {
 public:
  explicit Scanner(std::string_view constraint) : rest_(constraint), whole_(constraint.size()) {}

  std::vector<Token> scan() {
    for (skipSpace(); !rest_.empty(); skipSpace()) {
      if (tokens_.size() == kMaxConstraintTokens) {
        throw InvalidConstraintText(
            "more than " + std::to_string(kMaxConstraintTokens) + " words and signs", at());
      }
      scanOne();
    }
    add(TokenKind::end, 0);
    return std::move(tokens_);
  }

 private:
  std::size_t at() const { return whole_ - rest_.size(); }

  void skipSpace() {
    while (!rest_.empty() && isSpace(rest_.front())) {
      rest_.remove_prefix(1);
    }
  }

  void scanOne() {
    const char first = rest_.front();
    if (first == '\'') {
      scanText();
    } else if (first == '\\') {
      scanEscapedWord();
    } else if (isLetter(first) || first == '_') {
      scanWord();
    } else if (isDigit(first) || startsFraction()) {
      scanNumber();
    } else {
      scanSign();
    }
  }

  TokenKind previous() const { return tokens_.empty() ? TokenKind::end : tokens_.back().kind; }

  bool startsFraction() const {
    return rest_.size() > 1 && rest_[0] == '.' && isDigit(rest_[1]) && !endsStep(previous());
  }

  // Adds a token made of the next size bytes, and goes past them.
  Token& add(TokenKind kind, std::size_t size) {
    Token& token = tokens_.emplace_back();
    token.kind = kind;
    token.at = at();
    rest_.remove_prefix(size);
    return token;
  }

  void scanText();
  void scanEscapedWord();
  void scanWord();
  void scanNumber();
  void scanSign();
  std::size_t wordLength(std::size_t from) const;
  std::size_t digitsEnd(std::size_t from) const;
  std::size_t realEnd(std::size_t digits) const;
  void addInteger(std::size_t size);
  void addReal(std::size_t size);

  std::string_view rest_;
  std::size_t whole_;
  std::vector<Token> tokens_;
};

void Scanner::scanText() {
  std::string text;
  for (std::size_t i = 1; i < rest_.size() && rest_[i] != '\0'; ++i) {
    if (rest_[i] == '\'') {
      add(TokenKind::text, i + 1).text = std::move(text);
      return;
    }
    const char next = i + 1 < rest_.size() ? rest_[i + 1] : '\0';
    if (rest_[i] == '\\' && (next == '\'' || next == '\\')) {
      ++i;
    }
    text += rest_[i];
  }
  throw InvalidConstraintText("a text without its closing quote", at());
}

std::size_t Scanner::wordLength(std::size_t from) const {
  std::size_t end = from;
  while (end < rest_.size() && isWordPart(rest_[end])) {
    ++end;
  }
  return end - from;
}

// A backslash makes a name of what would be a word of the language.
void Scanner::scanEscapedWord() {
  const std::size_t length = wordLength(1);
  if (length == 0 || isDigit(rest_[1])) {
    throw InvalidConstraintText("no name after the backslash", at());
  }
  std::string name(rest_.substr(1, length));
  add(TokenKind::identifier, length + 1).text = std::move(name);
}

void Scanner::scanWord() {
  const std::size_t length = wordLength(0);
  const std::string_view word = rest_.substr(0, length);
  for (const TokenKind kind : kWords) {
    if (word == spelling(kind)) {
      add(kind, length);
      return;
    }
  }
  if (word == "true" || word == "false") {
    throw InvalidConstraintText("the truth values are TRUE and FALSE, not " + std::string(word),
                                at());
  }
  if (word.front() == '_') {
    throw InvalidConstraintText("a name that starts with _ needs a backslash before it", at());
  }
  add(TokenKind::identifier, length).text = std::string(word);
}

std::size_t Scanner::digitsEnd(std::size_t from) const {
  while (from < rest_.size() && isDigit(rest_[from])) {
    ++from;
  }
  return from;
}

// Where a number's fraction and exponent end; digits itself when it has none.
std::size_t Scanner::realEnd(std::size_t digits) const {
  std::size_t end = digits;
  if (end + 1 < rest_.size() && rest_[end] == '.' && isDigit(rest_[end + 1])) {
    end = digitsEnd(end + 1);
  }
  if (end < rest_.size() && (rest_[end] == 'e' || rest_[end] == 'E')) {
    const bool hasSign = end + 1 < rest_.size() && (rest_[end + 1] == '+' || rest_[end + 1] == '-');
    const std::size_t exponent = end + (hasSign ? 2 : 1);
    end = digitsEnd(exponent) > exponent ? digitsEnd(exponent) : end;
  }
  return end;
}

void Scanner::scanNumber() {
  const std::size_t digits = digitsEnd(0);
  const std::size_t end = previous() == TokenKind::dot ? digits : realEnd(digits);
  end == digits ? addInteger(end) : addReal(end);
}

void Scanner::addInteger(std::size_t size) {
  std::uint64_t value = 0;
  const auto read = std::from_chars(rest_.data(), rest_.data() + size, value);
  if (read.ec != std::errc()) {
    throw InvalidConstraintText("a whole number of more than 64 bits", at());
  }
  const bool fits = value <= static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
  add(TokenKind::integer, size).number =
      fits ? Number(static_cast<std::int64_t>(value)) : Number(static_cast<long double>(value));
}

void Scanner::addReal(std::size_t size) {
  double value = 0;
  const auto read = std::from_chars(rest_.data(), rest_.data() + size, value);
  if (read.ec != std::errc()) {
    throw InvalidConstraintText("a number too large or too small", at());
  }
  add(TokenKind::real, size).number = static_cast<long double>(value);
}

void Scanner::scanSign() {
  for (const TokenKind kind : kSigns) {
    const std::string_view sign = spelling(kind);
    if (rest_.substr(0, sign.size()) == sign) {
      add(kind, sign.size());
      return;
    }
  }
  throw InvalidConstraintText(describe(rest_.front()) + " is no part of a constraint", at());
}

}  // namespace

std::vector<Token> scanConstraint(std::string_view constraint) {
  if (constraint.size() > kMaxConstraintBytes) {
    throw InvalidConstraintText("more than " + std::to_string(kMaxConstraintBytes) + " bytes",
                                kMaxConstraintBytes);
  }
  return Scanner(constraint).scan();
}

}  // namespace zk::agent::etcl
