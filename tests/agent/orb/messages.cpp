#include "tests/agent/orb/messages.h"

#include <ostream>

namespace zk::test {

namespace {

constexpr std::uint32_t ID = 0x01020304;
constexpr std::size_t SIZE_AT = 8;
constexpr std::size_t HEADER = 12;

void writeContexts(CdrWriter& out, const Sent& sent) {
  out.uint32(sent.contexts);
  for (std::uint32_t i = 0; i < sent.contexts; ++i) {
    out.uint32(sent.contextId + i).octets(sent.context);
  }
}

void writeOldHeader(CdrWriter& out, const Sent& sent) {
  writeContexts(out, sent);
  out.uint32(ID).octet(sent.answered).octets(sent.key).text(sent.operation);
  out.octets(sent.principal);
}

void writeNewHeader(CdrWriter& out, const Sent& sent) {
  out.uint32(ID).octet(sent.answered != 0 ? 3 : 0).raw(std::string(3, '\0'));
  out.uint16(sent.addressing).octets(sent.key).text(sent.operation);
  writeContexts(out, sent);
  if (sent.parameters) {
    out.align(8);
  }
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const Form& form) {
  return out << "GIOP 1." << form.minor << (form.little ? " little" : " big");
}

const std::vector<Form>& forms() {
  static const std::vector<Form> all = {{0, false}, {0, true},  {1, false},
                                        {1, true},  {2, false}, {2, true}};
  return all;
}

CdrWriter CdrWriter::encapsulation(bool little) {
  CdrWriter writer(little);
  writer.octet(little ? 1 : 0);
  return writer;
}

CdrWriter& CdrWriter::align(std::size_t size) {
  bytes_.append((size - bytes_.size() % size) % size, '\0');
  return *this;
}

CdrWriter& CdrWriter::number(std::uint64_t value, std::size_t size) {
  align(size);
  for (std::size_t i = 0; i < size; ++i) {
    bytes_ += static_cast<char>(value >> 8 * (little_ ? i : size - 1 - i));
  }
  return *this;
}

CdrWriter& CdrWriter::raw(const std::string& bytes) {
  bytes_ += bytes;
  return *this;
}

CdrWriter& CdrWriter::octets(const std::string& bytes) {
  return uint32(static_cast<std::uint32_t>(bytes.size())).raw(bytes);
}

CdrWriter& CdrWriter::text(const std::string& characters) { return octets(characters + '\0'); }

std::string messageOf(const Form& form, const Sent& sent) {
  CdrWriter out(form.little);
  out.raw(sent.magic).octet(sent.major).octet(static_cast<std::uint8_t>(form.minor));
  out.octet(static_cast<std::uint8_t>(sent.flags >= 0 ? sent.flags : int{form.little}));
  out.octet(sent.type).uint32(0);
  if (form.minor < 2) {
    writeOldHeader(out, sent);
  } else {
    writeNewHeader(out, sent);
  }
  if (sent.parameters) {
    sent.parameters(out);
  }
  return resized(out.bytes());
}

std::string messageOf(const Form& form, const std::string& operation,
                      const Parameters& parameters) {
  Sent sent;
  sent.operation = operation;
  sent.parameters = parameters;
  return messageOf(form, sent);
}

std::string resized(std::string message) {
  CdrWriter size((message[6] & 1) != 0);
  size.uint32(static_cast<std::uint32_t>(message.size() - HEADER));
  return message.replace(SIZE_AT, 4, size.bytes());
}

}  // namespace zk::test
