// How values lie on the wire: of every operation's parameters, and of the types
// that an Any may hold. Made from the IDL when this is built. Constant; any thread
// may read.
#ifndef ZK_AGENT_ORB_LAYOUTS_H
#define ZK_AGENT_ORB_LAYOUTS_H

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace zk::agent {

// Numbered as in TypeCodes on the wire.
enum class Kind : std::uint32_t {
  NOTHING = 0,
  VOID = 1,
  SHORT = 2,
  LONG = 3,
  USHORT = 4,
  ULONG = 5,
  FLOAT = 6,
  DOUBLE = 7,
  BOOLEAN = 8,
  CHAR = 9,
  OCTET = 10,
  ANY = 11,
  REFERENCE = 14,
  STRUCT = 15,
  ENUM = 17,
  STRING = 18,
  SEQUENCE = 19,
  ALIAS = 21,
  LONGLONG = 23,
  ULONGLONG = 24,
  INDIRECTION = 0xffffffff,  // in TypeCodes alone: the one that began there
};

struct Layout;

struct Part {
  std::string_view name;  // of a struct's member, an enum's label
  const Layout* layout;   // null for a label
};

// No type contains itself, or nests more than a dozen deep.
struct Layout {
  Kind kind;
  std::uint32_t least;  // bytes, without padding
  std::uint32_t most;   // characters of a string, elements of a sequence; 0 for any number
  std::string_view id;  // repository id and name of a struct, enum or alias
  std::string_view name;
  const Part* parts;  // members; labels; one for a sequence or an alias
  std::size_t count;
};

struct OperationLayout {
  std::string_view operation;
  const Layout* const* parameters;  // in and inout
  std::size_t count;
};

struct OperationLayouts {
  const OperationLayout* begin() const { return first; }
  const OperationLayout* end() const { return last; }

  const OperationLayout* first;
  const OperationLayout* last;
};

// Interfaces may give one name to operations of several layouts. None when no
// interface has the operation, which the ORB then answers without reading its
// parameters.
OperationLayouts layoutsOf(std::string_view operation);

// Of a struct, enum or alias, whose values hold neither references nor TypeCodes.
// Null when there is none of that repository id.
const Layout* layoutOfType(std::string_view id);

}  // namespace zk::agent

#endif
