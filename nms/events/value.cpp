#include "nms/events/value.h"

#include "nms/wire/text.h"

namespace zk::nms {
namespace {

using DynamicAny::DynAny_ptr;

// Real events nest four deep; ORBs copy values in time that doubles with depth.
constexpr int DEEPEST = 10;
const char* const UNREADABLE = "<unreadable>";
const char* const NAME_TYPE = "IDL:mtnm.tmforum.org/globaldefs/NamingAttributes_T:1.0";

CORBA::TypeCode_var withoutAlias(CORBA::TypeCode_ptr type) {
  CORBA::TypeCode_var result = CORBA::TypeCode::_duplicate(type);
  while (result->kind() == CORBA::tk_alias) {
    result = result->content_type();
  }
  return result;
}

bool isDeclaredName(CORBA::TypeCode_ptr type) {
  CORBA::TypeCode_var at = CORBA::TypeCode::_duplicate(type);
  while (at->kind() == CORBA::tk_alias) {
    if (std::string(at->id()) == NAME_TYPE) {
      return true;
    }
    at = at->content_type();
  }
  return false;
}

Json::Value readDynamic(DynAny_ptr value, const ValueReader& reader, int depth);

// Destroys what it holds: nobody else does.
class Opened {
 public:
  Opened(DynamicAny::DynAnyFactory_ptr factory, const CORBA::Any& value)
      : value_(factory->create_dyn_any(value)) {}
  ~Opened() { value_->destroy(); }
  Opened(const Opened&) = delete;
  Opened& operator=(const Opened&) = delete;

  DynAny_ptr get() const { return value_.in(); }

