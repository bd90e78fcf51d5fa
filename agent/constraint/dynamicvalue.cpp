#include "agent/constraint/dynamicvalue.h"

namespace zk::agent::etcl::dynamic {

namespace {

using DynamicAny::DynAny_ptr;

bool isStruct(CORBA::TCKind kind) { return kind == CORBA::tk_struct || kind == CORBA::tk_except; }
bool isList(CORBA::TCKind kind) { return kind == CORBA::tk_sequence || kind == CORBA::tk_array; }

// One value with its type, as declared and without aliases.
struct Typed {
  explicit Typed(DynAny_ptr from) : value(from), own(from->type()), type(withoutAlias(own)) {}
  CORBA::TCKind kind() const { return type->kind(); }

  DynAny_ptr value;
  CORBA::TypeCode_var own;
  CORBA::TypeCode_var type;
};

Value componentAt(const Typed& from, CORBA::ULong index, Evaluation& evaluation) {
  if (index >= from.value->component_count() ||
      !from.value->seek(static_cast<CORBA::Long>(index))) {
    return Nothing{};
  }
  return evaluation.open(from.value->current_component());
}

// The value that a union shows now, when it shows one.
Value shown(DynamicAny::DynUnion_ptr from, Evaluation& evaluation) {
  return from->has_no_active_member() ? Value() : evaluation.open(from->member());
}

Value member(const Typed& from, const std::string& name, Evaluation& evaluation) {
  if (from.kind() == CORBA::tk_union) {
    DynamicAny::DynUnion_var shownUnion = DynamicAny::DynUnion::_narrow(from.value);
    if (shownUnion->has_no_active_member()) {
      return Nothing{};
    }
    CORBA::String_var active = shownUnion->member_name();
    return name == active.in() ? shown(shownUnion, evaluation) : Value();
  }
  if (isStruct(from.kind())) {
    for (CORBA::ULong i = 0; i < from.type->member_count(); ++i) {
      if (name == from.type->member_name(i)) {
        return componentAt(from, i, evaluation);
      }
    }
  }
  return Nothing{};
}

// The value of pair when it is a struct of two members, the first that name.
Value valueOfPair(const Value& pair, const std::string& name, Evaluation& evaluation) {
  const auto* place = std::get_if<DynAny_ptr>(&pair);
  if (place == nullptr) {
    return Nothing{};
  }
  const Typed typed(*place);
  if (!isStruct(typed.kind()) || (*place)->component_count() != 2) {
    return Nothing{};
  }
  const Value key = componentAt(typed, 0, evaluation);
  const auto* text = std::get_if<std::string_view>(&key);
  return text != nullptr && *text == name ? componentAt(typed, 1, evaluation) : Value();
}

Value associated(const Typed& list, const std::string& name, Evaluation& evaluation) {
  const CORBA::ULong length = lengthOf(list.value).value_or(0);
  Value found;
  for (CORBA::ULong i = 0; i < length && isNothing(found); ++i) {
    found = valueOfPair(elementAt(list.value, i, evaluation), name, evaluation);
  }
  return found;
}

Value discriminator(const Typed& from, Evaluation& evaluation) {
  if (from.kind() != CORBA::tk_union) {
    return Nothing{};
  }
  DynamicAny::DynUnion_var whole = DynamicAny::DynUnion::_narrow(from.value);
  return evaluation.open(whole->get_discriminator());
}

bool isLabelled(const Arm& arm, const Value& discriminator) {
  const Value wanted = std::visit(
      [](const auto& label) -> Value {
        using Label = std::decay_t<decltype(label)>;
        if constexpr (std::is_same_v<Label, std::string>) {
          return std::string_view(label);
        } else if constexpr (std::is_same_v<Label, std::int64_t>) {
          return label;
        } else {
          return Nothing{};
        }
      },
      arm.label);
  return isTrue(compare(Comparison::EQUAL, discriminator, wanted));
}

Value armOf(const Arm& arm, const Typed& from, Evaluation& evaluation) {
  if (from.kind() != CORBA::tk_union) {
    return Nothing{};
  }
  const bool wantsDefault = std::holds_alternative<std::monostate>(arm.label);
  const bool shows = wantsDefault ? showsDefault(from.value, evaluation)
                                  : isLabelled(arm, discriminator(from, evaluation));
  DynamicAny::DynUnion_var whole = DynamicAny::DynUnion::_narrow(from.value);
  return shows ? shown(whole, evaluation) : Value();
}

Value special(Special what, const Typed& from, Evaluation& evaluation) {
  switch (what) {
    case Special::LENGTH: {
      const auto length = lengthOf(from.value);
      return length ? Value(std::int64_t{*length}) : Value();
    }
    case Special::DISCRIMINATOR:
      return discriminator(from, evaluation);
    case Special::TYPE_ID:
    case Special::REPOSITORY_ID:
      return typeName(what, from.own, evaluation);
  }
  return Nothing{};
}

struct Taking {
  const Typed& from;
  Evaluation& evaluation;

  Value operator()(const Member& step) const { return member(from, step.name, evaluation); }
  Value operator()(const Position& step) const {
    return isStruct(from.kind()) ? componentAt(from, step.index, evaluation) : Value();
  }
  Value operator()(const Element& step) const {
    return elementAt(from.value, step.index, evaluation);
  }
  Value operator()(const Associated& step) const { return associated(from, step.name, evaluation); }
  Value operator()(const Arm& step) const { return armOf(step, from, evaluation); }
  Value operator()(Special step) const { return special(step, from, evaluation); }
};

}  // namespace

Value take(const Step& step, DynAny_ptr from, Evaluation& evaluation) {
  const Typed typed(from);
  return std::visit(Taking{typed, evaluation}, step);
}

Value elementAt(DynAny_ptr list, CORBA::ULong index, Evaluation& evaluation) {
  const Typed typed(list);
  return isList(typed.kind()) ? componentAt(typed, index, evaluation) : Value();
}

std::optional<CORBA::ULong> lengthOf(DynAny_ptr list) {
  const Typed typed(list);
  return isList(typed.kind()) ? std::optional(list->component_count()) : std::nullopt;
}

// No label of the union is its discriminator's value. The default's own label is
// a mere octet, which no comparison with an enumeration or a boolean may take for
// one of theirs.
bool showsDefault(DynAny_ptr from, Evaluation& evaluation) {
  const Typed typed(from);
  if (typed.kind() != CORBA::tk_union) {
    return false;
  }
  const Value value = discriminator(typed, evaluation);
  const CORBA::Long byDefault = typed.type->default_index();
  for (CORBA::ULong i = 0; i < typed.type->member_count(); ++i) {
    if (static_cast<CORBA::Long>(i) == byDefault) {
      continue;
    }
    CORBA::Any_var label = typed.type->member_label(i);
    Evaluation labels(evaluation.event(), evaluation.factory(), evaluation.work());
    if (isTrue(compare(Comparison::EQUAL, value, labels.open(label)))) {
      return false;
    }
  }
  return true;
}

}  // namespace zk::agent::etcl::dynamic
