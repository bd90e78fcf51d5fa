#include "agent/orb/cdr.h"

namespace zk::agent {

void CdrReader::fail() { good_ = false; }

void CdrReader::align(std::size_t size) { octets((size - at_ % size) % size); }

std::string_view CdrReader::octets(std::size_t count) {
  if (count > remaining()) {
    fail();
    return {};
  }
  const std::string_view result = bytes_.substr(at_, count);
  at_ += count;
  return result;
}

std::uint64_t CdrReader::number(std::size_t size) {
  align(size);
  const std::string_view bytes = octets(size);
  std::uint64_t value = 0;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const std::size_t place = littleEndian_ ? bytes.size() - 1 - i : i;
    value = value << 8U | static_cast<unsigned char>(bytes[place]);
  }
  return value;
}

bool CdrReader::boolean() {
  const std::uint8_t value = octet();
  if (value > 1) {
    fail();
  }
  return value == 1;
}

std::string_view CdrReader::octetList(std::size_t most) {
  const std::uint32_t length = uint32();
  if (length > most) {
    fail();
  }
  return octets(length);
}

std::string_view CdrReader::text(std::size_t most) {
  const std::string_view bytes = octetList(most + 1);
  if (bytes.empty() || bytes.find('\0') != bytes.size() - 1) {
    fail();
    return {};
  }
  return bytes.substr(0, bytes.size() - 1);
}

}  // namespace zk::agent
