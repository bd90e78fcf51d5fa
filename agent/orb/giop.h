// What every GIOP message begins with.
#ifndef ZK_AGENT_ORB_GIOP_H
#define ZK_AGENT_ORB_GIOP_H

#include <cstddef>
#include <string>
#include <string_view>

namespace zk::agent {

inline constexpr std::string_view GIOP_MAGIC = "GIOP";
inline constexpr std::size_t GIOP_HEADER_SIZE = 12;
inline constexpr std::size_t GIOP_SIZE_AT = 8;

enum class GiopType : unsigned char {
  REQUEST = 0,
  REPLY = 1,
  CANCEL_REQUEST = 2,
  LOCATE_REQUEST = 3,
  LOCATE_REPLY = 4,
  CLOSE_CONNECTION = 5,
  MESSAGE_ERROR = 6,
  FRAGMENT = 7
};

// Writes the size that the message has into its header.
inline void sealMessage(std::string& message, bool littleEndian) {
  const std::size_t size = message.size() - GIOP_HEADER_SIZE;
  for (std::size_t i = 0; i < 4; ++i) {
    const std::size_t at = GIOP_SIZE_AT + (littleEndian ? i : 3 - i);
    message[at] = static_cast<char>(static_cast<unsigned char>(size >> (8 * i)));
  }
}

}  // namespace zk::agent

#endif
