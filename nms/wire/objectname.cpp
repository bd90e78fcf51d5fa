#include "nms/wire/objectname.h"

#include "nms/wire/failure.h"
#include "nms/wire/lists.h"
#include "nms/wire/text.h"

namespace zk::nms {
namespace {

class Reader {
 public:
  explicit Reader(const std::string& text) : text_(text) {}

  Pairs all() {
    Pairs pairs;
    do {
      pairs.push_back(pair());
    } while (take(','));
    return pairs;
  }

 private:
  [[noreturn]] void fail(const std::string& why) const {
    throw UsageError("not a name: '" + printable(asUtf8(text_)) + "': " + why);
  }

  bool take(char expected) {
    if (at_ == text_.size() || text_[at_] != expected) {
      return false;
    }
    ++at_;
    return true;
  }

  std::pair<std::string, std::string> pair() {
    std::string name = until(",=");
    if (!take('=')) {
      fail("each pair is NAME=VALUE");
    }
    if (name.empty()) {
      fail("a pair has no name");
    }
    return {std::move(name), until(",")};
  }

  // Up to one of the ends, which stays unread; backslashes resolved.
  std::string until(const char* ends) {
    const std::string stops(ends);
    std::string result;
    while (at_ < text_.size() && stops.find(text_[at_]) == std::string::npos) {
      result += text_[at_] == '\\' ? escaped() : text_[at_++];
    }
    return result;
  }

  char escaped() {
    const std::size_t next = at_ + 1;
    if (next == text_.size() || std::string("\\,=").find(text_[next]) == std::string::npos) {
      fail("a backslash stands only before a backslash, a comma or an equals sign");
    }
    at_ += 2;
    return text_[next];
  }

  const std::string& text_;
  std::size_t at_ = 0;
};

std::string escape(const std::string& text, const std::string& special) {
  std::string result;
  for (const char character : text) {
    if (special.find(character) != std::string::npos) {
      result += '\\';
    }
    result += character;
  }
  return result;
}

}  // namespace

Pairs parsePairs(const std::string& text) { return Reader(text).all(); }

std::string formatPairs(const Pairs& pairs) {
  std::string result;
  for (const auto& [name, value] : pairs) {
    result += result.empty() ? "" : ",";
    result += escape(name, "\\,=") + "=" + escape(value, "\\,");
  }
  return result;
}

Pairs toPairs(const globaldefs::NVSList_T& name) {
  Pairs pairs;
  for (CORBA::ULong i = 0; i < name.length(); ++i) {
    pairs.emplace_back(name[i].name.in(), name[i].value.in());
  }
  return pairs;
}

globaldefs::NVSList_T toName(const Pairs& pairs) {
  return listOf<globaldefs::NVSList_T>(pairs, [](auto& entry, const auto& pair) {
    entry.name = pair.first.c_str();
    entry.value = pair.second.c_str();
  });
}

std::string formatName(const globaldefs::NVSList_T& name) { return formatPairs(toPairs(name)); }

bool isFullName(const std::string& argument) {
  return argument.find('=') != std::string::npos && argument.front() != '/';
}

void checkArgument(const std::string& argument) {
  if (argument.empty()) {
    throw UsageError("an empty text names nothing");
  }
  if (isFullName(argument)) {
    parsePairs(argument);
  }
}

}  // namespace zk::nms
