#include "agent/orb/references.h"

namespace zk::agent {

namespace {

constexpr std::size_t MOST_TYPE_ID = 255;
constexpr std::uint32_t MOST_PROFILES = 8;
constexpr std::size_t MOST_PROFILE = 4096;
constexpr std::uint32_t MOST_COMPONENTS = 32;
constexpr std::size_t MOST_HOST = 255;
constexpr std::size_t MOST_CODE_SETS = 64;
constexpr std::uint8_t HIGHEST_MINOR = 2;

enum class Profile : std::uint32_t { INTERNET = 0, COMPONENTS = 1 };

// Those that the ORB opens.
enum class Component : std::uint32_t {
  ORB_TYPE = 0,
  CODE_SETS = 1,
  OTHER_ADDRESS = 3,
  SSL = 20,
  SECURITY = 33,
  SENDERS_CONNECTION = 0x41545401,
  UNIX_ADDRESS = 0x41545402,
};

// The ORB opens an encapsulation with two numbers without asking for its length.
constexpr std::size_t SMALLEST_SECURITY = 8;

// Values with a byte order of their own.
class Encapsulation : public CdrReader {
 public:
  explicit Encapsulation(std::string_view bytes)
      : CdrReader(bytes, !bytes.empty() && bytes[0] == 1) {
    boolean();
  }
};

void readCodeSets(CdrReader& in) {
  in.uint32();  // the native one
  const std::uint32_t count = in.uint32();
  if (count > MOST_CODE_SETS) {
    in.fail();
  }
  in.octets(std::size_t{4} * count);
}

void readAddress(CdrReader& in) {
  in.text(MOST_HOST);
  in.uint16();
}

bool isComponentGood(Component kind, std::string_view data) {
  Encapsulation in(data);
  switch (kind) {
    case Component::ORB_TYPE:
      in.uint32();
      return in.good();
    case Component::CODE_SETS:
      readCodeSets(in);  // of chars, then of wide ones
      readCodeSets(in);
      return in.good();
    case Component::OTHER_ADDRESS:
      readAddress(in);
      return in.good();
    case Component::SSL:
    case Component::SECURITY:
      return in.good() && data.size() >= SMALLEST_SECURITY;
    case Component::SENDERS_CONNECTION:
      return false;
    case Component::UNIX_ADDRESS:
      in.text(MOST_HOST);
      in.text(MOST_HOST);
      return in.good();
  }
  return true;  // not opened
}

void readComponents(CdrReader& in) {
  const std::uint32_t count = in.uint32();
  if (count > MOST_COMPONENTS) {
    in.fail();
  }
  for (std::uint32_t i = 0; i < count && in.good(); ++i) {
    const auto kind = Component{in.uint32()};
    if (!isComponentGood(kind, in.octetList(MOST_PROFILE))) {
      in.fail();
    }
  }
}

void readInternetProfile(CdrReader& in) {
  const std::uint8_t major = in.octet();
  const std::uint8_t minor = in.octet();
  if (major != 1 || minor > HIGHEST_MINOR) {
    in.fail();
  }
  readAddress(in);
  in.octetList(MOST_PROFILE);  // the object's key
  if (minor > 0) {
    readComponents(in);
  }
}

bool isProfileGood(Profile kind, std::string_view data) {
  Encapsulation in(data);
  switch (kind) {
    case Profile::INTERNET:
      readInternetProfile(in);
      return in.good() && in.remaining() == 0;
    case Profile::COMPONENTS:
      readComponents(in);
      return in.good() && in.remaining() == 0;
  }
  return true;  // not opened
}

}  // namespace

void readReference(CdrReader& in) {
  in.text(MOST_TYPE_ID);
  const std::uint32_t count = in.uint32();
  if (count > MOST_PROFILES) {
    in.fail();
  }
  for (std::uint32_t i = 0; i < count && in.good(); ++i) {
    const auto kind = Profile{in.uint32()};
    if (!isProfileGood(kind, in.octetList(MOST_PROFILE))) {
      in.fail();
    }
  }
}

}  // namespace zk::agent
