// The layered termination-point names of the model.
#include <charconv>
#include <cmath>
#include <limits>

#include "tests/names/parsemodel.h"

namespace zk::test::model {

namespace {

constexpr unsigned long ANY = std::numeric_limits<unsigned long>::max();

// The characters of a name, cut at both kinds of separator alike.
std::optional<std::vector<KeyValue>> items(const char* name) {
  if (name == nullptr || *name != '/') {
    return std::nullopt;
  }
  std::vector<KeyValue> result;
  std::string item;
  for (const char* c = name + 1;; ++c) {
    if (*c != '/' && *c != '-' && *c != '\0') {
      item += *c;
      continue;
    }
    const auto pair = keyValue(trimmed(item));
    if (!pair) {
      return std::nullopt;
    }
    result.push_back(*pair);
    item.clear();
    if (*c == '\0') {
      return result;
    }
  }
}

// Letters in either case.
bool startsWith(const std::string& text, const std::string& lowerCase) {
  if (text.size() < lowerCase.size()) {
    return false;
  }
  for (std::size_t at = 0; at < lowerCase.size(); ++at) {
    const char c = text[at] >= 'A' && text[at] <= 'Z' ? static_cast<char>(text[at] + 32) : text[at];
    if (c != lowerCase[at]) {
      return false;
    }
  }
  return true;
}

// What is too large for a double and what is too small both end up as 0 in
// hundredths.
double readDouble(const std::string& digits, const std::string& first, std::chars_format format) {
  if (digits.empty() || first.find(digits[0]) == std::string::npos) {
    return 0.0;
  }
  double number = 0.0;
  const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), number, format);
  return result.ec == std::errc() ? number : 0.0;
}

// The number at the head of text, 0 when there is none. A name cuts its values
// at "-", so no minus sign and no negative exponent comes here.
double leadingDouble(const std::string& text) {
  std::size_t at = 0;
  while (at < text.size() && (text[at] == ' ' || (text[at] >= '\t' && text[at] <= '\r'))) {
    ++at;
  }
  at += at < text.size() && text[at] == '+' ? 1 : 0;
  const std::string rest = text.substr(at);
  if (startsWith(rest, "nan")) {
    return std::numeric_limits<double>::quiet_NaN();
  }
  if (startsWith(rest, "inf")) {
    return std::numeric_limits<double>::infinity();
  }
  if (startsWith(rest, "0x")) {
    return readDouble(rest.substr(2), ".0123456789abcdefABCDEF", std::chars_format::hex);
  }
  return readDouble(rest, ".0123456789", std::chars_format::general);
}

// Toward zero. What 64 bits cannot hold becomes 0, and what is no number the
// highest bit alone, as it comes out of the machine's own conversion.
unsigned long hundredths(double number) {
  const double product = number * 100.0;
  if (std::isnan(product)) {
    return 0x8000000000000000UL;
  }
  int exponent = 0;
  const double fraction = std::frexp(product, &exponent);
  if (exponent <= 0 || exponent > 64 || std::isinf(product)) {
    return 0;
  }
  const auto mantissa = static_cast<unsigned long>(std::ldexp(fraction, 53));
  return exponent >= 53 ? mantissa << (exponent - 53) : mantissa >> (53 - exponent);
}

// One item's share: its value and whether it is kept, counted and named.
struct Share {
  unsigned long value = 0;
  bool kept = false;
  bool shapes = true;
};

std::optional<Share> shareOf(const KeyValue& item) {
  if (item.key == "direction") {
    if (item.value != "src" && item.value != "sink") {
      return std::nullopt;
    }
    return Share{item.value == "src" ? 1UL : 2UL, true, false};
  }
  if (item.key == "frequency") {
    return Share{hundredths(leadingDouble(item.value)), true, true};
  }
  if (item.value.empty()) {
    return Share{};
  }
  const auto number = id(item.value.c_str());
  if (!number) {
    return std::nullopt;
  }
  return Share{*number, *number != 0, true};
}

// "text count", as a name shapes it, to the id.
const std::map<std::string, unsigned int>& shapes() {
  static const std::map<std::string, unsigned int> all = {
      {"%rack 1", 1},
      {"%rack%shelf 2", 2},
      {"%rack%shelf%slot 3", 3},
      {"%rack%shelf%slot%port 4", 4},
      {"%sts3c_au4%j 1", 5},
      {"%sts3c_au4%j%tu3_vc3%k 2", 6},
      {"%sts3c_au4%j%vt2_tu12%k%l%m 4", 7},
      {"%vt2_tu12 1", 8},
      {"%tu3_vc3 1", 9},
      {"%sts3c_au4 1", 10},
      {"%frequency%id 2", 11},
      {"%frequency%id%dsr 3", 12},
      {"%frequency%id%dsr_1 3", 13},
      {"%frequency%id%dsr_4 3", 14},
      {"%frequency%id%dsr_16 3", 15},
      {"%frequency%id%dsr_64 3", 16},
      {"%frequency%id%dsr_Gb 3", 17},
      {"%dsr 1", 18},
      {"%dsr_1 1", 19},
      {"%dsr_4 1", 20},
      {"%dsr_16 1", 21},
      {"%dsr_64 1", 22},
      {"%dsr_Gb 1", 23},
  };
  return all;
}

struct Range {
  unsigned long least;
  unsigned long most;
};

Range rangeOf(const std::string& key, unsigned int templateId) {
  const bool equipment = templateId <= 4;
  if (key == "direction" && templateId >= 4) {
    return {1, 2};
  }
  const std::string single = equipment ? " rack " : " sts3c_au4 tu3_vc3 vt2_tu12 ";
  if (key.find(' ') == std::string::npos && single.find(" " + key + " ") != std::string::npos) {
    return {1, 1};
  }
  static const std::map<std::string, unsigned long> most = {{"k", 3}, {"l", 7}, {"m", 3}};
  const auto bound = most.find(key);
  return {1, equipment || bound == most.end() ? ANY : bound->second};
}

}  // namespace

Layered layered(const char* name, Values values, unsigned int templateId) {
  Layered result{false, std::move(values), templateId};
  const auto all = items(name);
  if (!all) {
    return result;
  }
  std::string shape;
  unsigned int counted = 0;
  for (const KeyValue& item : *all) {
    const auto share = shareOf(item);
    if (!share) {
      return result;
    }
    if (share->kept && result.values.count(item.key) == 0) {
      result.values[item.key] = share->value;
    }
    if (share->shapes) {
      shape += "%" + item.key;
      counted += share->kept ? 1 : 0;
    }
  }
  const auto found = shapes().find(shape + " " + std::to_string(counted));
  if (found != shapes().end()) {
    result.templateId = found->second;
    result.accepted = allowed(result.values, result.templateId);
  }
  return result;
}

bool allowed(const Values& values, unsigned int templateId) {
  if (templateId == 0 || templateId > 23) {
    return true;
  }
  for (const auto& [key, value] : values) {
    const Range range = rangeOf(key, templateId);
    if (value < range.least || value > range.most) {
      return false;
    }
  }
  return true;
}

}  // namespace zk::test::model
