#include "zk_quornex/names/nameparse.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "zk_quornex/names/debuglog.h"

namespace NS_QUORCORBA {

namespace {

constexpr long INVALID_NUMBER = 4294967295;

bool isDigit(char character) { return character >= '0' && character <= '9'; }

// As wide as the EMS's identifiers: a signed 32-bit value, widened with its
// sign.
unsigned long toIdentifier(const char* digits) {
  return static_cast<unsigned long>(
      static_cast<long>(static_cast<int>(std::strtol(digits, nullptr, 10))));
}

// The text behind a leading "/"; null when there is no such text.
const char* afterRoot(const char* path) {
  return path != nullptr && *path == '/' ? path + 1 : nullptr;
}

}  // namespace

bool TrimAndCheck(std::string& text, bool digitsOnly) {
  text.erase(text.find_last_not_of(' ') + 1);
  text.erase(0, text.find_first_not_of(' '));
  return !text.empty() && (!digitsOnly || std::all_of(text.begin(), text.end(), isDigit));
}

bool IsNumeric(const char* text) {
  if (text == nullptr) {
    return false;
  }
  std::string copy(text);
  return TrimAndCheck(copy, true);
}

bool ParseID(const char* text, unsigned long& value) {
  if (!IsNumeric(text)) {
    return false;
  }
  value = toIdentifier(text);
  return true;
}

bool AssignNonEmpty(const char* text, std::string& out) {
  if (text == nullptr || *text == '\0') {
    return false;
  }
  out = text;
  return true;
}

bool SplitByChar(const std::string& text, std::vector<std::string>& pieces, char separator) {
  if (text.empty()) {
    return false;
  }
  std::size_t start = 0;
  while (start <= text.size()) {
    const std::size_t end = std::min(text.find(separator, start), text.size());
    std::string piece = text.substr(start, end - start);
    if (!TrimAndCheck(piece, false)) {
      return false;
    }
    pieces.push_back(std::move(piece));
    start = end + 1;
  }
  return true;
}

bool SplitNameValue(const std::string& item, std::string& key, std::string& value) {
  if (item.empty()) {
    return false;
  }
  const std::size_t equals = item.find('=');
  std::string first = item.substr(0, equals);
  value = equals == std::string::npos ? std::string() : item.substr(equals + 1);
  key.swap(first);
  return TrimAndCheck(key, false);
}

bool ParseNameValuePath(const char* path, std::map<std::string, std::string>& pairs) {
  const char* rest = afterRoot(path);
  std::vector<std::string> pieces;
  if (rest == nullptr || !SplitByChar(rest, pieces, '/')) {
    return false;
  }
  for (const std::string& piece : pieces) {
    std::string key;
    std::string value;
    if (!SplitNameValue(piece, key, value)) {
      return false;
    }
    pairs.emplace(std::move(key), std::move(value));
  }
  return true;
}

bool ParseNumberPath(const char* text, std::vector<unsigned long>& numbers) {
  if (text == nullptr || *text == '\0') {
    return false;
  }
  numbers.clear();
  const std::string path = std::string(text) + '/';
  std::size_t start = 0;
  for (std::size_t end; (end = path.find('/', start)) != std::string::npos; start = end + 1) {
    std::string piece = path.substr(start, end - start);
    if (!TrimAndCheck(piece, true)) {
      return false;
    }
    numbers.push_back(toIdentifier(piece.c_str()));
  }
  return true;
}

bool SplitNumbers(char* text, std::vector<long>& numbers, const char* delimiters) {
  if (text == nullptr || delimiters == nullptr) {
    return false;
  }
  numbers.clear();
  char* position = nullptr;
  for (char* token = strtok_r(text, delimiters, &position); token != nullptr;
       token = strtok_r(nullptr, delimiters, &position)) {
    char* rest = nullptr;
    numbers.push_back(std::strtol(token, &rest, 10));
    if (*rest != '\0') {
      return false;
    }
  }
  return true;
}

bool ParseIndexedName(const char* text, std::string& name, unsigned long& index) {
  if (text == nullptr || *text == '\0') {
    return false;
  }
  const std::string whole(text);
  const std::size_t open = whole.find('(');
  if (open == std::string::npos) {
    return false;
  }
  name = whole.substr(0, open);
  if (!TrimAndCheck(name, false)) {
    return false;
  }
  const std::size_t close = whole.find(')');
  if (close == std::string::npos || close < open + 2 || close + 1 != whole.size()) {
    return false;
  }
  std::string digits = whole.substr(open + 1, close - open - 1);
  if (!TrimAndCheck(digits, true)) {
    return false;
  }
  index = toIdentifier(digits.c_str());
  return true;
}

long ParseNumberOrInvalid(const char* str) {
  assertHolds(str != nullptr, "nameparse", "0 != str");
  return IsNumeric(str) ? std::strtol(str, nullptr, 10) : INVALID_NUMBER;
}

}  // namespace NS_QUORCORBA
