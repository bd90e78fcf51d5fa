// The helpers that take one piece of text, judged by the model.
#include "input.h"
#include "tests/names/parsemodel.h"
#include "zk_quornex/names/nameparse.h"

namespace {

using namespace NS_QUORCORBA;
using zk::fuzz::ExactText;
namespace model = zk::test::model;

void checkTrimming(const std::string& text) {
  for (const bool digitsOnly : {false, true}) {
    std::string trimmed = text;
    const std::string expected = model::trimmed(text);
    const bool good = digitsOnly ? model::isDigits(expected) : !expected.empty();
    ZK_FUZZ_CHECK(TrimAndCheck(trimmed, digitsOnly) == good);
    ZK_FUZZ_CHECK(trimmed == expected);
  }
}

void checkNumbers(const char* text) {
  const auto id = model::id(text);
  unsigned long value = 77;
  ZK_FUZZ_CHECK(IsNumeric(text) == id.has_value());
  ZK_FUZZ_CHECK(ParseID(text, value) == id.has_value());
  ZK_FUZZ_CHECK(value == id.value_or(77));
  ZK_FUZZ_CHECK(ParseNumberOrInvalid(text) == model::numberOrInvalid(text));
}

void checkCopy(const char* text) {
  std::string out = "before";
  ZK_FUZZ_CHECK(AssignNonEmpty(text, out) == (*text != '\0'));
  ZK_FUZZ_CHECK(out == (*text != '\0' ? text : "before"));
}

void checkSplitting(const std::string& text, char separator) {
  const auto expected = model::split(text, separator);
  std::vector<std::string> pieces;
  ZK_FUZZ_CHECK(SplitByChar(text, pieces, separator) == expected.accepted);
  ZK_FUZZ_CHECK(pieces == expected.items);
}

void checkKeyValue(const std::string& item) {
  const auto expected = model::keyValue(item);
  std::string key;
  std::string value;
  ZK_FUZZ_CHECK(SplitNameValue(item, key, value) == expected.has_value());
  ZK_FUZZ_CHECK(!expected || (key == expected->key && value == expected->value));
}

}  // namespace

// Texts are taken whole, with any zero characters in them, where the function
// takes a string.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  ExactText characters(text);
  checkTrimming(text);
  checkNumbers(characters.get());
  checkCopy(characters.get());
  for (const char separator : {'/', '-', ' ', '\0'}) {
    checkSplitting(text, separator);
  }
  checkKeyValue(text);
  return 0;
}
