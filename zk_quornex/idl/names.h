// Names, and how operations fail.
#ifndef ZK_IDL_NAMES_H
#define ZK_IDL_NAMES_H

#include "zk_quornex/idl/corba.h"

#include ZK_STUBS(globaldefs)

#endif
