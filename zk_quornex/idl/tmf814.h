// The generated stubs of every module in this folder, for whichever ORB the
// build chose. This is the one header that knows which ORB that is; nothing
// else in the system includes a stub header.
//
// Define ZK_TMF814_SERVANTS before including it to get the servant base
// classes (POA_...) as well.
#ifndef ZK_IDL_TMF814_H
#define ZK_IDL_TMF814_H

#if defined(__GNUC__)
#pragma GCC system_header  // generated code answers to the ORB's warnings, not to ours
#endif

#if defined(ZK_ORB_TAO)

#include <tao/AnyTypeCode/Any.h>
#include <tao/AnyTypeCode/TypeCode.h>
#include <tao/ORB.h>
#include <tao/corba.h>

#include <orbsvcs/CosNotificationC.h>
#include <orbsvcs/CosNotifyChannelAdminC.h>

#include "commonC.h"
#include "emsAdminC.h"
#include "emsMgrC.h"
#include "emsSessionC.h"
#include "emsSessionFactoryC.h"
#include "globaldefsC.h"
#include "managedElementC.h"
#include "managedElementManagerC.h"
#include "mtnmVersionC.h"
#include "multiLayerSubnetworkC.h"
#include "nmsSessionC.h"
#include "notificationsC.h"
#include "sessionC.h"
#include "topologicalLinkC.h"
#include "topologyMapC.h"
#include "transmissionParametersC.h"

#else  // omniORB puts stubs and servant bases in one header a module

#include <omniORB4/CORBA.h>

#include <COS/CosNotification.hh>
#include <COS/CosNotifyChannelAdmin.hh>

#include "common.hh"
#include "emsAdmin.hh"
#include "emsMgr.hh"
#include "emsSession.hh"
#include "emsSessionFactory.hh"
#include "globaldefs.hh"
#include "managedElement.hh"
#include "managedElementManager.hh"
#include "mtnmVersion.hh"
#include "multiLayerSubnetwork.hh"
#include "nmsSession.hh"
#include "notifications.hh"
#include "session.hh"
#include "topologicalLink.hh"
#include "topologyMap.hh"
#include "transmissionParameters.hh"

#endif

#endif

#if defined(ZK_TMF814_SERVANTS) && defined(ZK_ORB_TAO) && !defined(ZK_IDL_TMF814_SERVANTS_H)
#define ZK_IDL_TMF814_SERVANTS_H
#include <tao/PortableServer/PortableServer.h>

#include <orbsvcs/CosNotifyChannelAdminS.h>

#include "commonS.h"
#include "emsAdminS.h"
#include "emsMgrS.h"
#include "emsSessionFactoryS.h"
#include "emsSessionS.h"
#include "globaldefsS.h"
#include "managedElementManagerS.h"
#include "managedElementS.h"
#include "mtnmVersionS.h"
#include "multiLayerSubnetworkS.h"
#include "nmsSessionS.h"
#include "notificationsS.h"
#include "sessionS.h"
#include "topologicalLinkS.h"
#include "topologyMapS.h"
#endif
