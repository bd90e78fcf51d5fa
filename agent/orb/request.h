// The headers of GIOP requests, read without the ORB and before it sees them.
// Pure: bytes in, values out. No allocation, no exceptions; any thread may call.
#ifndef ZK_AGENT_ORB_REQUEST_H
#define ZK_AGENT_ORB_REQUEST_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace zk::agent {

// key and operation refer to the message.
struct Request {
  unsigned minor = 0;  // of GIOP 1.minor
  bool littleEndian = false;
  std::uint32_t id = 0;
  bool answered = false;  // the client waits for a reply
  std::string_view key;
  std::string_view operation;
  std::size_t parametersAt = 0;  // in the message; its size when there are none
};

// message: one whole GIOP 1.0, 1.1 or 1.2 message, from its 12-byte header to its
// end, in one piece. nullopt unless it is a Request with a well-formed header: at
// most 32 service contexts of 4 KiB each, a key of at most 255 bytes given as such
// (not by a profile or a reference), an operation of 1 to 128 bytes, a principal
// of at most 255.
std::optional<Request> readRequest(std::string_view message);

// The same for a LocateRequest. It has no operation and no parameters, and is
// always answered.
std::optional<Request> readLocateRequest(std::string_view message);

}  // namespace zk::agent

#endif
