// The contents of those anys that events usually carry, without the cost of
// looking at them through their type description. No shared state.
#ifndef ZK_AGENT_CONSTRAINT_KNOWNANY_H
#define ZK_AGENT_CONSTRAINT_KNOWNANY_H

#include "agent/constraint/value.h"

namespace zk::agent::etcl {

// A simple value, an enumeration of ours, a list of ours, or Nothing. type is
// the any's, without aliases. The value points into any.
Value openKnown(const CORBA::Any& any, CORBA::TypeCode_ptr type);

}  // namespace zk::agent::etcl

#endif
