#include "agent/orb/request.h"

#include "agent/orb/cdr.h"
#include "agent/orb/giop.h"

namespace zk::agent {

namespace {

constexpr std::uint16_t KEY_ADDRESS = 0;
constexpr std::uint32_t CODE_SETS = 1;
constexpr std::uint8_t WANTS_REPLY = 1;

constexpr std::uint32_t MOST_CONTEXTS = 32;
constexpr std::size_t MOST_CONTEXT = 4096;
constexpr std::size_t MOST_KEY = 255;
constexpr std::size_t MOST_OPERATION = 128;
constexpr std::size_t MOST_PRINCIPAL = 255;
// A byte order, padding, and two numbers: the ORB reads all of it.
constexpr std::size_t CODE_SETS_SIZE = 12;

// The byte order, when the message's own header is that of a whole message of the
// kind.
bool readHeader(std::string_view message, GiopType type, Request& request) {
  if (message.size() < GIOP_HEADER_SIZE || message.substr(0, GIOP_MAGIC.size()) != GIOP_MAGIC ||
      message[4] != 1 || message[5] < 0 || message[5] > 2 ||
      message[7] != static_cast<char>(type)) {
    return false;
  }
  // The flag for a fragment to follow must be off.
  if (message[6] != 0 && message[6] != 1) {
    return false;
  }
  request.minor = static_cast<unsigned char>(message[5]);
  request.littleEndian = message[6] == 1;
  CdrReader size(message, request.littleEndian, GIOP_SIZE_AT);
  return size.uint32() == message.size() - GIOP_HEADER_SIZE;
}

void readContexts(CdrReader& in) {
  const std::uint32_t count = in.uint32();
  if (count > MOST_CONTEXTS) {
    in.fail();
  }
  for (std::uint32_t i = 0; i < count && in.good(); ++i) {
    const std::uint32_t id = in.uint32();
    const std::string_view data = in.octetList(MOST_CONTEXT);
    if (id == CODE_SETS && data.size() < CODE_SETS_SIZE) {
      in.fail();
    }
  }
}

std::string_view readTarget(CdrReader& in) {
  if (in.uint16() != KEY_ADDRESS) {
    in.fail();
  }
  return in.octetList(MOST_KEY);
}

std::string_view readOperation(CdrReader& in) {
  const std::string_view operation = in.text(MOST_OPERATION);
  if (operation.empty()) {
    in.fail();
  }
  return operation;
}

void readOldHeader(CdrReader& in, Request& request) {
  readContexts(in);
  request.id = in.uint32();
  request.answered = in.boolean();
  request.key = in.octetList(MOST_KEY);  // reserved octets of 1.1 are padding here
  request.operation = readOperation(in);
  in.octetList(MOST_PRINCIPAL);
}

void readNewHeader(CdrReader& in, Request& request) {
  request.id = in.uint32();
  request.answered = (in.octet() & WANTS_REPLY) != 0;
  in.octets(3);  // reserved
  request.key = readTarget(in);
  request.operation = readOperation(in);
  readContexts(in);
  // Fewer bytes than the padding hold no parameters, and are cut off as such.
  const std::size_t padding = (8 - in.at() % 8) % 8;
  if (in.remaining() >= padding) {
    in.align(8);
  }
}

}  // namespace

std::optional<Request> readRequest(std::string_view message) {
  Request request;
  if (!readHeader(message, GiopType::REQUEST, request)) {
    return std::nullopt;
  }
  CdrReader in(message, request.littleEndian, GIOP_HEADER_SIZE);
  if (request.minor < 2) {
    readOldHeader(in, request);
  } else {
    readNewHeader(in, request);
  }
  if (!in.good()) {
    return std::nullopt;
  }
  request.parametersAt = in.at();
  return request;
}

std::optional<Request> readLocateRequest(std::string_view message) {
  Request request;
  if (!readHeader(message, GiopType::LOCATE_REQUEST, request)) {
    return std::nullopt;
  }
  CdrReader in(message, request.littleEndian, GIOP_HEADER_SIZE);
  request.id = in.uint32();
  request.answered = true;
  request.key = request.minor < 2 ? in.octetList(MOST_KEY) : readTarget(in);
  request.parametersAt = message.size();
  return in.good() ? std::optional(request) : std::nullopt;
}

}  // namespace zk::agent
