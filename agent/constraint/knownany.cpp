#include "agent/constraint/knownany.h"

namespace zk::agent::etcl {

namespace {

template <typename T>
Value whole(const CORBA::Any& any) {
  T value = 0;
  return (any >>= value) ? Value(std::int64_t{value}) : Value();
}

Value unsigned64(const CORBA::Any& any) {
  CORBA::ULongLong value = 0;
  return (any >>= value) ? unsignedValue(value) : Value();
}

template <typename T>
Value real(const CORBA::Any& any) {
  T value = 0;
  return (any >>= value) ? Value(static_cast<long double>(value)) : Value();
}

Value boolean(const CORBA::Any& any) {
  CORBA::Boolean value = false;
  return (any >>= CORBA::Any::to_boolean(value)) ? Value(bool{value}) : Value();
}

Value octet(const CORBA::Any& any) {
  CORBA::Octet value = 0;
  return (any >>= CORBA::Any::to_octet(value)) ? Value(std::int64_t{value}) : Value();
}

Value text(const CORBA::Any& any) {
  const char* value = nullptr;
  return (any >>= value) ? Value(std::string_view(value)) : Value();
}

template <typename Enum>
bool openEnum(const CORBA::Any& any, CORBA::TypeCode_ptr type, Value& value) {
  Enum label{};
  if (!(any >>= label)) {
    return false;
  }
  value = Enumerated{static_cast<CORBA::ULong>(label), type};
  return true;
}

// The descriptions come from the stubs: they outlive every value, whereas the
// any's own is the caller's.
Value enumerated(const CORBA::Any& any) {
  using namespace notifications;
  Value value;
  openEnum<ObjectType_T>(any, _tc_ObjectType_T, value) ||
      openEnum<PerceivedSeverity_T>(any, _tc_PerceivedSeverity_T, value) ||
      openEnum<ServiceAffecting_T>(any, _tc_ServiceAffecting_T, value) ||
      openEnum<AcknowledgeIndication_T>(any, _tc_AcknowledgeIndication_T, value) ||
      openEnum<FileTransferStatus_T>(any, _tc_FileTransferStatus_T, value);
  return value;
}

template <typename List>
bool openList(const CORBA::Any& any, Value& value) {
  const List* list = nullptr;
  if (!(any >>= list)) {
    return false;
  }
  value = list;
  return true;
}

Value list(const CORBA::Any& any) {
  Value value;
  openList<globaldefs::NVSList_T>(any, value) || openList<notifications::NVList_T>(any, value) ||
      openList<CosNotification::PropertySeq>(any, value);
  return value;
}

}  // namespace

Value openKnown(const CORBA::Any& any, CORBA::TypeCode_ptr type) {
  switch (type->kind()) {
    case CORBA::tk_string:
      return text(any);
    case CORBA::tk_boolean:
      return boolean(any);
    case CORBA::tk_octet:
      return octet(any);
    case CORBA::tk_short:
      return whole<CORBA::Short>(any);
    case CORBA::tk_ushort:
      return whole<CORBA::UShort>(any);
    case CORBA::tk_long:
      return whole<CORBA::Long>(any);
    case CORBA::tk_ulong:
      return whole<CORBA::ULong>(any);
    case CORBA::tk_longlong:
      return whole<CORBA::LongLong>(any);
    case CORBA::tk_ulonglong:
      return unsigned64(any);
    case CORBA::tk_float:
      return real<CORBA::Float>(any);
    case CORBA::tk_double:
      return real<CORBA::Double>(any);
    case CORBA::tk_enum:
      return enumerated(any);
    case CORBA::tk_sequence:
      return list(any);
    default:
      return Nothing{};
  }
}

}  // namespace zk::agent::etcl
