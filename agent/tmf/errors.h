// How the agent refuses: result codes and failures of the EMS as the one user
// exception of the interface, with a reason that helps whoever reads it. No
// state; any thread may call.
#ifndef ZK_AGENT_TMF_ERRORS_H
#define ZK_AGENT_TMF_ERRORS_H

#include <exception>
#include <string>

#include "zk_quornex/idl/names.h"

namespace zk::agent {

using Refusal = globaldefs::ProcessingFailureException;

Refusal refusal(globaldefs::ExceptionType_T type, const std::string& reason);

// The standard's answer for an operation that is not offered: without a reason.
Refusal notImplemented();

// What a result code of the library means to a client. A malformed name or text
// is invalid input; a well-formed name of something that is not here, another
// EMS's included, is an entity not found.
globaldefs::ExceptionType_T exceptionTypeOf(unsigned long code);

// What a result code means, in words, or the code itself.
std::string reasonOf(unsigned long code);

// The refusal for a code that an operation on this object returned; about says
// which, as the name or in words.
Refusal refusalOf(unsigned long code, const globaldefs::NVSList_T& name);
Refusal refusalOf(unsigned long code, const std::string& about);

// The name as one printable line for reasons and logs: EMS=Quor/1,
// ManagedElement=7. Long names are cut.
std::string printableName(const globaldefs::NVSList_T& name);

// Logs what went wrong and gives the refusal that the client sees instead: the
// details of the EMS's store are not its business.
Refusal internalError(const char* operation, const std::exception& failure);

// Runs a servant's operation; a failure that is no CORBA exception becomes a
// refusal, so that nothing else leaves the servant.
template <class Body>
auto refusingFailures(const char* operation, Body body) -> decltype(body()) {
  try {
    return body();
  } catch (const CORBA::Exception&) {
    throw;
  } catch (const std::exception& failure) {
    throw internalError(operation, failure);
  }
}

}  // namespace zk::agent

#endif
