#include "tests/agent/support/giopcaller.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstring>
#include <stdexcept>

namespace zk::test {

namespace {

constexpr std::size_t HEADER = 12;

// CDR in this machine's byte order, which is taken to be little-endian.
class Writer {
 public:
  Writer& align(std::size_t size) {
    bytes_.append((size - bytes_.size() % size) % size, '\0');
    return *this;
  }
  Writer& octet(char value) {
    bytes_ += value;
    return *this;
  }
  Writer& number(std::uint32_t value) {
    align(4);
    bytes_.append(reinterpret_cast<const char*>(&value), sizeof value);
    return *this;
  }
  Writer& octets(const std::string& value) {
    number(static_cast<std::uint32_t>(value.size()));
    return raw(value);
  }
  Writer& text(const std::string& value) { return octets(value + '\0'); }
  Writer& raw(const std::string& value) {
    bytes_ += value;
    return *this;
  }
  const std::string& bytes() const { return bytes_; }

 private:
  std::string bytes_;
};

class Reader {
 public:
  explicit Reader(std::string bytes) : bytes_(std::move(bytes)) {}

  void align(std::size_t size) { at_ += (size - at_ % size) % size; }
  std::uint32_t number() {
    align(4);
    std::uint32_t value = 0;
    std::memcpy(&value, raw(sizeof value).data(), sizeof value);
    return value;
  }
  std::string octets() { return raw(number()); }
  std::string text() {
    const std::string value = octets();
    return value.substr(0, value.find('\0'));
  }
  std::string raw(std::size_t size) {
    const std::string value = bytes_.substr(at_, size);
    at_ += size;
    return value.size() == size ? value : throw std::runtime_error("the message is cut short");
  }
  std::string rest() const { return at_ < bytes_.size() ? bytes_.substr(at_) : ""; }

 private:
  const std::string bytes_;
  std::size_t at_ = 0;
};

// Of a reference that starts here: the key in its first profile.
std::string keyOf(Reader reference) {
  reference.text();
  reference.number();
  reference.number();
  Reader profile(reference.octets());
  profile.raw(3);  // byte order and version
  profile.text();
  profile.align(2);
  profile.raw(2);
  return profile.octets();
}

// The encapsulation in a stringified reference.
std::string bytesOfIor(const std::string& ior) {
  std::string bytes;
  for (std::size_t i = 4; i + 1 < ior.size(); i += 2) {
    bytes += static_cast<char>(std::stoi(ior.substr(i, 2), nullptr, 16));
  }
  return bytes;
}

sockaddr_in addressOf(const std::string& host, unsigned short port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  inet_pton(AF_INET, host.c_str(), &address.sin_addr);
  return address;
}

int connectFrom(const std::string& from, unsigned short port) {
  const int made = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const sockaddr_in own = addressOf(from, 0);
  const sockaddr_in agent = addressOf("127.0.0.1", port);
  if (bind(made, reinterpret_cast<const sockaddr*>(&own), sizeof own) != 0 ||
      connect(made, reinterpret_cast<const sockaddr*>(&agent), sizeof agent) != 0) {
    const std::string reason = std::strerror(errno);
    close(made);
    throw std::runtime_error("no connection from " + from + ": " + reason);
  }
  return made;
}

}  // namespace

std::string GiopAnswer::text() const {
  switch (status) {
    case Status::DONE:
      return "done";
    case Status::CLOSED:
      return "closed";
    default: {
      const std::string name = exception.substr(0, exception.rfind(':'));
      return name.substr(name.rfind('/') + 1);
    }
  }
}

std::string keyIn(const std::string& ior) {
  Reader reader(bytesOfIor(ior));
  reader.raw(4);
  return keyOf(reader);
}

std::string keyInBody(const std::string& body) { return keyOf(Reader(body)); }

GiopCaller::GiopCaller(unsigned short port, const std::string& from)
    : socket_(connectFrom(from, port)) {}

GiopCaller::~GiopCaller() { close(socket_); }

GiopAnswer GiopCaller::call(const std::string& key, const std::string& operation,
                            const std::string& parameters) {
  Writer message;
  message.raw(std::string("GIOP\1\2\1\0", 8)).number(0).number(++lastId_);
  message.octet(3).raw(std::string(3, '\0')).number(0);  // an answer; target by its key
  message.octets(key).text(operation).number(0);
  if (!parameters.empty()) {
    message.align(8).raw(parameters);
  }
  std::string bytes = message.bytes();
  const auto size = static_cast<std::uint32_t>(bytes.size() - HEADER);
  std::memcpy(&bytes[8], &size, sizeof size);
  if (send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL) != ssize_t(bytes.size())) {
    return {};
  }
  return readReply();
}

GiopAnswer GiopCaller::logIn(const std::string& user, const std::string& password,
                             const std::string& ior) {
  Writer parameters;
  parameters.text(user).text(password).align(4).raw(bytesOfIor(ior).substr(4));
  return call("EmsSessionFactory", "getEmsSession", parameters.bytes());
}

std::string GiopCaller::read(std::size_t size) const {
  std::string bytes(size, '\0');
  return recv(socket_, bytes.data(), size, MSG_WAITALL) == ssize_t(size) ? bytes : "";
}

GiopAnswer GiopCaller::readReply() const {
  const std::string header = read(HEADER);
  if (header.empty()) {
    return {};
  }
  std::uint32_t size = 0;
  std::memcpy(&size, &header[8], sizeof size);
  Reader message(header + read(size));
  message.raw(HEADER);
  message.number();
  GiopAnswer reply;
  reply.status = static_cast<GiopAnswer::Status>(message.number());
  for (std::uint32_t contexts = message.number(); contexts != 0; --contexts) {
    message.number();
    message.octets();
  }
  message.align(8);
  reply.body = message.rest();
  if (reply.status != GiopAnswer::Status::DONE) {
    reply.exception = Reader(reply.body).text();
  }
  return reply;
}

}  // namespace zk::test
