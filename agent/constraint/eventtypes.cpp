#include "agent/constraint/eventtypes.h"

namespace zk::agent {

namespace {

// Goes back to the last star only: linear in text for each star, whatever a
// client makes of its pattern.
bool matchesStars(std::string_view pattern, std::string_view text) {
  std::size_t p = 0;
  std::size_t t = 0;
  std::size_t afterStar = std::string_view::npos;
  std::size_t starText = 0;
  while (t < text.size()) {
    if (p < pattern.size() && pattern[p] == '*') {
      afterStar = ++p;
      starText = t;
    } else if (p < pattern.size() && pattern[p] == text[t]) {
      ++p;
      ++t;
    } else if (afterStar != std::string_view::npos) {
      p = afterStar;
      t = ++starText;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of('*', p) == std::string_view::npos;
}

}  // namespace

bool matchesTypePattern(std::string_view pattern, std::string_view text) {
  return pattern.empty() || pattern == "%ALL" || matchesStars(pattern, text);
}

bool matchesEventType(const CosNotification::EventType& pattern,
                      const CosNotification::EventType& type) {
  return matchesTypePattern(pattern.domain_name.in(), type.domain_name.in()) &&
         matchesTypePattern(pattern.type_name.in(), type.type_name.in());
}

bool matchesEventTypes(const CosNotification::EventTypeSeq& patterns,
                       const CosNotification::EventType& type) {
  bool matched = patterns.length() == 0;
  for (CORBA::ULong i = 0; i < patterns.length() && !matched; ++i) {
    matched = matchesEventType(patterns[i], type);
  }
  return matched;
}

}  // namespace zk::agent
