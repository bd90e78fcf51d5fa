// How a constraint names a part of an event. Immutable once built: any number
// of threads may follow the same path.
#ifndef ZK_AGENT_CONSTRAINT_PATH_H
#define ZK_AGENT_CONSTRAINT_PATH_H

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "agent/constraint/evaluation.h"
#include "agent/constraint/value.h"

namespace zk::agent::etcl {

struct Member {  // .name
  std::string name;
};
struct Position {  // .2, a member by its place
  CORBA::ULong index;
};
struct Element {  // [2]
  CORBA::ULong index;
};
struct Associated {  // (name), the value of the pair of that name
  std::string name;
};
// .(label), the value of a union while its discriminator is that; .() is the
// union's default.
struct Arm {
  std::variant<std::monostate, std::int64_t, std::string> label;
};
enum class Special { LENGTH, DISCRIMINATOR, TYPE_ID, REPOSITORY_ID };

using Step = std::variant<Member, Position, Element, Associated, Arm, Special>;

struct Path {
  std::optional<std::string> variable;  // none: the path starts at the event
  std::vector<Step> steps;
};

// Nothing when there is no such part.
Value follow(const Path& path, Evaluation& evaluation);

// What $name stands for: the header's own names, then its members, then a
// variable header field, a filterable property, and last a member of the event.
Value variable(std::string_view name, Evaluation& evaluation);

// The steps of a path one by one; from may be anything.
Value take(const Step& step, const Value& from, Evaluation& evaluation);

// How many elements a list has; nothing for anything else.
std::optional<CORBA::ULong> lengthOf(const Value& list);
Value elementAt(const Value& list, CORBA::ULong index, Evaluation& evaluation);

// What _type_id or _repos_id gives: the type's name, kept by the evaluation.
// Nothing for the other specials, and for types without a name of their own.
Value typeName(Special which, CORBA::TypeCode_ptr type, Evaluation& evaluation);

// Whether from is a union that shows its default arm.
bool showsDefault(const Value& from, Evaluation& evaluation);

}  // namespace zk::agent::etcl

#endif
