// Type codes as text, one line a type, so that a whole type can be compared at
// once with what travels on the wire.
#ifndef ZK_TESTS_IDL_TYPETEXT_H
#define ZK_TESTS_IDL_TYPETEXT_H

#include <string>

#include "zk_quornex/idl/corba.h"

namespace zk::test {

// "IDL:mtnm.tmforum.org/<path>:1.0"
std::string standardId(const std::string& path);

// How a type is referred to by another: a named type by its name, without its
// definition, and an unnamed one in full:
//   string, boolean, short, ulong, any
//   sequence<NameAndStringValue_T>
//   NVSList_T
std::string referenceText(CORBA::TypeCode_ptr type);

// What a named type is made of:
//   struct {string name; string value}
//   exception {ExceptionType_T exceptionType; string errorReason}
//   enum {CD_UNI, CD_BI}
//   alias sequence<NameAndStringValue_T>
//   interface
std::string definitionText(CORBA::TypeCode_ptr type);

}  // namespace zk::test

#endif
