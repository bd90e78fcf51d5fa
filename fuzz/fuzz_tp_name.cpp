// Layered termination-point names, judged by the model. The first line holds
// values that are there before, "key=number;key=number"; the second is the name.
#include "input.h"
#include "tests/names/parsemodel.h"
#include "zk_quornex/names/nameparse.h"

namespace {

using zk::fuzz::ExactText;
namespace model = zk::test::model;

model::Values valuesBefore(const std::string& line) {
  model::Values values;
  std::size_t start = 0;
  while (start < line.size()) {
    const std::size_t end = std::min(line.find(';', start), line.size());
    const std::string item = line.substr(start, end - start);
    const std::size_t equals = std::min(item.find('='), item.size());
    values.emplace(item.substr(0, equals),
                   std::strtoul(item.c_str() + equals + (equals < item.size()), nullptr, 10));
    start = end + 1;
  }
  return values;
}

void checkRules(const model::Values& values) {
  for (unsigned int id = 0; id <= 24; ++id) {
    ZK_FUZZ_CHECK(NS_QUORCORBA::CheckTPValues(values, id) == model::allowed(values, id));
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  zk::fuzz::Input input(data, size);
  const model::Values before = valuesBefore(input.line());
  ExactText name(input.rest());
  const model::Layered expected = model::layered(name.get(), before, 99);
  model::Values values = before;
  unsigned int id = 99;
  const bool accepted = NS_QUORCORBA::ParseTPLayeredName(name.get(), values, id);
  ZK_FUZZ_CHECK(accepted == expected.accepted);
  ZK_FUZZ_CHECK(values == expected.values);
  ZK_FUZZ_CHECK(id == expected.templateId);
  checkRules(values);
  return 0;
}
