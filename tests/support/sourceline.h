// A line of the names' sources, counted from 1; empty beyond the end.
#ifndef ZK_TESTS_SUPPORT_SOURCELINE_H
#define ZK_TESTS_SUPPORT_SOURCELINE_H

#include <fstream>
#include <string>

namespace zk::test {

inline std::string sourceLine(const std::string& file, int line) {
  std::ifstream source(std::string(ZK_SOURCE_DIR) + "/zk_quornex/names/" + file + ".cpp");
  std::string text;
  for (int at = 0; at < line && std::getline(source, text); ++at) {
  }
  return source ? text : std::string();
}

}  // namespace zk::test

#endif
