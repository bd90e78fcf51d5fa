#include "tests/names/parsemodel.h"

#include <limits>

namespace zk::test::model {

namespace {

bool isSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

bool isOneOf(char c, const std::string& set) {
  for (const char candidate : set) {
    if (candidate == c) {
      return true;
    }
  }
  return false;
}

}  // namespace

std::string trimmed(const std::string& text) {
  std::string result;
  std::string pending;  // blanks that are dropped unless more text follows
  for (const char c : text) {
    if (c == ' ') {
      pending += c;
      continue;
    }
    if (!result.empty()) {
      result += pending;
    }
    pending.clear();
    result += c;
  }
  return result;
}

bool isDigits(const std::string& text) {
  for (const char c : text) {
    if (!isOneOf(c, "0123456789")) {
      return false;
    }
  }
  return !text.empty();
}

std::pair<long, std::size_t> leadingNumber(const std::string& text) {
  std::size_t at = 0;
  while (at < text.size() && isSpace(text[at])) {
    ++at;
  }
  const bool negative = at < text.size() && text[at] == '-';
  at += at < text.size() && isOneOf(text[at], "+-") ? 1 : 0;
  const std::size_t firstDigit = at;
  const unsigned long limit =
      static_cast<unsigned long>(std::numeric_limits<long>::max()) + (negative ? 1 : 0);
  unsigned long sum = 0;
  for (; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at) {
    const auto digit = static_cast<unsigned long>(text[at] - '0');
    sum = sum > (limit - digit) / 10 ? limit : sum * 10 + digit;
  }
  if (at == firstDigit) {
    return {0, 0};
  }
  return {static_cast<long>(negative ? 0 - sum : sum), at};
}

unsigned long identifier(const std::string& digits) {
  const auto number = static_cast<unsigned long>(leadingNumber(digits).first);
  const unsigned long low = number % 0x100000000UL;
  return low < 0x80000000UL ? low : low + 0xFFFFFFFF00000000UL;
}

std::optional<unsigned long> id(const char* text) {
  if (text == nullptr || !isDigits(trimmed(text))) {
    return std::nullopt;
  }
  return identifier(trimmed(text));
}

long numberOrInvalid(const char* text) {
  if (text == nullptr || !isDigits(trimmed(text))) {
    return 4294967295L;
  }
  return leadingNumber(trimmed(text)).first;
}

Partial<std::vector<std::string>> split(const std::string& text, char separator) {
  Partial<std::vector<std::string>> result;
  if (text.empty()) {
    return result;
  }
  std::string piece;
  for (std::size_t at = 0; at <= text.size(); ++at) {
    if (at < text.size() && text[at] != separator) {
      piece += text[at];
      continue;
    }
    if (trimmed(piece).empty()) {
      return result;
    }
    result.items.push_back(trimmed(piece));
    piece.clear();
  }
  result.accepted = true;
  return result;
}

Partial<std::vector<unsigned long>> numberPath(const std::string& text) {
  Partial<std::vector<unsigned long>> result;
  std::string piece;
  for (const char c : text + "/") {
    if (c != '/') {
      piece += c;
      continue;
    }
    if (!isDigits(trimmed(piece))) {
      return result;
    }
    result.items.push_back(identifier(trimmed(piece)));
    piece.clear();
  }
  result.accepted = !text.empty();
  return result;
}

Partial<std::vector<long>> numbers(const std::string& text, const std::string& delimiters) {
  Partial<std::vector<long>> result;
  std::size_t at = 0;
  while (true) {
    while (at < text.size() && isOneOf(text[at], delimiters)) {
      ++at;
    }
    if (at == text.size()) {
      result.accepted = true;
      return result;
    }
    std::string token;
    while (at < text.size() && !isOneOf(text[at], delimiters)) {
      token += text[at++];
    }
    const auto [number, length] = leadingNumber(token);
    result.items.push_back(number);
    if (length != token.size()) {
      return result;
    }
  }
}

std::optional<KeyValue> keyValue(const std::string& item) {
  KeyValue result;
  bool inValue = false;
  for (const char c : item) {
    if (!inValue && c == '=') {
      inValue = true;
    } else {
      (inValue ? result.value : result.key) += c;
    }
  }
  result.key = trimmed(result.key);
  return result.key.empty() ? std::nullopt : std::make_optional(result);
}

Partial<Pairs> path(const char* text, Pairs pairs) {
  Partial<Pairs> result{false, std::move(pairs)};
  if (text == nullptr || *text != '/') {
    return result;
  }
  const auto pieces = split(text + 1, '/');
  if (!pieces.accepted) {
    return result;
  }
  for (const std::string& piece : pieces.items) {
    const auto pair = keyValue(piece);
    if (!pair) {
      return result;
    }
    if (result.items.count(pair->key) == 0) {
      result.items[pair->key] = pair->value;
    }
  }
  result.accepted = true;
  return result;
}

std::optional<Indexed> indexed(const char* text) {
  if (text == nullptr) {
    return std::nullopt;
  }
  std::string name;
  std::string inside;
  enum { BEFORE, INSIDE, BEHIND } where = BEFORE;
  for (; *text != '\0'; ++text) {
    if (where == BEHIND || (where == BEFORE && *text == ')')) {
      return std::nullopt;  // something follows the closing bracket, or it comes first
    }
    if (where == BEFORE && *text == '(') {
      where = INSIDE;
    } else if (where == INSIDE && *text == ')') {
      where = BEHIND;
    } else {
      (where == BEFORE ? name : inside) += *text;
    }
  }
  if (where != BEHIND || trimmed(name).empty() || !isDigits(trimmed(inside))) {
    return std::nullopt;
  }
  return Indexed{trimmed(name), identifier(trimmed(inside))};
}

}  // namespace zk::test::model
