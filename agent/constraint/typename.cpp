#include "agent/constraint/typename.h"

namespace zk::agent::etcl {

Value typeName(Special which, CORBA::TypeCode_ptr type, Evaluation& evaluation) {
  try {
    return evaluation.keep(which == Special::typeId ? type->name() : type->id());
  } catch (const CORBA::TypeCode::BadKind&) {
    return Nothing{};
  }
}

}  // namespace zk::agent::etcl
