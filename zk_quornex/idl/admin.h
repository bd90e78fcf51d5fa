// Changes of the embedded EMS on demand.
#ifndef ZK_IDL_ADMIN_H
#define ZK_IDL_ADMIN_H

#include "zk_quornex/idl/corba.h"

#include ZK_STUBS(emsAdmin)

#endif
