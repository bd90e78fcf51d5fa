// The managers and the records that they answer with.
#ifndef ZK_IDL_MANAGERS_H
#define ZK_IDL_MANAGERS_H

#include "zk_quornex/idl/corba.h"

#include ZK_STUBS(common)
#include ZK_STUBS(emsMgr)
#include ZK_STUBS(managedElement)
#include ZK_STUBS(managedElementManager)
#include ZK_STUBS(multiLayerSubnetwork)
#include ZK_STUBS(topologicalLink)
#include ZK_STUBS(topologyMap)
#include ZK_STUBS(transmissionParameters)

#endif
