// What an operation answered, as one comparable text.
#ifndef ZK_TESTS_AGENT_SUPPORT_REFUSALS_H
#define ZK_TESTS_AGENT_SUPPORT_REFUSALS_H

#include <string>

#include "tests/support/exceptiontypes.h"
#include "zk_quornex/idl/names.h"

namespace zk::test {

inline std::string nameOfType(globaldefs::ExceptionType_T type) {
  return EXCEPTION_TYPES.at(static_cast<std::size_t>(type));
}

// "INVALID_INPUT: reason" of the refusal; "" when there was none.
template <class Operation>
std::string refusalBy(Operation operation) {
  try {
    operation();
    return "";
  } catch (const globaldefs::ProcessingFailureException& refused) {
    return nameOfType(refused.exceptionType) + ": " + std::string(refused.errorReason);
  }
}

// The type alone.
template <class Operation>
std::string refusalTypeBy(Operation operation) {
  const std::string text = refusalBy(operation);
  return text.substr(0, text.find(':'));
}

// Whether the object that the operation is called on is gone.
template <class Operation>
bool isGone(Operation operation) {
  try {
    operation();
    return false;
  } catch (const CORBA::OBJECT_NOT_EXIST&) {
    return true;
  }
}

}  // namespace zk::test

#endif
