#include "agent/orb/references.h"

#include <algorithm>

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
  TLS = 36,  // in the one before
  SENDERS_CONNECTION = 0x41545401,
  UNIX_ADDRESS = 0x41545402,
};

constexpr std::size_t SMALLEST_SSL = 8;  // two numbers that the ORB reads in any case

// Values with a byte order of their own.
class Encapsulation : public CdrReader {
 public:
  explicit Encapsulation(std::string_view bytes)
      : CdrReader(bytes, !bytes.empty() && bytes[0] == 1) {
    boolean();
  }
};

// A number, and that many of what read reads. Fails when there cannot be so many.
template <class Read>
void readEach(CdrReader& in, std::size_t most, const Read& read) {
  const std::uint32_t count = in.uint32();
  if (count > most) {
    in.fail();
  }
  for (std::uint32_t i = 0; i < count && in.good(); ++i) {
    read();
  }
}

void readCodeSets(CdrReader& in) {
  in.uint32();  // the native one
  readEach(in, MOST_CODE_SETS, [&] { in.uint32(); });
}

bool isHostCharacter(char c) {
  return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
         std::string_view(".:-_%").find(c) != std::string_view::npos;
}

// The ORB writes it as a text and reads that again.
void readAddress(CdrReader& in) {
  const std::string_view host = in.text(MOST_HOST);
  if (!std::all_of(host.begin(), host.end(), isHostCharacter)) {
    in.fail();
  }
  in.uint16();
}

bool isTlsGood(std::string_view data) {
  Encapsulation in(data);
  in.uint16();
  in.uint16();
  readEach(in, in.remaining(), [&] { readAddress(in); });
  return in.good();
}

void readSecurityMechanism(CdrReader& in) {
  in.uint16();
  const auto transport = Component{in.uint32()};
  const std::string_view data = in.octetList(MOST_PROFILE);
  if (transport == Component::TLS && !isTlsGood(data)) {
    in.fail();
  }
  in.uint16();  // of authentication
  in.uint16();
  in.octetList(MOST_PROFILE);
  in.octetList(MOST_PROFILE);
  in.uint16();  // of attributes
  in.uint16();
  // The ORB takes no more than the transport's bytes.
  readEach(in, data.size(), [&] {
    in.uint32();
    in.octetList(MOST_PROFILE);
  });
  readEach(in, in.remaining(), [&] { in.octetList(MOST_PROFILE); });
  in.uint32();
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
      return in.good() && data.size() >= SMALLEST_SSL;
    case Component::SECURITY:
      in.boolean();
      readEach(in, data.size(), [&] { readSecurityMechanism(in); });
      return in.good();
    case Component::TLS:
      return true;  // not opened here
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
  readEach(in, MOST_COMPONENTS, [&] {
    const auto kind = Component{in.uint32()};
    if (!isComponentGood(kind, in.octetList(MOST_PROFILE))) {
      in.fail();
    }
  });
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
  readEach(in, MOST_PROFILES, [&] {
    const auto kind = Profile{in.uint32()};
    if (!isProfileGood(kind, in.octetList(MOST_PROFILE))) {
      in.fail();
    }
  });
}

}  // namespace zk::agent
