// Steps into the structs and lists that an event is made of. No shared state.
#ifndef ZK_AGENT_CONSTRAINT_RECORDS_H
#define ZK_AGENT_CONSTRAINT_RECORDS_H

#include <array>
#include <string_view>

#include "agent/constraint/evaluation.h"

namespace zk::agent::etcl::records {

template <typename Record>
struct Field {
  const char* name;
  Value (*read)(const Record& record, Evaluation& evaluation);
};

inline Value textOf(const char* text) { return std::string_view(text); }

// Of each record its type's description and its members in their order.
template <typename Record>
struct Layout;

template <>
struct Layout<CosNotification::EventType> {
  using Record = CosNotification::EventType;
  static CORBA::TypeCode_ptr type() { return CosNotification::_tc_EventType; }
  static constexpr std::array kFields = {
      Field<Record>{"domain_name",
                    [](const Record& r, Evaluation&) { return textOf(r.domain_name); }},
      Field<Record>{"type_name", [](const Record& r, Evaluation&) { return textOf(r.type_name); }}};
};

template <>
struct Layout<CosNotification::FixedEventHeader> {
  using Record = CosNotification::FixedEventHeader;
  static CORBA::TypeCode_ptr type() { return CosNotification::_tc_FixedEventHeader; }
  static constexpr std::array kFields = {
      Field<Record>{"event_type",
                    [](const Record& r, Evaluation&) { return Value(&r.event_type); }},
      Field<Record>{"event_name",
                    [](const Record& r, Evaluation&) { return textOf(r.event_name); }}};
};

template <>
struct Layout<CosNotification::EventHeader> {
  using Record = CosNotification::EventHeader;
  static CORBA::TypeCode_ptr type() { return CosNotification::_tc_EventHeader; }
  static constexpr std::array kFields = {
      Field<Record>{"fixed_header",
                    [](const Record& r, Evaluation&) { return Value(&r.fixed_header); }},
      Field<Record>{"variable_header",
                    [](const Record& r, Evaluation&) { return Value(&r.variable_header); }}};
};

template <>
struct Layout<CosNotification::StructuredEvent> {
  using Record = CosNotification::StructuredEvent;
  static CORBA::TypeCode_ptr type() { return CosNotification::_tc_StructuredEvent; }
  static constexpr std::array kFields = {
      Field<Record>{"header", [](const Record& r, Evaluation&) { return Value(&r.header); }},
      Field<Record>{"filterable_data",
                    [](const Record& r, Evaluation&) { return Value(&r.filterable_data); }},
      Field<Record>{"remainder_of_body",
                    [](const Record& r, Evaluation& e) { return e.open(r.remainder_of_body); }}};
};

template <>
struct Layout<CosNotification::Property> {
  using Record = CosNotification::Property;
  static CORBA::TypeCode_ptr type() { return CosNotification::_tc_Property; }
  static constexpr std::array kFields = {
      Field<Record>{"name", [](const Record& r, Evaluation&) { return textOf(r.name); }},
      Field<Record>{"value", [](const Record& r, Evaluation& e) { return e.open(r.value); }}};
};

template <>
struct Layout<globaldefs::NameAndStringValue_T> {
  using Record = globaldefs::NameAndStringValue_T;
  static CORBA::TypeCode_ptr type() { return globaldefs::_tc_NameAndStringValue_T; }
  static constexpr std::array kFields = {
      Field<Record>{"name", [](const Record& r, Evaluation&) { return textOf(r.name); }},
      Field<Record>{"value", [](const Record& r, Evaluation&) { return textOf(r.value); }}};
};

template <>
struct Layout<notifications::NameAndAnyValue_T> {
  using Record = notifications::NameAndAnyValue_T;
  static CORBA::TypeCode_ptr type() { return notifications::_tc_NameAndAnyValue_T; }
  static constexpr std::array kFields = {
      Field<Record>{"name", [](const Record& r, Evaluation&) { return textOf(r.name); }},
      Field<Record>{"value", [](const Record& r, Evaluation& e) { return e.open(r.value); }}};
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

template <typename T>
constexpr bool isList = false;
template <>
inline constexpr bool isList<CosNotification::PropertySeq> = true;
template <>
inline constexpr bool isList<globaldefs::NVSList_T> = true;
template <>
inline constexpr bool isList<notifications::NVList_T> = true;

template <typename Record>
Value member(const Record& record, std::string_view name, Evaluation& evaluation) {
  for (const auto& field : Layout<Record>::kFields) {
    if (name == field.name) {
      return field.read(record, evaluation);
    }
  }
  return Nothing{};
}

template <typename Record>
Value memberAt(const Record& record, CORBA::ULong index, Evaluation& evaluation) {
  const auto& fields = Layout<Record>::kFields;
  return index < fields.size() ? fields[index].read(record, evaluation) : Value();
}

// The value of the first pair of that name.
template <typename List>
Value associated(const List& list, std::string_view name, Evaluation& evaluation) {
  for (CORBA::ULong i = 0; i < list.length(); ++i) {
    if (name == list[i].name.in()) {
      return memberAt(list[i], 1, evaluation);
    }
  }
  return Nothing{};
}

}  // namespace zk::agent::etcl::records

#endif
