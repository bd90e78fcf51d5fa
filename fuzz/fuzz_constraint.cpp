// A filter's constraint, held against one event of each kind.
#include <array>
#include <memory>

#include "input.h"
#include "tests/agent/constraint/events.h"

namespace {

using zk::agent::Constraint;

struct World {
  World() : factory(zk::test::dynAnyFactory()) {}

  CORBA::ORB_var orb = zk::test::orb();  // anys can be copied from here on
  DynamicAny::DynAnyFactory_var factory;
  std::array<CosNotification::StructuredEvent, 4> events = {
      zk::test::alarm(), zk::test::creation(), zk::test::change(), zk::test::simpleTypes()};
};

const World& world() {
  static const World* const made = new World;
  return *made;
}

// Null for a refused text. The parser behind the grammar leaks what it refuses:
// it must not refuse anything itself.
std::unique_ptr<const Constraint> parsed(const std::string& text) {
  try {
    return Constraint::parse(text, world().factory);
  } catch (const zk::agent::InvalidConstraintText& refused) {
    const std::string reason = refused.what();
    ZK_FUZZ_CHECK(reason.find("the parser") == std::string::npos);
    for (const char c : reason) {
      ZK_FUZZ_CHECK(c >= ' ' && c <= '~');
    }
    return nullptr;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  const auto constraint = parsed(text);
  const auto opposite = parsed("not (" + text + ")");
  if (!constraint) {
    return 0;
  }
  for (const auto& event : world().events) {
    const bool matched = constraint->matches(event);
    ZK_FUZZ_CHECK(matched == constraint->matches(event));
    ZK_FUZZ_CHECK(!matched || !opposite || !opposite->matches(event));
  }
  return 0;
}
