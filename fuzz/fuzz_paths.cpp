// The texts made of several parts: key=value paths, number paths, number lists
// and numbered names, judged by the model. The first line holds the delimiters
// of the number list; the rest is the text.
#include "input.h"
#include "tests/names/parsemodel.h"
#include "zk_quornex/names/nameparse.h"

namespace {

using namespace NS_QUORCORBA;
using zk::fuzz::ExactText;
namespace model = zk::test::model;

void checkKeyValuePath(const char* text) {
  for (const model::Pairs& before : {model::Pairs{}, model::Pairs{{"id", "1"}}}) {
    const auto expected = model::path(text, before);
    model::Pairs pairs = before;
    ZK_FUZZ_CHECK(ParseNameValuePath(text, pairs) == expected.accepted);
    ZK_FUZZ_CHECK(pairs == expected.items);
  }
}

void checkNumberPath(const char* text) {
  const auto expected = model::numberPath(text);
  std::vector<unsigned long> numbers;
  ZK_FUZZ_CHECK(ParseNumberPath(text, numbers) == expected.accepted);
  ZK_FUZZ_CHECK(numbers == expected.items);
}

void checkNumberList(ExactText text, ExactText delimiters) {
  const auto expected = model::numbers(text.get(), delimiters.get());
  std::vector<long> numbers = {77};
  ZK_FUZZ_CHECK(SplitNumbers(text.get(), numbers, delimiters.get()) == expected.accepted);
  ZK_FUZZ_CHECK(numbers == expected.items);
}

void checkIndexedName(const char* text) {
  const auto expected = model::indexed(text);
  std::string name;
  unsigned long index = 77;
  ZK_FUZZ_CHECK(ParseIndexedName(text, name, index) == expected.has_value());
  ZK_FUZZ_CHECK(index == (expected ? expected->index : 77));
  ZK_FUZZ_CHECK(!expected || name == expected->name);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  zk::fuzz::Input input(data, size);
  const std::string delimiters = input.line();
  const std::string text = input.rest();
  ExactText characters(text);
  checkKeyValuePath(characters.get());
  checkNumberPath(characters.get());
  checkIndexedName(characters.get());
  checkNumberList(ExactText(text), ExactText(delimiters));
  return 0;
}
