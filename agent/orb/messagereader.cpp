#include "agent/orb/messagereader.h"

#include <algorithm>

namespace zk::agent {

namespace {

constexpr std::size_t FLAGS_AT = 6;
constexpr std::size_t FRAGMENT_DATA_AT = 16;
constexpr unsigned char LITTLE_ENDIAN_FLAG = 1;
constexpr unsigned char MORE_FRAGMENTS_FLAG = 2;

std::uint32_t numberIn(const char* bytes, bool littleEndian) {
  std::uint32_t number = 0;
  for (unsigned i = 0; i < 4; ++i) {
    const unsigned at = littleEndian ? 3 - i : i;
    number = (number << 8U) | static_cast<unsigned char>(bytes[at]);
  }
  return number;
}

bool isLittleEndian(const std::string& message) {
  return (static_cast<unsigned char>(message[FLAGS_AT]) & LITTLE_ENDIAN_FLAG) != 0;
}

// Fragments joined to one message: the header says so.
void sealFragments(std::string& message) {
  message[FLAGS_AT] =
      static_cast<char>(static_cast<unsigned char>(message[FLAGS_AT]) & LITTLE_ENDIAN_FLAG);
  sealMessage(message, isLittleEndian(message));
}

}  // namespace

MessageReader::Step MessageReader::take(std::string_view& bytes) {
  while (!bytes.empty()) {
    if (filled_ < GIOP_HEADER_SIZE) {
      if (!takeHeader(bytes)) {
        return Step::BROKEN;
      }
      if (filled_ < GIOP_HEADER_SIZE) {
        return Step::MORE;
      }
    }
    const std::size_t rest = GIOP_HEADER_SIZE + header_.size - filled_;
    const std::string_view part = bytes.substr(0, rest);
    current_.append(part);
    filled_ += part.size();
    bytes.remove_prefix(part.size());
    if (part.size() == rest) {
      filled_ = 0;
      const Step step = endMessage();
      if (step != Step::MORE) {
        return step;
      }
    }
  }
  return Step::MORE;
}

// False when what has come is no header. Looks at each byte once it is there, so
// that a stranger to the protocol is not waited for.
bool MessageReader::takeHeader(std::string_view& bytes) {
  const std::string_view part = bytes.substr(0, GIOP_HEADER_SIZE - filled_);
  std::copy(part.begin(), part.end(), headerBytes_.begin() + static_cast<std::ptrdiff_t>(filled_));
  filled_ += part.size();
  bytes.remove_prefix(part.size());
  const std::size_t seen = std::min(filled_, GIOP_MAGIC.size());
  if (!std::equal(GIOP_MAGIC.begin(), GIOP_MAGIC.begin() + static_cast<std::ptrdiff_t>(seen),
                  headerBytes_.begin())) {
    return false;
  }
  return filled_ < GIOP_HEADER_SIZE || readHeader();
}

bool MessageReader::readHeader() {
  const auto flags = static_cast<unsigned char>(headerBytes_[FLAGS_AT]);
  const auto type = static_cast<unsigned char>(headerBytes_[7]);
  header_.minor = static_cast<unsigned char>(headerBytes_[5]);
  header_.littleEndian = (flags & LITTLE_ENDIAN_FLAG) != 0;
  header_.fragmented = (flags & MORE_FRAGMENTS_FLAG) != 0;
  header_.size = numberIn(&headerBytes_[GIOP_SIZE_AT], header_.littleEndian);
  if (headerBytes_[4] != 1 || header_.minor > 2 ||
      type > static_cast<unsigned char>(GiopType::FRAGMENT)) {
    return false;
  }
  header_.type = static_cast<GiopType>(type);
  current_.assign(headerBytes_.data(), GIOP_HEADER_SIZE);
  return GIOP_HEADER_SIZE + header_.size <= largest_;
}

MessageReader::Step MessageReader::endMessage() {
  switch (header_.type) {
    case GiopType::REQUEST:
    case GiopType::LOCATE_REQUEST:
      if (header_.fragmented) {
        return beginFragmented();
      }
      message_.swap(current_);
      return Step::MESSAGE;
    case GiopType::FRAGMENT:
      return addFragment();
    case GiopType::CANCEL_REQUEST:
      if (header_.size < 4) {
        return Step::BROKEN;
      }
      unfinished_.erase(numberAt(GIOP_HEADER_SIZE));
      return Step::MORE;
    case GiopType::CLOSE_CONNECTION:
    case GiopType::MESSAGE_ERROR:
      return Step::CLOSED;
    default:
      return Step::BROKEN;
  }
}

// Only version 1.2 says to which request a fragment belongs, and aligns all but
// the last to 8 bytes, so that they can be joined.
MessageReader::Step MessageReader::beginFragmented() {
  if (header_.minor != 2 || header_.size < 4 || current_.size() % 8 != 0 ||
      unfinished_.size() == MOST_UNFINISHED) {
    return Step::BROKEN;
  }
  const bool isNew = unfinished_.emplace(numberAt(GIOP_HEADER_SIZE), std::move(current_)).second;
  current_.clear();
  return isNew ? Step::MORE : Step::BROKEN;
}

MessageReader::Step MessageReader::addFragment() {
  if (header_.minor != 2 || header_.size < 4) {
    return Step::BROKEN;
  }
  const auto found = unfinished_.find(numberAt(GIOP_HEADER_SIZE));
  if (found == unfinished_.end()) {
    return Step::MORE;  // of a request that was cancelled meanwhile
  }
  std::string& whole = found->second;
  const std::size_t more = current_.size() - FRAGMENT_DATA_AT;
  if (header_.littleEndian != isLittleEndian(whole) || whole.size() + more > largest_ ||
      (header_.fragmented && more % 8 != 0)) {
    return Step::BROKEN;
  }
  whole.append(current_, FRAGMENT_DATA_AT);
  if (header_.fragmented) {
    return Step::MORE;
  }
  message_ = std::move(whole);
  unfinished_.erase(found);
  sealFragments(message_);
  return Step::MESSAGE;
}

std::uint32_t MessageReader::numberAt(std::size_t offset) const {
  return numberIn(&current_[offset], header_.littleEndian);
}

}  // namespace zk::agent
