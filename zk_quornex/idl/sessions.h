// Logging in, and both sides of a session.
#ifndef ZK_IDL_SESSIONS_H
#define ZK_IDL_SESSIONS_H

#include "zk_quornex/idl/corba.h"

#include ZK_STUBS(emsSession)
#include ZK_STUBS(emsSessionFactory)
#include ZK_STUBS(mtnmVersion)
#include ZK_STUBS(nmsSession)
#include ZK_STUBS(session)

#endif
