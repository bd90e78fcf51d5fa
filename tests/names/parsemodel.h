// What the text parsing of names should answer, worked out a second time by
// other means: one pass over the characters, numbers added up by hand, ranges in
// place of rules. Plain rather than fast, shares no code with names/, keeps no
// state.
//
// An answer is empty when the text is refused and nothing is promised about
// partial results; where partial results are promised, they come with a flag.
#ifndef ZK_TESTS_NAMES_PARSEMODEL_H
#define ZK_TESTS_NAMES_PARSEMODEL_H

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace zk::test::model {

std::string trimmed(const std::string& text);
bool isDigits(const std::string& text);

// The decimal number at the head of text, in 64 bits, held at the limits; how
// many characters it took, 0 when there is none.
std::pair<long, std::size_t> leadingNumber(const std::string& text);

// A run of digits as an identifier: the low 32 bits of the 64-bit number, the
// upper half filled with their sign.
unsigned long identifier(const std::string& digits);

std::optional<unsigned long> id(const char* text);
long numberOrInvalid(const char* text);

template <class Items>
struct Partial {
  bool accepted = false;
  Items items;  // what is there, also after a refusal
};

Partial<std::vector<std::string>> split(const std::string& text, char separator);
Partial<std::vector<unsigned long>> numberPath(const std::string& text);
Partial<std::vector<long>> numbers(const std::string& text, const std::string& delimiters);

struct KeyValue {
  std::string key;
  std::string value;
};

std::optional<KeyValue> keyValue(const std::string& item);

using Pairs = std::map<std::string, std::string>;

// pairs: those that are there before.
Partial<Pairs> path(const char* text, Pairs pairs);

struct Indexed {
  std::string name;
  unsigned long index = 0;
};

std::optional<Indexed> indexed(const char* text);

using Values = std::map<std::string, unsigned long>;

struct Layered {
  bool accepted = false;
  Values values;
  unsigned int templateId = 0;
};

// values and templateId: those that are there before.
Layered layered(const char* name, Values values, unsigned int templateId);
bool allowed(const Values& values, unsigned int templateId);

}  // namespace zk::test::model

#endif
