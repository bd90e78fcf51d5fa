// Steps into values whose types are known only from their descriptions. Each
// moves the value's cursor, which belongs to the evaluation that opened it.
#ifndef ZK_AGENT_CONSTRAINT_DYNAMICVALUE_H
#define ZK_AGENT_CONSTRAINT_DYNAMICVALUE_H

#include "agent/constraint/path.h"

namespace zk::agent::etcl::dynamic {

// Each gives Nothing for what the value does not have, and may throw what the
// ORB throws for a value that does not fit its own description.
Value take(const Step& step, DynamicAny::DynAny_ptr from, Evaluation& evaluation);
Value elementAt(DynamicAny::DynAny_ptr list, CORBA::ULong index, Evaluation& evaluation);
std::optional<CORBA::ULong> lengthOf(DynamicAny::DynAny_ptr list);
bool showsDefault(DynamicAny::DynAny_ptr from, Evaluation& evaluation);

}  // namespace zk::agent::etcl::dynamic

#endif
