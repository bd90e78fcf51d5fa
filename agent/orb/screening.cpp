#include "agent/orb/screening.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "agent/orb/cdr.h"
#include "agent/orb/giop.h"
#include "agent/orb/layouts.h"
#include "agent/orb/references.h"

namespace zk::agent {

namespace {

constexpr std::uint32_t MOST_ELEMENTS = 1024;
// More than the longest constraint, which gets an answer of its own.
constexpr std::size_t MOST_TEXT = std::size_t{64} * 1024;
constexpr std::size_t MOST_VALUES = std::size_t{64} * 1024;
// Each takes the ORB many times the memory of its bytes: 5 with a large type, 16 with
// a short.
constexpr std::size_t MOST_ANYS = 256;
// An attribute list of a notification holds Anys, and lies in one.
constexpr int MOST_NESTED_ANYS = 2;
constexpr std::size_t MOST_ID = 255;
constexpr std::size_t MOST_REMEMBERED = 64;

// TypeCodes that began in the same Any, for those that point back to them.
class Remembered {
 public:
  void add(std::size_t at, const Layout& layout) {
    if (count_ < places_.size()) {
      places_[count_++] = {at, &layout};
    }
  }
  bool has(std::size_t at, const Layout& layout) const {
    return std::any_of(
        places_.begin(), places_.begin() + static_cast<std::ptrdiff_t>(count_),
        [&](const Place& place) { return place.at == at && place.layout == &layout; });
  }

 private:
  struct Place {
    std::size_t at;
    const Layout* layout;
  };
  std::array<Place, MOST_REMEMBERED> places_{};
  std::size_t count_ = 0;
};

// One message's parameters, read by one layout.
class Walk {
 public:
  Walk(std::string_view message, const Request& request)
      : message_(message), in_(message, request.littleEndian, request.parametersAt) {}

  // Of parameters that pass: where they end.
  std::size_t end() const { return in_.at(); }

  Verdict verdictOn(const OperationLayout& layout) {
    for (std::size_t i = 0; i < layout.count && in_.good(); ++i) {
      readValue(*layout.parameters[i]);
    }
    return in_.good() ? Verdict::PASS : verdict_;
  }

 private:
  // What was not damaged so far is well-formed, and not taken.
  void refuseUnless(bool fine, CdrReader& in) {
    if (!fine && in.good()) {
      verdict_ = Verdict::BAD_PARAM;
      in.fail();
    }
  }

  void readValue(const Layout& layout);
  bool readPlain(Kind kind);  // false for any other kind
  void readText(std::uint32_t most);
  void readList(const Layout& list);
  void readAny();
  void readNamedAny();

  // What a TypeCode says after its kind, in a byte order of its own.
  CdrReader openType(CdrReader& in);
  void closeType(CdrReader& in, const CdrReader& inner);
  void expectType(CdrReader& in, const Layout& expected);
  void expectContent(CdrReader& in, const Layout& expected);
  void expectText(CdrReader& in, std::string_view expected);
  void expectBackward(CdrReader& in, const Layout& expected);

