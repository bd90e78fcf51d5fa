#include "tests/idl/typetext.h"

namespace zk::test {

namespace {

std::string memberText(CORBA::TypeCode_ptr type, CORBA::ULong index) {
  if (type->kind() == CORBA::tk_enum) {
    return type->member_name(index);
  }
  const CORBA::TypeCode_var member = type->member_type(index);
  return referenceText(member.in()) + " " + type->member_name(index);
}

std::string membersText(CORBA::TypeCode_ptr type, const char* separator) {
  std::string result = "{";
  for (CORBA::ULong index = 0; index < type->member_count(); ++index) {
    result += (index == 0 ? "" : separator) + memberText(type, index);
  }
  return result + "}";
}

std::string sequenceText(CORBA::TypeCode_ptr type) {
  const CORBA::TypeCode_var element = type->content_type();
  const std::string bound = type->length() == 0 ? "" : "," + std::to_string(type->length());
  return "sequence<" + referenceText(element.in()) + bound + ">";
}

}  // namespace

std::string standardId(const std::string& path) { return "IDL:mtnm.tmforum.org/" + path + ":1.0"; }

std::string referenceText(CORBA::TypeCode_ptr type) {
  switch (type->kind()) {
    case CORBA::tk_string:
      return "string";
    case CORBA::tk_boolean:
      return "boolean";
    case CORBA::tk_short:
      return "short";
    case CORBA::tk_ulong:
      return "ulong";
    case CORBA::tk_any:
      return "any";
    case CORBA::tk_sequence:
      return sequenceText(type);
    case CORBA::tk_struct:
    case CORBA::tk_enum:
    case CORBA::tk_alias:
    case CORBA::tk_objref:
      return type->name();
    default:
      return "kind " + std::to_string(static_cast<int>(type->kind()));
  }
}

std::string definitionText(CORBA::TypeCode_ptr type) {
  switch (type->kind()) {
    case CORBA::tk_struct:
      return "struct " + membersText(type, "; ");
    case CORBA::tk_except:
      return "exception " + membersText(type, "; ");
    case CORBA::tk_enum:
      return "enum " + membersText(type, ", ");
    case CORBA::tk_objref:
      return "interface";
    case CORBA::tk_alias: {
      const CORBA::TypeCode_var content = type->content_type();
      return "alias " + referenceText(content.in());
    }
    default:
      return referenceText(type);
  }
}

}  // namespace zk::test
