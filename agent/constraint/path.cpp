#include "agent/constraint/path.h"

#include "agent/constraint/dynamicvalue.h"
#include "agent/constraint/records.h"

namespace zk::agent::etcl {

namespace {

// A step into a record of the event itself.
template <typename Record>
struct IntoRecord {
  const Record& record;
  Evaluation& evaluation;

  Value operator()(const Member& step) const {
    return records::member(record, step.name, evaluation);
  }
  Value operator()(const Position& step) const {
    return records::memberAt(record, step.index, evaluation);
  }
  Value operator()(Special step) const {
    return typeName(step, records::Layout<Record>::type(), evaluation);
  }
  template <typename Other>
  Value operator()(const Other& /*step*/) const {
    return Nothing{};
  }
};

// A step into a list of the event itself.
template <typename List>
struct IntoList {
  const List& list;
  Evaluation& evaluation;

  Value operator()(const Element& step) const {
    return step.index < list.length() ? Value(&list[step.index]) : Value();
  }
  Value operator()(const Associated& step) const {
    return records::associated(list, step.name, evaluation);
  }
  Value operator()(Special step) const {
    return step == Special::LENGTH ? Value(std::int64_t{list.length()})
                                   : typeName(step, records::Layout<List>::type(), evaluation);
  }
  template <typename Other>
  Value operator()(const Other& /*step*/) const {
    return Nothing{};
  }
};

struct Stepping {
  const Step& step;
  Evaluation& evaluation;

  template <typename Simple>
  Value operator()(const Simple& /*value*/) const {
    return Nothing{};
  }
  Value operator()(const Enumerated& value) const {
    const auto* which = std::get_if<Special>(&step);
    return which != nullptr ? typeName(*which, value.type, evaluation) : Value();
  }
  template <typename Place>
  Value operator()(const Place* place) const {
    using Into = std::conditional_t<records::IS_LIST<Place>, IntoList<Place>, IntoRecord<Place>>;
    return std::visit(Into{*place, evaluation}, step);
  }
  Value operator()(DynamicAny::DynAny_ptr place) const {
    return dynamic::take(step, place, evaluation);
  }
};

struct Length {
  template <typename Other>
  std::optional<CORBA::ULong> operator()(const Other& /*value*/) const {
    return std::nullopt;
  }
  template <typename Place>
  std::optional<CORBA::ULong> operator()(const Place* place) const {
    if constexpr (records::IS_LIST<Place>) {
      return place->length();
    } else {
      return std::nullopt;
    }
  }
  std::optional<CORBA::ULong> operator()(DynamicAny::DynAny_ptr place) const {
    return dynamic::lengthOf(place);
  }
};

Value headerName(std::string_view name, const CosNotification::FixedEventHeader& header) {
  if (name == "type_name") {
    return records::textOf(header.event_type.type_name);
  }
  if (name == "domain_name") {
    return records::textOf(header.event_type.domain_name);
  }
  return name == "event_name" ? records::textOf(header.event_name) : Value();
}

}  // namespace

Value typeName(Special which, CORBA::TypeCode_ptr type, Evaluation& evaluation) {
  if (which != Special::TYPE_ID && which != Special::REPOSITORY_ID) {
    return Nothing{};
  }
  try {
    return evaluation.keep(which == Special::TYPE_ID ? type->name() : type->id());
  } catch (const CORBA::TypeCode::BadKind&) {
    return Nothing{};
  }
}

Value take(const Step& step, const Value& from, Evaluation& evaluation) {
  return std::visit(Stepping{step, evaluation}, from);
}

std::optional<CORBA::ULong> lengthOf(const Value& list) { return std::visit(Length{}, list); }

Value elementAt(const Value& list, CORBA::ULong index, Evaluation& evaluation) {
  return take(Element{index}, list, evaluation);
}

bool showsDefault(const Value& from, Evaluation& evaluation) {
  const auto* place = std::get_if<DynamicAny::DynAny_ptr>(&from);
  return place != nullptr && dynamic::showsDefault(*place, evaluation);
}

Value variable(std::string_view name, Evaluation& evaluation) {
  const auto& event = evaluation.event();
  Value found = headerName(name, event.header.fixed_header);
  if (isNothing(found)) {
    found = records::associated(event.header.variable_header, name, evaluation);
  }
  if (isNothing(found)) {
    found = records::associated(event.filterable_data, name, evaluation);
  }
  return isNothing(found) ? records::member(event, name, evaluation) : found;
}

Value follow(const Path& path, Evaluation& evaluation) {
  evaluation.work().spend(1 + path.steps.size());
  Value here = path.variable ? variable(*path.variable, evaluation) : Value(&evaluation.event());
  for (const Step& step : path.steps) {
    if (isNothing(here)) {
      break;
    }
    here = take(step, here, evaluation);
  }
  return here;
}

}  // namespace zk::agent::etcl