  const std::string_view message_;
  CdrReader in_;
  Verdict verdict_ = Verdict::MARSHAL;
  std::size_t values_ = 0;
  std::size_t anys_ = 0;
  int openAnys_ = 0;
  Remembered remembered_;
};

// The depth is that of the IDL's types, times that of Anys.
void Walk::readValue(const Layout& layout) {  // NOLINT(misc-no-recursion)
  refuseUnless(++values_ <= MOST_VALUES, in_);
  switch (layout.kind) {
    case Kind::STRING:
      return readText(layout.most);
    case Kind::ENUM:
      if (in_.uint32() >= layout.count) {
        in_.fail();
      }
      return;
    case Kind::SEQUENCE:
      return readList(layout);
    case Kind::STRUCT:
    case Kind::ALIAS:
      for (std::size_t i = 0; i < layout.count && in_.good(); ++i) {
        readValue(*layout.parts[i].layout);
      }
      return;
    case Kind::REFERENCE:
      return readReference(in_);
    case Kind::ANY:
      return readAny();
    default:
      refuseUnless(readPlain(layout.kind), in_);
  }
}

bool Walk::readPlain(Kind kind) {
  switch (kind) {
    case Kind::NOTHING:
    case Kind::VOID:
      return true;
    case Kind::BOOLEAN:
      in_.boolean();
      return true;
    case Kind::CHAR:
    case Kind::OCTET:
      in_.octet();
      return true;
    case Kind::SHORT:
    case Kind::USHORT:
      in_.uint16();
      return true;
    case Kind::LONG:
    case Kind::ULONG:
    case Kind::FLOAT:
      in_.uint32();
      return true;
    case Kind::DOUBLE:
    case Kind::LONGLONG:
    case Kind::ULONGLONG:
      in_.align(8);
      in_.octets(8);
      return true;
    default:
      return false;
  }
}

void Walk::readText(std::uint32_t most) {
  const std::string_view text = in_.text(in_.remaining());
  refuseUnless(text.size() <= MOST_TEXT && (most == 0 || text.size() <= most), in_);
}

void Walk::readList(const Layout& list) {  // NOLINT(misc-no-recursion)
  const std::uint32_t count = in_.uint32();
  const Layout& element = *list.parts[0].layout;
  if (count > in_.remaining() / element.least) {
    in_.fail();
  }
  refuseUnless(count <= MOST_ELEMENTS && (list.most == 0 || count <= list.most), in_);
  for (std::uint32_t i = 0; i < count && in_.good(); ++i) {
    readValue(element);
  }
}

void Walk::readAny() {  // NOLINT(misc-no-recursion)
  refuseUnless(++anys_ <= MOST_ANYS && ++openAnys_ <= MOST_NESTED_ANYS, in_);
  const CdrReader before = in_;
  const auto kind = Kind{in_.uint32()};
  if (kind == Kind::STRING) {
    readText(in_.uint32());
  } else if (kind == Kind::STRUCT || kind == Kind::ENUM || kind == Kind::ALIAS) {
    in_ = before;
    readNamedAny();
  } else {
    refuseUnless(readPlain(kind), in_);
  }
  --openAnys_;
}

// The repository id names the one type that may follow.
void Walk::readNamedAny() {  // NOLINT(misc-no-recursion)
  CdrReader ahead = in_;
  ahead.uint32();  // the kind
  CdrReader inner = openType(ahead);
  const Layout* const layout = layoutOfType(inner.text(MOST_ID));
  if (!inner.good()) {
    in_.fail();
  }
  refuseUnless(layout != nullptr, in_);
  if (!in_.good()) {
    return;
  }
  remembered_ = Remembered();
  expectType(in_, *layout);
  if (in_.good()) {
    readValue(*layout);
  }
}

CdrReader Walk::openType(CdrReader& in) {
  const std::string_view bytes = in.octetList(in.remaining());
  // Alignment counts from here, which is a multiple of four and needs no other:
  // places are still those in the message.
  const std::size_t begin = in.at() - bytes.size();
  CdrReader inner(message_.substr(0, in.at()), !bytes.empty() && bytes[0] == 1, begin);
  inner.boolean();
  if (!in.good()) {
    inner.fail();
  }
  return inner;
}

void Walk::closeType(CdrReader& in, const CdrReader& inner) {
  if (!inner.good() || inner.remaining() != 0) {
    in.fail();
  }
}

void Walk::expectType(CdrReader& in, const Layout& expected) {  // NOLINT(misc-no-recursion)
  in.align(4);
  const std::size_t at = in.at();
  const auto kind = Kind{in.uint32()};
  if (kind == Kind::INDIRECTION) {
    return expectBackward(in, expected);
  }
  refuseUnless(kind == expected.kind, in);
  if (kind == Kind::STRING) {
    refuseUnless(in.uint32() == expected.most, in);
  } else if (kind == Kind::STRUCT || kind == Kind::ENUM || kind == Kind::ALIAS ||
             kind == Kind::SEQUENCE) {
    CdrReader inner = openType(in);
    expectContent(inner, expected);
    closeType(in, inner);
    remembered_.add(at, expected);
  }
}

void Walk::expectContent(CdrReader& in, const Layout& expected) {  // NOLINT(misc-no-recursion)
  if (expected.kind == Kind::SEQUENCE) {
    expectType(in, *expected.parts[0].layout);
    refuseUnless(in.uint32() == expected.most, in);
    return;
  }
  expectText(in, expected.id);
  expectText(in, expected.name);
  if (expected.kind != Kind::ALIAS) {
    refuseUnless(in.uint32() == expected.count, in);
  }
  for (std::size_t i = 0; i < expected.count && in.good(); ++i) {
    if (expected.kind != Kind::ALIAS) {
      expectText(in, expected.parts[i].name);
    }
    if (expected.kind != Kind::ENUM) {
      expectType(in, *expected.parts[i].layout);
    }
  }
}

void Walk::expectText(CdrReader& in, std::string_view expected) {
  const std::string_view text = in.text(in.remaining());
  refuseUnless(text == expected, in);
}

void Walk::expectBackward(CdrReader& in, const Layout& expected) {
  const std::size_t at = in.at();
  const auto offset = static_cast<std::int32_t>(in.uint32());
  const auto distance = static_cast<std::size_t>(-std::int64_t{offset});
  refuseUnless(offset < 0 && distance <= at && remembered_.has(at - distance, expected), in);
}

}  // namespace

Verdict screen(std::string& message, const Request& request) {
  const OperationLayouts layouts = layoutsOf(request.operation);
  if (layouts.first == layouts.last) {
    return Verdict::PASS;
  }
  Verdict best = Verdict::MARSHAL;
  std::size_t end = 0;
  for (const OperationLayout& layout : layouts) {
    Walk walk(message, request);
    const Verdict verdict = walk.verdictOn(layout);
    best = std::min(best, verdict);
    if (verdict == Verdict::PASS) {
      end = std::max(end, walk.end());
    }
  }
  if (best == Verdict::PASS) {
    message.resize(end);
    sealMessage(message, request.littleEndian);
  }
  return best;
}

}  // namespace zk::agent
