#include "agent/orb/servanthome.h"

#include <algorithm>

namespace zk::agent {

namespace {

PortableServer::ObjectId objectId(const std::string& id) {
  PortableServer::ObjectId object;
  object.length(static_cast<CORBA::ULong>(id.size()));
  std::copy(id.begin(), id.end(), object.get_buffer());
  return object;
}

// Persistent, since the keys of a transient adapter tell when its process began,
// and as which.
PortableServer::POA_ptr makeAdapter(PortableServer::POA_ptr root) {
  CORBA::PolicyList policies;
  policies.length(4);
  policies[0] = root->create_id_assignment_policy(PortableServer::USER_ID);
  policies[1] = root->create_lifespan_policy(PortableServer::PERSISTENT);
  policies[2] = root->create_implicit_activation_policy(PortableServer::NO_IMPLICIT_ACTIVATION);
  policies[3] = root->create_servant_retention_policy(PortableServer::RETAIN);
  const PortableServer::POAManager_var manager = root->the_POAManager();
  PortableServer::POA_var adapter = root->create_POA(SessionAdapter::NAME, manager.in(), policies);
  for (CORBA::ULong i = 0; i < policies.length(); ++i) {
    policies[i]->destroy();
  }
  return adapter._retn();
}

}  // namespace

SessionAdapter::SessionAdapter(PortableServer::POA_ptr root) : poa_(makeAdapter(root)) {}

SessionAdapter::~SessionAdapter() {
  try {
    poa_->destroy(true, true);
  } catch (const CORBA::SystemException&) {
    // The ORB's shutdown took it down.
  }
}

CORBA::Object_ptr SessionAdapter::activate(PortableServer::Servant servant,
                                           const std::string& owner, std::string& id) {
  id = ObjectKeys::make();
  keys_.add(id, owner);
  try {
    const PortableServer::ObjectId object = objectId(id);
    poa_->activate_object_with_id(object, servant);
    return poa_->id_to_reference(object);
  } catch (...) {
    deactivate(id);
    throw;
  }
}

void SessionAdapter::deactivate(const std::string& id) {
  keys_.remove(id);
  try {
    poa_->deactivate_object(objectId(id));
  } catch (const PortableServer::POA::ObjectNotActive&) {
    // Already gone: the adapter itself was taken down.
  } catch (const CORBA::SystemException&) {
    // Likewise; the others are still to be closed.
  }
}

ServantHome::ServantHome(SessionAdapter& adapter, std::string owner)
    : adapter_(adapter), owner_(std::move(owner)) {}

CORBA::Object_ptr ServantHome::open(PortableServer::Servant servant, Ticket& ticket) {
  const MutexLock lock(mutex_);
  if (closed_) {
    throw CORBA::OBJECT_NOT_EXIST();
  }
  std::string& id = open_[++last_];
  ticket = last_;
  return adapter_.activate(servant, owner_, id);
}

void ServantHome::close(Ticket ticket) {
  std::map<Ticket, std::string>::node_type closing;
  {
    const MutexLock lock(mutex_);
    closing = open_.extract(ticket);
  }
  if (!closing.empty()) {
    adapter_.deactivate(closing.mapped());
  }
}

void ServantHome::closeAll() {
  std::map<Ticket, std::string> closing;
  {
    const MutexLock lock(mutex_);
    closed_ = true;
    closing.swap(open_);
  }
  for (const auto& [ticket, id] : closing) {
    adapter_.deactivate(id);
  }
}

}  // namespace zk::agent
