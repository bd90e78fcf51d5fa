// Steps into the structs and lists that an event is made of. No shared state.
#ifndef ZK_AGENT_CONSTRAINT_RECORDS_H
#define ZK_AGENT_CONSTRAINT_RECORDS_H

#include <array>
#include <string_view>
#include <type_traits>

#include "agent/constraint/evaluation.h"

namespace zk::agent::etcl::records {

template <typename Record>
struct Field {
  const char* name;
  Value (*read)(const Record& record, Evaluation& evaluation);
};

inline Value textOf(const char* text) { return std::string_view(text); }

// A member that is a text, an any to be looked into, or a record or list itself.
template <auto MEMBER, typename Record>
Value read(const Record& record, Evaluation& evaluation) {
  const auto& value = record.*MEMBER;
  using Type = std::decay_t<decltype(value)>;
  if constexpr (std::is_same_v<Type, CORBA::Any>) {
    return evaluation.open(value);
  } else if constexpr (std::is_convertible_v<const Type&, const char*>) {
    return textOf(value);
  } else {
    return &value;
  }
}

template <typename Record, typename Type>
Record recordOf(Type Record::*member);

template <auto MEMBER>
constexpr auto field(const char* name) {
  using Record = decltype(recordOf(MEMBER));
  return Field<Record>{name, read<MEMBER, Record>};
}

// Of each record its type's description and its members in their order.
template <typename Record>
struct Layout;

template <>
struct Layout<CosNotification::EventType> {
  using Record = CosNotification::EventType;
  static CORBA::TypeCode_ptr type() { return CosNotification::_tc_EventType; }
  static constexpr std::array FIELDS = {field<&Record::domain_name>("domain_name"),
                                        field<&Record::type_name>("type_name")};
};

template <>
struct Layout<CosNotification::FixedEventHeader> {
  using Record = CosNotification::FixedEventHeader;
  static CORBA::TypeCode_ptr type() { return CosNotification::_tc_FixedEventHeader; }
  static constexpr std::array FIELDS = {field<&Record::event_type>("event_type"),
                                        field<&Record::event_name>("event_name")};
};

template <>
struct Layout<CosNotification::EventHeader> {
  using Record = CosNotification::EventHeader;
  static CORBA::TypeCode_ptr type() { return CosNotification::_tc_EventHeader; }
  static constexpr std::array FIELDS = {field<&Record::fixed_header>("fixed_header"),
                                        field<&Record::variable_header>("variable_header")};
};

template <>
struct Layout<CosNotification::StructuredEvent> {
  using Record = CosNotification::StructuredEvent;
  static CORBA::TypeCode_ptr type() { return CosNotification::_tc_StructuredEvent; }
  static constexpr std::array FIELDS = {field<&Record::header>("header"),
                                        field<&Record::filterable_data>("filterable_data"),
                                        field<&Record::remainder_of_body>("remainder_of_body")};
};

template <typename Pair>
struct PairLayout {
  static constexpr std::array FIELDS = {field<&Pair::name>("name"), field<&Pair::value>("value")};
};

template <>
struct Layout<CosNotification::Property> : PairLayout<CosNotification::Property> {
  static CORBA::TypeCode_ptr type() { return CosNotification::_tc_Property; }
};

template <>
struct Layout<globaldefs::NameAndStringValue_T> : PairLayout<globaldefs::NameAndStringValue_T> {
  static CORBA::TypeCode_ptr type() { return globaldefs::_tc_NameAndStringValue_T; }
};

template <>
struct Layout<notifications::NameAndAnyValue_T> : PairLayout<notifications::NameAndAnyValue_T> {
  static CORBA::TypeCode_ptr type() { return notifications::_tc_NameAndAnyValue_T; }
};

template <>
struct Layout<CosNotification::PropertySeq> {
  static CORBA::TypeCode_ptr type() { return CosNotification::_tc_PropertySeq; }
};
template <>
struct Layout<globaldefs::NVSList_T> {
  static CORBA::TypeCode_ptr type() { return globaldefs::_tc_NVSList_T; }
};
template <>
struct Layout<notifications::NVList_T> {
  static CORBA::TypeCode_ptr type() { return notifications::_tc_NVList_T; }
};

template <typename Type>
constexpr bool IS_LIST =
    std::is_same_v<Type, CosNotification::PropertySeq> ||
    std::is_same_v<Type, globaldefs::NVSList_T> || std::is_same_v<Type, notifications::NVList_T>;

template <typename Record>
Value member(const Record& record, std::string_view name, Evaluation& evaluation) {
  for (const auto& field : Layout<Record>::FIELDS) {
    if (name == field.name) {
      return field.read(record, evaluation);
    }
  }
  return Nothing{};
}

template <typename Record>
Value memberAt(const Record& record, CORBA::ULong index, Evaluation& evaluation) {
  const auto& fields = Layout<Record>::FIELDS;
  return index < fields.size() ? fields[index].read(record, evaluation) : Value();
}

// The value of the first pair of that name.
template <typename List>
Value associated(const List& list, std::string_view name, Evaluation& evaluation) {
  for (CORBA::ULong i = 0; i < list.length(); ++i) {
    evaluation.work().spend(1);
    if (name == list[i].name.in()) {
      return memberAt(list[i], 1, evaluation);
    }
  }
  return Nothing{};
}

}  // namespace zk::agent::etcl::records

#endif
