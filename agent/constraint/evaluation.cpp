#include "agent/constraint/evaluation.h"

namespace zk::agent::etcl {

namespace {

// What the ORB's own look into a value costs, and one into a part of it: it makes
// objects of both.
constexpr std::size_t DYNAMIC_COST = 200;
constexpr std::size_t PART_COST = 20;

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

Value character(const CORBA::Any& any, Evaluation& evaluation) {
  CORBA::Char value = 0;
  return (any >>= CORBA::Any::to_char(value))
             ? evaluation.keep(std::string(1, static_cast<char>(value)))
             : Value();
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

Value openKnown(const CORBA::Any& any, CORBA::TypeCode_ptr type, Evaluation& evaluation) {
  switch (type->kind()) {
    case CORBA::tk_char:
      return character(any, evaluation);
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

}  // namespace

CORBA::TypeCode_ptr withoutAlias(CORBA::TypeCode_ptr type) {
  CORBA::TypeCode_var bare = CORBA::TypeCode::_duplicate(type);
  while (bare->kind() == CORBA::tk_alias) {
    bare = bare->content_type();
  }
  return bare._retn();
}

Evaluation::~Evaluation() {
  parts_.clear();
  for (const auto& [any, value] : opened_) {
    value->destroy();
  }
}

Value Evaluation::open(const CORBA::Any& any) {
  const CORBA::Any* innermost = &any;
  CORBA::TypeCode_var own = any.type();
  CORBA::TypeCode_var type = withoutAlias(own);
  work_.spend(1);
  while (type->kind() == CORBA::tk_any) {
    if (!opensInner_) {
      return Opaque{};
    }
    if (!(*innermost >>= innermost)) {
      return Nothing{};
    }
    own = innermost->type();
    type = withoutAlias(own);
  }
  if (type->kind() == CORBA::tk_null || type->kind() == CORBA::tk_void) {
    return Nothing{};
  }
  const Value known = openKnown(*innermost, type, *this);
  return isNothing(known) ? openUnknown(*innermost) : known;
}

Value Evaluation::openUnknown(const CORBA::Any& any) {
  if (CORBA::is_nil(factory_)) {
    return Opaque{};
  }
  for (const auto& [known, value] : opened_) {
    if (known == &any) {
      return open(DynamicAny::DynAny::_duplicate(value));
    }
  }
  work_.spend(DYNAMIC_COST);
  DynamicAny::DynAny_var value = factory_->create_dyn_any(any);
  const auto& kept = opened_.emplace_back(&any, value._retn());
  return open(DynamicAny::DynAny::_duplicate(kept.second));
}

Value Evaluation::open(DynamicAny::DynAny_ptr part) {
  DynamicAny::DynAny_var held = part;
  work_.spend(PART_COST);
  CORBA::TypeCode_var own = held->type();
  CORBA::TypeCode_var type = withoutAlias(own);
  switch (type->kind()) {
    case CORBA::tk_any:
      return open(anys_.emplace_back(held->get_any()).in());
    case CORBA::tk_enum: {
      DynamicAny::DynEnum_var label = DynamicAny::DynEnum::_narrow(held);
      const CORBA::TypeCode_ptr kept = types_.emplace_back(type._retn());
      return Enumerated{label->get_as_ulong(), kept};
    }
    case CORBA::tk_struct:
    case CORBA::tk_except:
    case CORBA::tk_union:
    case CORBA::tk_sequence:
    case CORBA::tk_array: {
      const DynamicAny::DynAny_ptr kept = parts_.emplace_back(held._retn());
      return kept;
    }
    default:
      return simple(held, type->kind());
  }
}

Value Evaluation::simple(DynamicAny::DynAny_ptr part, CORBA::TCKind kind) {
  switch (kind) {
    case CORBA::tk_string: {
      CORBA::String_var text = part->get_string();
      return keep(text.in());
    }
    case CORBA::tk_char:
      return keep(std::string(1, static_cast<char>(part->get_char())));
    case CORBA::tk_boolean:
      return bool{part->get_boolean()};
    case CORBA::tk_octet:
      return std::int64_t{part->get_octet()};
    case CORBA::tk_short:
      return std::int64_t{part->get_short()};
    case CORBA::tk_ushort:
      return std::int64_t{part->get_ushort()};
    case CORBA::tk_long:
      return std::int64_t{part->get_long()};
    case CORBA::tk_ulong:
      return std::int64_t{part->get_ulong()};
    case CORBA::tk_longlong:
      return std::int64_t{part->get_longlong()};
    case CORBA::tk_ulonglong:
      return unsignedValue(part->get_ulonglong());
    case CORBA::tk_float:
      return static_cast<long double>(part->get_float());
    case CORBA::tk_double:
      return static_cast<long double>(part->get_double());
    default:
      return Opaque{};
  }
}

}  // namespace zk::agent::etcl
