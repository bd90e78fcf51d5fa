// A client that speaks GIOP byte by byte, so that it can say what no ORB says.
#ifndef ZK_TESTS_AGENT_SUPPORT_RAWCLIENT_H
#define ZK_TESTS_AGENT_SUPPORT_RAWCLIENT_H

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdint>
#include <optional>
#include <string>

#include "agent/orb/cdr.h"

namespace zk::test {

enum : unsigned char {
  REQUEST = 0,
  REPLY = 1,
  CANCEL = 2,
  LOCATE = 3,
  LOCATED = 4,
  ERROR = 6,
  FRAGMENT = 7
};

// Little-endian CDR, aligned from the begin of the text.
class CdrText {
 public:
  CdrText& octet(unsigned value) {
    text_ += static_cast<char>(value);
    return *this;
  }
  CdrText& number(std::uint32_t value) {
    align(4);
    for (unsigned i = 0; i < 4; ++i) {
      octet((value >> (8 * i)) & 0xffU);
    }
    return *this;
  }
  CdrText& bytes(const std::string& value) {
    number(static_cast<std::uint32_t>(value.size()));
    text_ += value;
    return *this;
  }
  CdrText& string(const std::string& value) { return bytes(value + '\0'); }
  CdrText& align(std::size_t size) {
    text_.append((size - text_.size() % size) % size, '\0');
    return *this;
  }
  const std::string& text() const { return text_; }

 private:
  std::string text_;
};

inline std::string giop(unsigned type, const std::string& body, unsigned flags = 1,
                        unsigned minor = 2) {
  CdrText header;
  header.octet('G').octet('I').octet('O').octet('P').octet(1).octet(minor).octet(flags).octet(type);
  header.number(static_cast<std::uint32_t>(body.size()));
  return header.text() + body;
}

// What follows the header of a GIOP 1.2 request. The parameters are aligned to 8.
inline std::string requestBody(std::uint32_t id, const std::string& key,
                               const std::string& operation, const std::string& parameters = "") {
  CdrText body;
  body.number(id).octet(3).octet(0).octet(0).octet(0);
  body.octet(0).bytes(key).string(operation).number(0);
  if (parameters.empty()) {
    return body.text();
  }
  const std::size_t inMessage = 12 + body.text().size();
  return body.text() + std::string((8 - inMessage % 8) % 8, '\0') + parameters;
}

inline std::string request(std::uint32_t id, const std::string& key, const std::string& operation,
                           const std::string& parameters = "") {
  return giop(REQUEST, requestBody(id, key, operation, parameters));
}

inline std::string cancel(std::uint32_t id) { return giop(CANCEL, CdrText().number(id).text()); }

inline std::string locate(std::uint32_t id, const std::string& key) {
  return giop(LOCATE, CdrText().number(id).octet(0).bytes(key).text());
}

struct RawReply {
  unsigned type = 0;
  std::uint32_t id = 0;
  std::uint32_t status = 0;
  std::string exception;  // of a Reply with status 1 or 2
};

// In the sender's byte order, which is this machine's.
inline RawReply readReply(const std::string& message) {
  agent::CdrReader reader(message, true, 12);
  RawReply reply;
  reply.type = static_cast<unsigned char>(message.at(7));
  reply.id = reader.uint32();
  reply.status = reader.uint32();
  if (reply.type == REPLY && (reply.status == 1 || reply.status == 2)) {
    for (std::uint32_t left = reader.uint32(); left != 0 && reader.good(); --left) {
      reader.uint32();
      reader.octetList(message.size());
    }
    reader.align(8);
    reply.exception = std::string(reader.text(message.size()));
  }
  return reply;
}

// The key in a stringified reference.
inline std::string keyOf(const std::string& reference) {
  std::string bytes;
  for (std::size_t at = 4; at + 1 < reference.size(); at += 2) {
    bytes += static_cast<char>(std::stoi(reference.substr(at, 2), nullptr, 16));
  }
  agent::CdrReader reader(bytes, bytes.at(0) == 1, 1);
  reader.octetList(bytes.size());
  reader.uint32();
  reader.uint32();
  const std::string_view profile = reader.octetList(bytes.size());
  agent::CdrReader inside(profile, profile.at(0) == 1, 3);
  inside.octetList(profile.size());
  inside.uint16();
  return std::string(inside.octetList(profile.size()));
}

class RawClient {
 public:
  explicit RawClient(unsigned short port, const char* from = "127.0.0.1") {
    sockaddr_in own{};
    own.sin_family = AF_INET;
    inet_pton(AF_INET, from, &own.sin_addr);
    EXPECT_EQ(bind(socket_, reinterpret_cast<sockaddr*>(&own), sizeof own), 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    inet_pton(AF_INET, "127.0.0.1", &address.sin_addr);
    connected_ = connect(socket_, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
  }
  ~RawClient() { close(socket_); }
  RawClient(const RawClient&) = delete;
  RawClient& operator=(const RawClient&) = delete;

  bool isConnected() const { return connected_; }

  // As far as the other end takes it.
  RawClient& send(const std::string& bytes) {
    std::size_t sent = 0;
    while (sent < bytes.size()) {
      const ssize_t count = ::send(socket_, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
      if (count <= 0) {
        break;
      }
      sent += static_cast<std::size_t>(count);
    }
    return *this;
  }

  // False when the other end takes nothing for so long.
  bool sendIfTaken(const std::string& bytes, int milliseconds) {
    pollfd writable{socket_, POLLOUT, 0};
    if (poll(&writable, 1, milliseconds) <= 0) {
      return false;
    }
    return ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT) > 0;
  }

  // The next whole message; none when the connection ends or nothing comes in time.
  std::optional<std::string> receive(int milliseconds = 20000) {
    std::string message;
    std::size_t wanted = 12;
    while (message.size() < wanted) {
      pollfd readable{socket_, POLLIN, 0};
      char buffer[4096];
      if (poll(&readable, 1, milliseconds) <= 0) {
        return std::nullopt;
      }
      const ssize_t count =
          recv(socket_, buffer, std::min(sizeof buffer, wanted - message.size()), 0);
      if (count <= 0) {
        closed_ = true;
        return std::nullopt;
      }
      message.append(buffer, static_cast<std::size_t>(count));
      if (message.size() == 12) {
        agent::CdrReader size(message, true, 8);
        wanted += size.uint32();
      }
    }
    return message;
  }

  std::optional<RawReply> reply() {
    const auto message = receive();
    return message ? std::optional<RawReply>(readReply(*message)) : std::nullopt;
  }

  // Whether the other end hangs up in time; what it says before is left out.
  bool isHungUp(int milliseconds = 20000) {
    while (receive(milliseconds)) {
    }
    return closed_;
  }

 private:
  const int socket_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  bool connected_ = false;
  bool closed_ = false;
};

}  // namespace zk::test

#endif
