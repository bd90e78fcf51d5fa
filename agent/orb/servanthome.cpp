#include "agent/orb/servanthome.h"

namespace zk::agent {

ServantHome::ServantHome(PortableServer::POA_ptr poa)
    : poa_(PortableServer::POA::_duplicate(poa)) {}

CORBA::Object_ptr ServantHome::open(PortableServer::Servant servant, Ticket& ticket) {
  const MutexLock lock(mutex_);
  if (closed_) {
    throw CORBA::OBJECT_NOT_EXIST();
  }
  const PortableServer::ObjectId_var id = poa_->activate_object(servant);
  ticket = ++last_;
  open_.emplace(ticket, id.in());
  return poa_->id_to_reference(id.in());
}

void ServantHome::close(Ticket ticket) {
  std::map<Ticket, PortableServer::ObjectId>::node_type closing;
  {
    const MutexLock lock(mutex_);
    closing = open_.extract(ticket);
  }
  if (!closing.empty()) {
    deactivate(closing.mapped());
  }
}

void ServantHome::closeAll() {
  std::map<Ticket, PortableServer::ObjectId> closing;
  {
    const MutexLock lock(mutex_);
    closed_ = true;
    closing.swap(open_);
  }
  for (const auto& [ticket, id] : closing) {
    deactivate(id);
  }
}

void ServantHome::deactivate(const PortableServer::ObjectId& id) {
  try {
    poa_->deactivate_object(id);
  } catch (const PortableServer::POA::ObjectNotActive&) {
    // Already gone: the adapter itself was taken down.
  } catch (const CORBA::SystemException&) {
    // Likewise; the others are still to be closed.
  }
}

}  // namespace zk::agent
