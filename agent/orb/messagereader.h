// Whole GIOP messages out of a client's bytes: framing, versions, sizes, and
// fragments put together again, before the ORB sees any of it. Knows no ORB and
// no socket. For one thread at a time.
#ifndef ZK_AGENT_ORB_MESSAGEREADER_H
#define ZK_AGENT_ORB_MESSAGEREADER_H

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "agent/orb/giop.h"

namespace zk::agent {

class MessageReader {
 public:
  enum class Step {
    MORE,     // nothing whole yet
    MESSAGE,  // message() is a Request or a LocateRequest
    CLOSED,   // the client ends the connection in order
    BROKEN    // not GIOP, or not within the limits: nothing further can be read
  };

  static constexpr std::size_t MOST_UNFINISHED = 4;

  // A message, its fragments together, may have this many bytes.
  explicit MessageReader(std::size_t largest) : largest_(largest) {}

  void allow(std::size_t largest) { largest_ = largest; }

  // Takes bytes up to the end of the first message among them, and removes those
  // from the view. After MESSAGE the next call begins anew. A CancelRequest is
  // left out: whoever sent it does not wait for the answer any more, which is
  // sent all the same.
  Step take(std::string_view& bytes);

  // As it came, in one piece: its size is in its header, which tells of no
  // fragments. Valid until the next call of take().
  const std::string& message() const { return message_; }

  // Whether a message has begun whose end is still to come.
  bool isUnfinished() const { return filled_ != 0 || !unfinished_.empty(); }

 private:
  struct Header {
    unsigned char minor;
    bool littleEndian;
    bool fragmented;
    GiopType type;
    std::uint32_t size;
  };

  bool takeHeader(std::string_view& bytes);
  bool readHeader();
  Step endMessage();
  Step beginFragmented();
  Step addFragment();
  std::uint32_t numberAt(std::size_t offset) const;

  std::size_t largest_;
  std::array<char, GIOP_HEADER_SIZE> headerBytes_{};
  std::size_t filled_ = 0;  // of the header and the body of the message being read
  Header header_{};
  std::string current_;  // as far as it has come
  std::string message_;
  std::map<std::uint32_t, std::string> unfinished_;  // by request id
};

}  // namespace zk::agent

#endif