 private:
  DynamicAny::DynAny_var value_;
};

// The part under the cursor belongs to the whole, which destroys it.
Json::Value part(DynAny_ptr whole, CORBA::ULong index, const ValueReader& reader, int depth) {
  whole->seek(static_cast<CORBA::Long>(index));
  DynamicAny::DynAny_var component = whole->current_component();
  return readDynamic(component.in(), reader, depth + 1);
}

Json::Value readStruct(DynAny_ptr value, CORBA::TypeCode_ptr type, const ValueReader& reader,
                       int depth) {
  Json::Value result(Json::objectValue);
  for (CORBA::ULong i = 0; i < type->member_count(); ++i) {
    result[type->member_name(i)] = part(value, i, reader, depth);
  }
  return result;
}

Json::Value readList(DynAny_ptr value, const ValueReader& reader, int depth) {
  Json::Value result(Json::arrayValue);
  const CORBA::ULong length = value->component_count();
  for (CORBA::ULong i = 0; i < length; ++i) {
    result.append(part(value, i, reader, depth));
  }
  return result;
}

Json::Value readUnion(DynAny_ptr value, const ValueReader& reader, int depth) {
  DynamicAny::DynUnion_var whole = DynamicAny::DynUnion::_narrow(value);
  if (whole->has_no_active_member()) {
    return {};
  }
  CORBA::String_var name = whole->member_name();
  DynamicAny::DynAny_var member = whole->member();
  Json::Value result(Json::objectValue);
  result[name.in()] = readDynamic(member.in(), reader, depth + 1);
  return result;
}

Json::Value readText(DynAny_ptr value) {
  CORBA::String_var text = value->get_string();
  return asUtf8(text.in());
}

Json::Value readEnum(DynAny_ptr value) {
  DynamicAny::DynEnum_var whole = DynamicAny::DynEnum::_narrow(value);
  CORBA::String_var name = whole->get_as_string();
  return name.in();
}

Json::Value readAny(DynAny_ptr value, const ValueReader& reader, int depth) {
  CORBA::Any_var inner = value->get_any();
  return reader.readWithin(inner.in(), depth + 1);
}

Json::Value readScalar(DynAny_ptr value, CORBA::TCKind kind) {
  switch (kind) {
    case CORBA::tk_boolean:
      return Json::Value(value->get_boolean() != 0);
    case CORBA::tk_char:
      return asUtf8(std::string(1, static_cast<char>(value->get_char())));
    case CORBA::tk_octet:
      return value->get_octet();
    case CORBA::tk_short:
      return value->get_short();
    case CORBA::tk_ushort:
      return value->get_ushort();
    case CORBA::tk_long:
      return static_cast<Json::Int>(value->get_long());
    case CORBA::tk_ulong:
      return static_cast<Json::UInt>(value->get_ulong());
    case CORBA::tk_longlong:
      return static_cast<Json::Int64>(value->get_longlong());
    case CORBA::tk_ulonglong:
      return static_cast<Json::UInt64>(value->get_ulonglong());
    case CORBA::tk_float:
      return static_cast<double>(value->get_float());
    case CORBA::tk_double:
      return value->get_double();
    case CORBA::tk_null:
    case CORBA::tk_void:
      return {};
    default:
      return UNREADABLE;
  }
}

Json::Value readAsWhatItIs(DynAny_ptr value, CORBA::TypeCode_ptr type, const ValueReader& reader,
                           int depth) {
  switch (type->kind()) {
    case CORBA::tk_string:
      return readText(value);
    case CORBA::tk_enum:
      return readEnum(value);
    case CORBA::tk_struct:
    case CORBA::tk_except:
      return readStruct(value, type, reader, depth);
    case CORBA::tk_sequence:
    case CORBA::tk_array:
      return readList(value, reader, depth);
    case CORBA::tk_union:
      return readUnion(value, reader, depth);
    case CORBA::tk_any:
      return readAny(value, reader, depth);
    default:
      return readScalar(value, type->kind());
  }
}

Json::Value readDynamic(DynAny_ptr value, const ValueReader& reader, int depth) {
  if (depth > DEEPEST) {
    return "<nested too deeply>";
  }
  CORBA::TypeCode_var declared = value->type();
  const CORBA::TypeCode_var type = withoutAlias(declared.in());
  const Json::Value result = readAsWhatItIs(value, type.in(), reader, depth);
  return isDeclaredName(declared.in()) ? Json::Value(nameText(result)) : result;
}

bool isPair(const Json::Value& value) {
  return value.isObject() && value.size() == 2 && value.isMember("name") && value.isMember("value");
}

std::string pairText(const Json::Value& pair) {
  return valueText(pair["name"]) + "=" + valueText(pair["value"]);
}

std::string listText(const Json::Value& list) {
  const bool pairs = !list.empty() && isPair(list[0]);
  std::string result;
  for (const Json::Value& entry : list) {
    result += (result.empty() ? "" : ", ") + (pairs ? pairText(entry) : valueText(entry));
  }
  return pairs ? result : "[" + result + "]";
}

std::string structText(const Json::Value& value) {
  std::string result;
  for (const std::string& member : value.getMemberNames()) {
    result += (result.empty() ? "" : ", ") + member + "=" + valueText(value[member]);
  }
  return "{" + result + "}";
}

}  // namespace

Json::Value ValueReader::read(const CORBA::Any& value) const {
  try {
    return readWithin(value, 0);
  } catch (const CORBA::Exception&) {
    return UNREADABLE;
  }
}

Json::Value ValueReader::readWithin(const CORBA::Any& value, int depth) const {
  CORBA::TypeCode_var type = value.type();
  if (type->kind() == CORBA::tk_null || type->kind() == CORBA::tk_void) {
    return {};
  }
  const Opened opened(factory_.in(), value);
  return readDynamic(opened.get(), *this, depth);
}

std::string nameText(const Json::Value& value) {
  if (!value.isArray()) {
    return valueText(value);
  }
  Pairs pairs;
  for (const Json::Value& pair : value) {
    if (!isPair(pair)) {
      return valueText(value);
    }
    pairs.emplace_back(valueText(pair["name"]), valueText(pair["value"]));
  }
  return formatPairs(pairs);
}

std::string valueText(const Json::Value& value) {
  if (value.isArray()) {
    return listText(value);
  }
  if (value.isObject()) {
    return isPair(value) ? pairText(value) : structText(value);
  }
  return value.asString();
}

}  // namespace zk::nms
