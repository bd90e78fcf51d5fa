// The ORB that the build chose. This is the one header that knows which one it
// is; the headers beside it include the stubs of a few modules each through
// ZK_STUBS, so that a change to one module concerns those who use it.
#ifndef ZK_IDL_CORBA_H
#define ZK_IDL_CORBA_H

#if defined(__GNUC__)
#pragma GCC system_header  // the ORB's headers answer to its warnings, not to ours
#endif

#if defined(ZK_ORB_TAO)

#include <tao/AnyTypeCode/Any.h>
#include <tao/AnyTypeCode/TypeCode.h>
#include <tao/DynamicAny/DynamicAny.h>
#include <tao/ORB.h>
#include <tao/PortableServer/PortableServer.h>
#include <tao/corba.h>

// With the servant base classes, which include the stubs.
#define ZK_STUBS(module) ZK_STUBS_NAMED(module##S.h)

#else  // omniORB puts stubs and servant bases in one header a module

#include <omniORB4/CORBA.h>

#define ZK_STUBS(module) ZK_STUBS_NAMED(module.hh)

#endif

#define ZK_STUBS_NAMED(header) ZK_STUBS_QUOTED(header)
#define ZK_STUBS_QUOTED(header) #header

#endif
