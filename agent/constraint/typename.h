// The names of types, as _type_id and _repos_id give them. No shared state.
#ifndef ZK_AGENT_CONSTRAINT_TYPENAME_H
#define ZK_AGENT_CONSTRAINT_TYPENAME_H

#include "agent/constraint/path.h"

namespace zk::agent::etcl {

// A text kept by the evaluation; Nothing for types without a name of their own.
// which is typeId or repositoryId.
Value typeName(Special which, CORBA::TypeCode_ptr type, Evaluation& evaluation);

}  // namespace zk::agent::etcl

#endif
