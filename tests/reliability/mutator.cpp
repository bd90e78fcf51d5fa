#include "tests/reliability/mutator.h"

#include <algorithm>
#include <iterator>

#include "tests/agent/orb/messages.h"
#include "tests/reliability/requests.h"

namespace zk::test {

namespace {

constexpr std::size_t HEADER = 12;
constexpr std::size_t MOST = 62000;  // what strangers may send
constexpr std::uint8_t CANCEL_REQUEST = 2;
constexpr std::uint8_t FRAGMENT = 7;
constexpr std::size_t MINOR_AT = 5;
constexpr std::size_t FLAGS_AT = 6;
constexpr std::size_t TYPE_AT = 7;

bool isLittle(const std::string& message) { return (message[FLAGS_AT] & 1) != 0; }

std::string messageLike(const std::string& message, std::uint8_t type, bool isMore,
                        const std::string& body) {
  std::string made = message.substr(0, HEADER);
  made[FLAGS_AT] = static_cast<char>((made[FLAGS_AT] & 1) | (isMore ? 2 : 0));
  made[TYPE_AT] = static_cast<char>(type);
  return resized(made + body);
}

}  // namespace

std::string Mutator::mutated(std::string message, const std::string& other) {
  static constexpr void (Mutator::*CHANGES[])(std::string&) = {
      &Mutator::flipBits,  &Mutator::cut,           &Mutator::setLength, &Mutator::setKind,
      &Mutator::setHeader, &Mutator::insertOrErase, &Mutator::repeat};
  const std::size_t changes = 1 + chance_.below(3);
  for (std::size_t i = 0; i < changes && message.size() > HEADER; ++i) {
    const std::size_t chosen = chance_.below(std::size(CHANGES) + 1);
    if (chosen == std::size(CHANGES)) {
      splice(message, other);
    } else {
      (this->*CHANGES[chosen])(message);
    }
  }
  message.resize(std::min(message.size(), MOST));
  // One whose size is wrong is all that the connection sees before its end.
  return message.size() < HEADER || chance_.oneIn(16) ? message : resized(message);
}

std::string Mutator::fragmented(const std::string& message, const std::string& other) {
  const bool isNew = message[MINOR_AT] >= 2;
  const std::string id = isNew ? message.substr(HEADER, 4) : "";
  std::size_t at = std::min(message.size(), HEADER + 4 + chance_.below(32));
  std::string all = messageLike(message, static_cast<std::uint8_t>(message[TYPE_AT]), true,
                                message.substr(HEADER, at - HEADER));
  while (at < message.size()) {
    const std::size_t size = std::min(message.size() - at, 1 + chance_.below(200));
    std::string piece = message.substr(at, size);
    if (chance_.oneIn(12)) {
      flipBits(piece);
    }
    at += size;
    if (!chance_.oneIn(12)) {
      all += messageLike(message, FRAGMENT, at < message.size(), id + piece);
    }
    if (chance_.oneIn(12)) {
      all += chance_.oneIn(2) ? other : cancelOf(message);
    }
  }
  return all;
}

std::string Mutator::cancelled(const std::string& message) {
  const std::string cancel = cancelOf(message);
  return chance_.oneIn(3) ? cancel + message : message + cancel;
}

void Mutator::flipBits(std::string& message) {
  for (std::size_t left = 1 + chance_.below(8); left != 0; --left) {
    char& byte = message[chance_.below(message.size())];
    byte = static_cast<char>(byte ^ (1 << chance_.below(8)));
  }
}

void Mutator::cut(std::string& message) {
  message.resize(HEADER + chance_.below(message.size() - HEADER));
}

void Mutator::splice(std::string& message, const std::string& other) {
  const std::size_t from = chance_.below(other.size());
  message = message.substr(0, HEADER + chance_.below(message.size() - HEADER)) +
            other.substr(from, 1 + chance_.below(other.size() - from));
}

void Mutator::setLength(std::string& message) {
  const auto rest = static_cast<std::uint32_t>(message.size());
  const std::uint32_t values[] = {
      0,     1,    2,         255,      1024,       1025,       4096,       65535,     65536,
      65537, rest, rest - 12, rest + 1, 0x7fffffff, 0x80000000, 0xfffffffe, 0xffffffff};
  putNumber(message, values[chance_.below(std::size(values))]);
}

// Of a TypeCode: one of its kinds, one that there is not, or a jump back.
void Mutator::setKind(std::string& message) {
  if (chance_.oneIn(4)) {
    const auto back = static_cast<std::uint32_t>(-std::int64_t(4 * chance_.below(64)));
    putNumber(message, chance_.oneIn(2) ? 0xffffffffU : back);
  } else {
    putNumber(message, static_cast<std::uint32_t>(chance_.below(40)));
  }
}

void Mutator::setHeader(std::string& message) {
  message[chance_.below(HEADER)] = static_cast<char>(chance_.below(chance_.oneIn(2) ? 8 : 256));
}

void Mutator::insertOrErase(std::string& message) {
  const std::size_t at = HEADER + chance_.below(message.size() - HEADER);
  const std::size_t count = 1 + chance_.below(16);
  if (chance_.oneIn(2)) {
    message.insert(at, std::string(count, static_cast<char>(chance_.any())));
  } else {
    message.erase(at, count);
  }
}

void Mutator::repeat(std::string& message) {
  const std::size_t at = HEADER + chance_.below(message.size() - HEADER);
  const std::string piece = message.substr(at, 4 + chance_.below(60));
  const std::size_t times = chance_.oneIn(8) ? 400 : 4;
  for (std::size_t i = 0; i < times; ++i) {
    message.insert(at, piece);
  }
}

// In the message's byte order, at a place that numbers may have.
void Mutator::putNumber(std::string& message, std::uint32_t value) {
  const std::size_t places = (message.size() - HEADER) / 4;
  if (places != 0) {
    const std::string bytes = CdrWriter(isLittle(message)).uint32(value).bytes();
    message.replace(HEADER + 4 * chance_.below(places), 4, bytes);
  }
}

std::string Mutator::cancelOf(const std::string& message) {
  const auto id = chance_.oneIn(4) ? static_cast<std::uint32_t>(chance_.any()) : REQUEST_ID;
  return messageLike(message, CANCEL_REQUEST, false,
                     CdrWriter(isLittle(message)).uint32(id).bytes());
}

}  // namespace zk::test
