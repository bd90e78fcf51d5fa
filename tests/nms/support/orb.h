// The ORB of the test process, listening on loopback only.
#ifndef ZK_TESTS_NMS_SUPPORT_ORB_H
#define ZK_TESTS_NMS_SUPPORT_ORB_H

#include "zk_quornex/idl/corba.h"

namespace zk::test {

CORBA::ORB_ptr testOrb();               // borrowed
PortableServer::POA_ptr testRootPoa();  // borrowed; listening

// Activates the servant, which poa owns from now on.
template <class Interface>
typename Interface::_ptr_type activate(PortableServer::POA_ptr poa,
                                       PortableServer::ServantBase* servant) {
  PortableServer::Servant_var<PortableServer::ServantBase> owner(servant);
  PortableServer::ObjectId_var id = poa->activate_object(servant);
  CORBA::Object_var object = poa->id_to_reference(id.in());
  return Interface::_narrow(object.in());
}

// A new entry at the list's end.
template <class List>
auto& added(List& list) {
  const CORBA::ULong last = list.length();
  list.length(last + 1);
  return list[last];
}

}  // namespace zk::test

#endif
