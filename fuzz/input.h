// How the fuzz targets take their bytes apart: as text, so that seeds can be
// written and findings read in an editor.
#ifndef ZK_FUZZ_INPUT_H
#define ZK_FUZZ_INPUT_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include "zk_quornex/idl/names.h"

namespace zk::fuzz {

// The target found a broken promise: the fuzzer takes the abort as a finding.
#define ZK_FUZZ_CHECK(condition)                                                          \
  do {                                                                                    \
    if (!(condition)) {                                                                   \
      std::fprintf(stderr, "%s:%d: does not hold: %s\n", __FILE__, __LINE__, #condition); \
      std::abort();                                                                       \
    }                                                                                     \
  } while (false)

// A text in memory of exactly its size, so that reading beyond it is noticed.
class ExactText {
 public:
  explicit ExactText(const std::string& text)
      : characters_(std::make_unique<char[]>(std::strlen(text.c_str()) + 1)) {
    std::strcpy(characters_.get(), text.c_str());
  }

  char* get() { return characters_.get(); }

 private:
  std::unique_ptr<char[]> characters_;
};

class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size)
      : rest_(reinterpret_cast<const char*>(data), size) {}

  bool empty() const { return rest_.empty(); }

  // The next line without its end.
  std::string line() {
    const std::size_t end = std::min(rest_.find('\n'), rest_.size());
    std::string text = rest_.substr(0, end);
    rest_.erase(0, end + 1);
    return text;
  }

  std::string rest() { return std::move(rest_); }

  // The next line as a choice, 0 to count - 1: its first character, counted
  // from "0".
  unsigned int choice(unsigned int count) {
    const std::string text = line();
    return text.empty() ? 0 : static_cast<unsigned char>(text[0] - '0') % count;
  }

  // The remaining lines as a name: "pair=value" each, the value with everything
  // behind the first "="; a line without one makes a pair without a value.
  globaldefs::NVSList_T name() {
    globaldefs::NVSList_T pairs;
    while (!empty()) {
      const ExactLine pair(line());
      const CORBA::ULong at = pairs.length();
      pairs.length(at + 1);
      pairs[at].name = CORBA::string_dup(pair.key.c_str());
      if (pair.hasValue) {
        pairs[at].value = CORBA::string_dup(pair.value.c_str());
      }
    }
    return pairs;
  }

 private:
  struct ExactLine {
    explicit ExactLine(const std::string& text) {
      const std::size_t equals = text.find('=');
      hasValue = equals != std::string::npos;
      key = text.substr(0, equals);
      value = hasValue ? text.substr(equals + 1) : "";
    }

    std::string key;
    std::string value;
    bool hasValue;
  };

  std::string rest_;
};

}  // namespace zk::fuzz

#endif
