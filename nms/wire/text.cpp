#include "nms/wire/text.h"

#include <locale.h>
#include <time.h>
#include <wchar.h>

#include <cstdio>
#include <regex>
#include <stdexcept>
#include <vector>

#include "nms/wire/failure.h"
#include "nms/wire/lists.h"

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

// Makes the calling thread's character functions speak UTF-8, whatever the
// user's locale is, for its lifetime.
class InUtf8 {
 public:
  InUtf8() : before_(uselocale(utf8())) {}
  ~InUtf8() { uselocale(before_); }
  InUtf8(const InUtf8&) = delete;
  InUtf8& operator=(const InUtf8&) = delete;

 private:
  static locale_t utf8() {
    static const locale_t made = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    if (made == nullptr) {
      throw std::runtime_error("this system has no C.UTF-8 locale");
    }
    return made;
  }

  locale_t before_;
};

struct Character {
  wchar_t code;
  std::string bytes;
};

// False when the text is not UTF-8; characters then holds what came before.
bool decode(const std::string& text, std::vector<Character>& characters) {
  const InUtf8 guard;
  mbstate_t state{};
  std::size_t at = 0;
  while (at < text.size()) {
    wchar_t code = 0;
    const std::size_t size = mbrtowc(&code, text.data() + at, text.size() - at, &state);
    if (size > text.size()) {  // both error values are the largest there are
      return false;
    }
    const std::size_t used = size == 0 ? 1 : size;
    characters.push_back({code, text.substr(at, used)});
    at += used;
  }
  return true;
}

std::string fromLatin1(const std::string& text) {
  std::string result;
  for (const char byte : text) {
    const auto code = static_cast<unsigned char>(byte);
    if (code < 0x80) {
      result += byte;
    } else {
      result += static_cast<char>(0xC0 | (code >> 6));
      result += static_cast<char>(0x80 | (code & 0x3F));
    }
  }
  return result;
}

std::string escaped(wchar_t code) {
  switch (code) {
    case L'\n':
      return "\\n";
    case L'\r':
      return "\\r";
    case L'\t':
      return "\\t";
    default:
      break;
  }
  char text[16];
  std::snprintf(text, sizeof text, "\\x%02X", static_cast<unsigned>(code));
  return text;
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

std::string asUtf8(const std::string& text) {
  std::vector<Character> characters;
  return decode(text, characters) ? text : fromLatin1(text);
}

std::string printable(const std::string& text) {
  std::vector<Character> characters;
  decode(text, characters);
  const InUtf8 guard;
  std::string result;
  for (const Character& character : characters) {
    result += wcwidth(character.code) < 0 || character.code == 0 ? escaped(character.code)
                                                                 : character.bytes;
  }
  return result;
}

std::size_t displayWidth(const std::string& text) {
  std::vector<Character> characters;
  decode(text, characters);
  const InUtf8 guard;
  std::size_t result = 0;
  for (const Character& character : characters) {
    const int width = wcwidth(character.code);
    result += width > 0 ? static_cast<std::size_t>(width) : 0;
  }
  return result;
}

std::string timeText(Clock::time_point time) {
  const auto sinceEpoch = time.time_since_epoch();
  const auto seconds = std::chrono::floor<std::chrono::seconds>(sinceEpoch);
  const auto rest = std::chrono::duration_cast<std::chrono::milliseconds>(sinceEpoch - seconds);
  const time_t whole = static_cast<time_t>(seconds.count());
  tm parts{};
  gmtime_r(&whole, &parts);
  char text[32];
  const std::size_t length = strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", &parts);
  std::snprintf(text + length, sizeof text - length, ".%03dZ", static_cast<int>(rest.count()));
  return text;
}

std::string isoTime(const std::string& sent) {
  static const std::regex form(
      "([0-9]{4})([0-9]{2})([0-9]{2})([0-9]{2})([0-9]{2})([0-9]{2})(\\.[0-9]+)?"
      "(Z|[+-][0-9]{4})?");
  std::smatch part;
  if (!std::regex_match(sent, part, form)) {
    return sent;
  }
  std::string zone = part[8];
  if (zone.size() == 5) {
    zone.insert(3, ":");
  }
  return part.str(1) + "-" + part.str(2) + "-" + part.str(3) + "T" + part.str(4) + ":" +
         part.str(5) + ":" + part.str(6) + part.str(7) + zone;
}

}  // namespace zk::nms
