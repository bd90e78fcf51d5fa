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

// The place that a refusal gives, counted from 1; 0 when it gives none.
unsigned long placeIn(const std::string& reason) {
  const std::string before = " at character ";
  const std::size_t found = reason.rfind(before);
  return found == std::string::npos
             ? 0
             : std::strtoul(reason.c_str() + found + before.size(), nullptr, 10);
}

// Null for a refused text, which must say where it is wrong.
std::unique_ptr<const Constraint> parsed(const std::string& text) {
  try {
    return Constraint::parse(text, world().factory);
  } catch (const zk::agent::InvalidConstraintText& refused) {
    const std::string reason = refused.what();
    ZK_FUZZ_CHECK(placeIn(reason) >= 1 && placeIn(reason) <= text.size() + 1);
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
