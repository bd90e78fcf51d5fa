// A GIOP message from a stranger: its header read, its parameters screened, and
// what passes decoded by the ORB and looked into as the agent does.
#include "agent/orb/screening.h"
#include "input.h"
#include "tests/agent/constraint/events.h"
#include "tests/agent/orb/decoding.h"

namespace {

constexpr std::size_t HEADER = 12;
constexpr std::size_t MOST_BYTES = std::size_t{64} * 1024;

void screenAndDecode(std::string message) {
  const auto request = zk::agent::readRequest(message);
  if (!request) {
    return;
  }
  ZK_FUZZ_CHECK(request->parametersAt <= message.size());
  if (zk::agent::screen(message, *request) == zk::agent::Verdict::PASS) {
    const auto rest = zk::agent::readRequest(message);
    ZK_FUZZ_CHECK(rest.has_value());
    zk::test::decodedByOrb(message, *rest);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const CORBA::ORB_var orb = zk::test::orb();  // values can be decoded from here on
  if (size < HEADER || size > MOST_BYTES) {
    return 0;
  }
  // The size in its header is of no interest, and hard to guess.
  const std::string message =
      zk::test::resized(std::string(reinterpret_cast<const char*>(data), size));
  zk::agent::readLocateRequest(message);
  screenAndDecode(message);
  return 0;
}
