// Reads CDR, the ORB's encoding of values: numbers aligned to their size, in the
// sender's byte order. For one thread; refers to the bytes, copies nothing.
#ifndef ZK_AGENT_ORB_CDR_H
#define ZK_AGENT_ORB_CDR_H

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace zk::agent {

class CdrReader {
 public:
  // bytes begin where alignment counts from; reading begins at the offset.
  CdrReader(std::string_view bytes, bool littleEndian, std::size_t at = 0)
      : bytes_(bytes), at_(at), littleEndian_(littleEndian) {}

  // False once anything was read or skipped that is not there. Everything read
  // from then on is zero or empty.
  bool good() const { return good_; }
  bool littleEndian() const { return littleEndian_; }
  std::size_t at() const { return at_; }
  std::size_t remaining() const { return good_ ? bytes_.size() - at_ : 0; }

  void fail();
  void align(std::size_t size);
  std::string_view octets(std::size_t count);

  std::uint8_t octet() { return static_cast<std::uint8_t>(number(1)); }
  std::uint16_t uint16() { return static_cast<std::uint16_t>(number(2)); }
  std::uint32_t uint32() { return static_cast<std::uint32_t>(number(4)); }
  // Fails on anything but 0 and 1.
  bool boolean();
  // A length, and that many octets. Fails when there are more than most.
  std::string_view octetList(std::size_t most);
  // Without its final NUL, which must be there and be the only one. most counts
  // what is returned.
  std::string_view text(std::size_t most);

 private:
  std::uint64_t number(std::size_t size);

  std::string_view bytes_;
  std::size_t at_;
  bool littleEndian_;
  bool good_ = true;
};

}  // namespace zk::agent

#endif
