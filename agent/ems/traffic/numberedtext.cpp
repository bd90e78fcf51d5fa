#include "agent/ems/traffic/numberedtext.h"

#include <regex>

namespace zk::agent {

std::string nextNumbered(const std::string& text) {
  static const std::regex numbered(R"(([\s\S]*) \(([1-9][0-9]{0,2})\))");
  std::smatch parts;
  if (!std::regex_match(text, parts, numbered)) {
    return text + " (2)";
  }
  const int number = std::stoi(parts[2]);
  return parts[1].str() + " (" + std::to_string(number == 999 ? 2 : number + 1) + ")";
}

}  // namespace zk::agent
