// What a part of a constraint comes to for one event: a simple value, or a place
// inside the event that a path can go on from. A Value owns nothing: it is good
// while the event, the constraint and the Evaluation that gave it are.
#ifndef ZK_AGENT_CONSTRAINT_VALUE_H
#define ZK_AGENT_CONSTRAINT_VALUE_H

#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>
#include <variant>

#include "zk_quornex/idl/events.h"
#include "zk_quornex/idl/names.h"

namespace zk::agent::etcl {

// What is missing, or makes no sense: it is neither true nor false.
struct Nothing {};

// What is there, of a type that constraints have no use for.
struct Opaque {};

struct Enumerated {
  CORBA::ULong ordinal;
  CORBA::TypeCode_ptr type;  // of the enumeration itself, no alias of it
};

// A bare name: a label where it meets an enumeration, a variable elsewhere.
struct Name {
  std::string_view text;
};

using Value =
    std::variant<Nothing, Opaque, bool, std::int64_t, long double, std::string_view, Enumerated,
                 Name, const CosNotification::StructuredEvent*, const CosNotification::EventHeader*,
                 const CosNotification::FixedEventHeader*, const CosNotification::EventType*,
                 const CosNotification::PropertySeq*, const CosNotification::Property*,
                 const globaldefs::NVSList_T*, const globaldefs::NameAndStringValue_T*,
                 const notifications::NVList_T*, const notifications::NameAndAnyValue_T*,
                 DynamicAny::DynAny_ptr>;

// Whole numbers that int64_t cannot hold are kept as long double, which holds
// those of 64 bits exactly on the machines this runs on.
inline Value unsignedValue(CORBA::ULongLong number) {
  constexpr auto MOST = static_cast<CORBA::ULongLong>(std::numeric_limits<std::int64_t>::max());
  return number <= MOST ? Value(static_cast<std::int64_t>(number))
                        : Value(static_cast<long double>(number));
}

inline bool isNothing(const Value& value) { return std::holds_alternative<Nothing>(value); }

inline bool isTrue(const Value& value) {
  const auto* holds = std::get_if<bool>(&value);
  return holds != nullptr && *holds;
}

enum class Comparison { EQUAL, DIFFERENT, LESS, LESS_OR_EQUAL, GREATER, GREATER_OR_EQUAL };
enum class Operation { ADD, SUBTRACT, MULTIPLY, DIVIDE };

// Truth or Nothing, when the two cannot be compared. Numbers are compared by
// value whatever their types, texts byte by byte, FALSE is less than TRUE, an
// enumeration is compared with its own kind, with a label and with a number. A
// Name that meets no enumeration must have been looked up before.
Value compare(Comparison how, const Value& left, const Value& right);

// A number or Nothing. Whole numbers stay whole where the result is.
Value calculate(Operation what, const Value& left, const Value& right);

}  // namespace zk::agent::etcl

#endif
