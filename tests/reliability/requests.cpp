#include "tests/reliability/requests.h"

#include <iterator>

#include "agent/orb/layouts.h"

namespace zk::test {

namespace {

using agent::Kind;
using agent::Layout;
using agent::OperationLayout;
using agent::Part;

#include <layouts.inc>

// What texts say where the agent looks at them.
constexpr const char* TEXTS[] = {"",
                                 "EMS",
                                 "Quor/1",
                                 "ManagedElement",
                                 "1",
                                 "7",
                                 "MultiLayerSubnetwork",
                                 "TopologicalLink",
                                 "EventChannel",
                                 "operator",
                                 "tmf_mtnm",
                                 "NT_ALARM",
                                 "*",
                                 "%ALL",
                                 "EXTENDED_TCL",
                                 "$type_name == 'NT_ALARM'",
                                 "exist $.filterable_data(attributeList)('userLabel')",
                                 "MaxEventsPerConsumer",
                                 "MaximumBatchSize",
                                 "PacingInterval",
                                 "Priority",
                                 "notificationId",
                                 "IDL:omg.org/CosNotifyFilter/Filter:1.0"};
constexpr Kind PLAIN[] = {Kind::NOTHING,  Kind::SHORT,     Kind::LONG,    Kind::USHORT, Kind::ULONG,
                          Kind::FLOAT,    Kind::DOUBLE,    Kind::BOOLEAN, Kind::CHAR,   Kind::OCTET,
                          Kind::LONGLONG, Kind::ULONGLONG, Kind::STRING};

// The number of bytes; 0 for what is none.
std::size_t sizeOf(Kind kind) {
  switch (kind) {
    case Kind::BOOLEAN:
    case Kind::CHAR:
    case Kind::OCTET:
      return 1;
    case Kind::SHORT:
    case Kind::USHORT:
      return 2;
    case Kind::LONG:
    case Kind::ULONG:
    case Kind::FLOAT:
      return 4;
    case Kind::DOUBLE:
    case Kind::LONGLONG:
    case Kind::ULONGLONG:
      return 8;
    default:
      return 0;
  }
}

class Values {
 public:
  Values(CdrWriter& out, Chance& chance) : out_(out), chance_(chance) {}

  void write(const Layout& layout) {  // NOLINT(misc-no-recursion)
    switch (layout.kind) {
      case Kind::STRING:
        out_.text(std::string(TEXTS[chance_.below(std::size(TEXTS))]).substr(0, mostOf(layout)));
        break;
      case Kind::ENUM:
        out_.uint32(static_cast<std::uint32_t>(chance_.below(layout.count)));
        break;
      case Kind::SEQUENCE:
        writeList(layout);
        break;
      case Kind::STRUCT:
      case Kind::ALIAS:
        for (std::size_t i = 0; i < layout.count; ++i) {
          write(*layout.parts[i].layout);
        }
        break;
      case Kind::REFERENCE:
        writeReference();
        break;
      case Kind::ANY:
        writeAny();
        break;
      default:
        writePlain(layout.kind);
    }
  }

 private:
  static std::size_t mostOf(const Layout& layout) {
    return layout.most == 0 ? std::string::npos : layout.most;
  }

  void writePlain(Kind kind) {
    const std::size_t size = sizeOf(kind);
    if (size != 0) {
      const std::size_t bound = kind == Kind::BOOLEAN ? 2 : 16;
      const bool isSmall = kind == Kind::BOOLEAN || !chance_.oneIn(8);
      out_.number(isSmall ? chance_.below(bound) : chance_.any(), size);
    }
  }

  void writeList(const Layout& list) {  // NOLINT(misc-no-recursion)
    const std::size_t count = std::min<std::size_t>(chance_.below(4), mostOf(list));
    out_.uint32(static_cast<std::uint32_t>(count));
    for (std::size_t i = 0; i < count; ++i) {
      write(*list.parts[0].layout);
    }
  }

  // Nil, or an object at a port where nobody listens.
  void writeReference() {
    if (chance_.oneIn(2)) {
      out_.text("").uint32(0);
      return;
    }
    const std::size_t minor = chance_.below(3);
    CdrWriter profile = CdrWriter::encapsulation(out_.little());
    profile.octet(1).octet(static_cast<std::uint8_t>(minor));
    profile.text("127.0.0.1").uint16(1).octets("nobody");
    if (minor != 0) {
      writeComponents(profile);
    }
    out_.text("IDL:mtnm.tmforum.org/nmsSession/NmsSession_I:1.0").uint32(1);
    out_.uint32(0).octets(profile.bytes());
  }

  // Code sets, another address, ways to keep secrets, and some that nobody knows.
  void writeComponents(CdrWriter& profile) {
    static constexpr std::uint32_t TAGS[] = {0, 1, 3, 20, 33, 36, 77};
    const std::size_t count = chance_.below(3);
    profile.uint32(static_cast<std::uint32_t>(count));
    for (std::size_t i = 0; i < count; ++i) {
      const std::uint32_t tag = TAGS[chance_.below(std::size(TAGS))];
      CdrWriter data = CdrWriter::encapsulation(out_.little());
      if (tag == 1) {
        data.uint32(0x10001).uint32(1).uint32(0x05010001).uint32(0x10109).uint32(0);
      } else if (tag == 3) {
        data.text("127.0.0.1").uint16(1);
      } else {
        data.uint32(1).uint32(0).uint32(0).uint32(0);
      }
      profile.uint32(tag).octets(data.bytes());
    }
  }

