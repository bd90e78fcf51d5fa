// GIOP requests as bytes, made without the ORB.
#ifndef ZK_TESTS_AGENT_ORB_MESSAGES_H
#define ZK_TESTS_AGENT_ORB_MESSAGES_H

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

namespace zk::test {

// GIOP 1.minor in one byte order.
struct Form {
  unsigned minor;
  bool little;
};
std::ostream& operator<<(std::ostream& out, const Form& form);

// All six.
const std::vector<Form>& forms();

// Writes CDR. Alignment counts from the first byte.
class CdrWriter {
 public:
  explicit CdrWriter(bool little) : little_(little) {}
  // Begun with its byte order.
  static CdrWriter encapsulation(bool little);

  bool little() const { return little_; }
  const std::string& bytes() const { return bytes_; }

  CdrWriter& align(std::size_t size);
  CdrWriter& number(std::uint64_t value, std::size_t size);
  CdrWriter& octet(std::uint8_t value) { return number(value, 1); }
  CdrWriter& uint16(std::uint16_t value) { return number(value, 2); }
  CdrWriter& uint32(std::uint32_t value) { return number(value, 4); }
  CdrWriter& raw(const std::string& bytes);
  CdrWriter& octets(const std::string& bytes);  // after their number
  CdrWriter& text(const std::string& characters);

 private:
  bool little_;
  std::string bytes_;
};

using Parameters = std::function<void(CdrWriter&)>;

// What a client sends; changed by tests before it is written.
struct Sent {
  std::string magic = "GIOP";
  std::uint8_t major = 1;
  int flags = -1;  // the byte order's
  std::uint8_t type = 0;
  std::uint32_t contexts = 1;
  std::uint32_t contextId = 1;
  std::string context = std::string(12, '\1');
  std::uint8_t answered = 1;
  std::uint16_t addressing = 0;
  std::string key = "some key";
  std::string operation = "getEMS";
  std::string principal = "nobody";
  Parameters parameters;
};

std::string messageOf(const Form& form, const Sent& sent);
std::string messageOf(const Form& form, const std::string& operation,
                      const Parameters& parameters = {});

// The message with the size in its header set right.
std::string resized(std::string message);

}  // namespace zk::test

#endif
