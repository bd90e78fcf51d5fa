#include "tests/support/dump.h"

namespace zk::test {

namespace {

std::string text(const char* value) { return value != nullptr ? value : "(null)"; }

std::string typeName(CORBA::TypeCode_ptr type) {
  switch (type->kind()) {
    case CORBA::tk_alias:
    case CORBA::tk_struct:
    case CORBA::tk_enum:
    case CORBA::tk_except:
    case CORBA::tk_objref:
      return text(type->name());
    default:
      return "kind " + std::to_string(static_cast<int>(type->kind()));
  }
}

std::string enumText(CORBA::TypeCode_ptr type, CORBA::ULong value) {
  if (value >= type->member_count()) {
    return typeName(type) + ":" + std::to_string(value);
  }
  return typeName(type) + ":" + text(type->member_name(value));
}

// Enums of the notifications, each with its own type to be taken out by.
bool dumpEnum(const CORBA::Any& any, std::string& result) {
  notifications::ObjectType_T objectType;
  notifications::FileTransferStatus_T status;
  notifications::PerceivedSeverity_T severity;
  if (any >>= objectType) {
    result = enumText(notifications::_tc_ObjectType_T, objectType);
  } else if (any >>= status) {
    result = enumText(notifications::_tc_FileTransferStatus_T, status);
  } else if (any >>= severity) {
    result = enumText(notifications::_tc_PerceivedSeverity_T, severity);
  } else {
    return false;
  }
  return true;
}

bool dumpList(const CORBA::Any& any, CORBA::TypeCode_ptr type, std::string& result) {
  const globaldefs::NVSList_T* name = nullptr;
  const notifications::NVList_T* attributes = nullptr;
  if (any >>= name) {
    result = typeName(type) + ":" + dumpName(*name);
  } else if (any >>= attributes) {
    result = typeName(type) + ":" + dumpAttributes(*attributes);
  } else {
    return false;
  }
  return true;
}

bool dumpBasic(const CORBA::Any& any, CORBA::TypeCode_ptr type, std::string& result) {
  const char* string = nullptr;
  CORBA::Boolean boolean = false;
  CORBA::Short shortNumber = 0;
  CORBA::Long number = 0;
  if (type->kind() == CORBA::tk_null || type->kind() == CORBA::tk_void) {
    result = "empty";
  } else if (any >>= string) {
    result = "string:" + text(string);
  } else if (any >>= CORBA::Any::to_boolean(boolean)) {
    result = boolean ? "boolean:true" : "boolean:false";
  } else if (any >>= shortNumber) {
    result = "short:" + std::to_string(shortNumber);
  } else if (any >>= number) {
    result = "long:" + std::to_string(number);
  } else {
    return false;
  }
  return true;
}

std::string dumpProperty(const CosNotification::Property& property) {
  return text(property.name.in()) + "=" + dumpAny(property.value);
}

}  // namespace

globaldefs::NVSList_T makeName(std::initializer_list<NamePair> pairs) {
  globaldefs::NVSList_T name;
  name.length(static_cast<CORBA::ULong>(pairs.size()));
  CORBA::ULong position = 0;
  for (const NamePair& pair : pairs) {
    name[position].name = CORBA::string_dup(pair.first);
    name[position].value = CORBA::string_dup(pair.second);
    ++position;
  }
  return name;
}

std::string dumpName(const globaldefs::NVSList_T& name) {
  std::string result;
  for (CORBA::ULong position = 0; position < name.length(); ++position) {
    result += position == 0 ? "" : "|";
    result += text(name[position].name.in()) + "=" + text(name[position].value.in());
  }
  return result;
}

std::string dumpAny(const CORBA::Any& any) {
  const CORBA::TypeCode_var type = any.type();
  std::string result;
  if (dumpBasic(any, type.in(), result) || dumpEnum(any, result) ||
      dumpList(any, type.in(), result)) {
    return result;
  }
  return typeName(type.in());
}

std::string dumpAttributes(const notifications::NVList_T& attributes) {
  std::string result = "[";
  for (CORBA::ULong position = 0; position < attributes.length(); ++position) {
    result += position == 0 ? "" : "|";
    result += text(attributes[position].name.in()) + "=" + dumpAny(attributes[position].value);
  }
  return result + "]";
}

std::string dumpEvent(const CosNotification::StructuredEvent& event) {
  const CosNotification::FixedEventHeader& fixed = event.header.fixed_header;
  std::string result = "header=" + text(fixed.event_type.domain_name.in()) + "|" +
                       text(fixed.event_type.type_name.in()) + "|" + text(fixed.event_name.in()) +
                       "\n";
  const CosNotification::OptionalHeaderFields& variable = event.header.variable_header;
  for (CORBA::ULong position = 0; position < variable.length(); ++position) {
    result += "variable " + dumpProperty(variable[position]) + "\n";
  }
  for (CORBA::ULong position = 0; position < event.filterable_data.length(); ++position) {
    result += std::to_string(position) + " " + dumpProperty(event.filterable_data[position]) + "\n";
  }
  return result + "body=" + dumpAny(event.remainder_of_body) + "\n";
}

}  // namespace zk::test