  void writeAny() {  // NOLINT(misc-no-recursion)
    if (chance_.oneIn(2)) {
      const Layout& type = *TYPES[chance_.below(std::size(TYPES))];
      writeType(out_, type);
      write(type);
      return;
    }
    const Layout plain = {PLAIN[chance_.below(std::size(PLAIN))], 0, 0, "", "", nullptr, 0};
    writeType(out_, plain);
    write(plain);
  }

  // A TypeCode.
  void writeType(CdrWriter& out, const Layout& type) {  // NOLINT(misc-no-recursion)
    out.uint32(static_cast<std::uint32_t>(type.kind));
    if (type.kind == Kind::STRING) {
      out.uint32(type.most);
    } else if (type.kind == Kind::SEQUENCE) {
      CdrWriter inner = CdrWriter::encapsulation(out.little());
      writeType(inner, *type.parts[0].layout);
      out.octets(inner.uint32(type.most).bytes());
    } else if (type.count != 0) {
      CdrWriter inner = CdrWriter::encapsulation(out.little());
      writeMembers(inner, type);
      out.octets(inner.bytes());
    }
  }

  void writeMembers(CdrWriter& inner, const Layout& type) {  // NOLINT(misc-no-recursion)
    inner.text(std::string(type.id)).text(std::string(type.name));
    if (type.kind != Kind::ALIAS) {
      inner.uint32(static_cast<std::uint32_t>(type.count));
    }
    for (std::size_t i = 0; i < type.count; ++i) {
      if (type.kind != Kind::ALIAS) {
        inner.text(std::string(type.parts[i].name));
      }
      if (type.kind != Kind::ENUM) {
        writeType(inner, *type.parts[i].layout);
      }
    }
  }

  CdrWriter& out_;
  Chance& chance_;
};

void nestTypes(CdrWriter& out, Kind kind, std::size_t depth) {
  CdrWriter type(out.little());
  type.uint32(static_cast<std::uint32_t>(Kind::LONG));
  for (std::size_t i = 0; i < depth && type.bytes().size() < 60000; ++i) {
    CdrWriter inner = CdrWriter::encapsulation(out.little());
    if (kind == Kind::STRUCT) {
      inner.text("IDL:x:1.0").text("x").uint32(1).text("m");
    }
    inner.align(4).raw(type.bytes());
    if (kind == Kind::SEQUENCE) {
      inner.uint32(0);
    }
    CdrWriter outer(out.little());
    outer.uint32(static_cast<std::uint32_t>(kind)).octets(inner.bytes());
    type = outer;
  }
  out.align(4).raw(type.bytes());
}

void nestAnys(CdrWriter& out, std::size_t depth) {
  for (std::size_t i = 0; i < depth; ++i) {
    out.uint32(static_cast<std::uint32_t>(Kind::ANY));
  }
  out.uint32(static_cast<std::uint32_t>(Kind::LONG)).uint32(1);
}

std::string messageTo(const Form& form, const std::string& key, const std::string& operation,
                      const Parameters& parameters) {
  Sent sent;
  sent.contexts = 0;
  sent.key = key;
  sent.operation = operation;
  sent.parameters = parameters;
  return messageOf(form, sent);
}

}  // namespace

const std::vector<std::string>& operations() {
  static const std::vector<std::string> names = [] {
    std::vector<std::string> all;
    for (const OperationLayout& layout : OPERATIONS) {
      if (all.empty() || all.back() != layout.operation) {
        all.emplace_back(layout.operation);
      }
    }
    return all;
  }();
  return names;
}

std::string Requests::make(const std::string& key, const std::string& operation) {
  return make(forms()[chance_.below(forms().size())], key, operation);
}

std::string Requests::make(const Form& form, const std::string& key, const std::string& operation) {
  const agent::OperationLayouts layouts = agent::layoutsOf(operation);
  const std::size_t count = std::size_t(layouts.last - layouts.first);
  const OperationLayout& layout = layouts.first[chance_.below(count)];
  if (layout.count == 0) {
    return messageTo(form, key, operation, {});
  }
  return messageTo(form, key, operation, [&](CdrWriter& out) {
    Values values(out, chance_);
    for (std::size_t i = 0; i < layout.count; ++i) {
      values.write(*layout.parameters[i]);
    }
  });
}

std::string Requests::makeDeep(const std::string& key, std::size_t depth) {
  const std::size_t shape = chance_.below(3);
  return messageTo(forms()[chance_.below(forms().size())], key, "set_qos", [&](CdrWriter& out) {
    out.uint32(1).text("Priority");
    if (shape == 0) {
      nestAnys(out, depth);
    } else {
      nestTypes(out, shape == 1 ? Kind::SEQUENCE : Kind::STRUCT, depth);
      out.uint32(0);
    }
  });
}

}  // namespace zk::test
