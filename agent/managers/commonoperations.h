// The operations that every manager offers: labels, owners and native names of
// any object, and the manager's capabilities. Safe on any thread.
#ifndef ZK_AGENT_MANAGERS_COMMONOPERATIONS_H
#define ZK_AGENT_MANAGERS_COMMONOPERATIONS_H

#include <string>
#include <vector>

#include "agent/ems/inventory.h"
#include "zk_quornex/idl/managers.h"
#include "zk_quornex/idl/names.h"

namespace zk::agent {

// All throw Refusal. A change is stored, and reported to the NMSs, when the
// call returns.
class CommonOperations {
 public:
  // inventory must outlive this object and be the one behind the platform's EMS
  // services.
  explicit CommonOperations(Inventory& inventory) : inventory_(inventory) {}

  void setUserLabel(const globaldefs::NVSList_T& name, const char* label, bool unique) const;
  void setOwner(const globaldefs::NVSList_T& name, const char* owner) const;
  void setNativeName(const globaldefs::NVSList_T& name, const char* nativeName) const;

 private:
  Inventory& inventory_;
};

// Names of the operations that a manager serves, beyond its common ones.
using OperationNames = std::vector<const char*>;

common::CapabilityList_T capabilitiesOf(const OperationNames& operations);

// The common half of a manager's servant.
template <class Skeleton>
class ManagerServant : public virtual Skeleton, public virtual PortableServer::RefCountServantBase {
 public:
  ManagerServant(Inventory& inventory, OperationNames operations)
      : common_(inventory), operations_(std::move(operations)) {}

  void setNativeEMSName(const globaldefs::NamingAttributes_T& name, const char* text) override {
    common_.setNativeName(name, text);
  }
  void setUserLabel(const globaldefs::NamingAttributes_T& name, const char* text,
                    CORBA::Boolean enforceUniqueness) override {
    common_.setUserLabel(name, text, enforceUniqueness);
  }
  void setOwner(const globaldefs::NamingAttributes_T& name, const char* text) override {
    common_.setOwner(name, text);
  }
  void getCapabilities(common::CapabilityList_T_out capabilities) override {
    capabilities = new common::CapabilityList_T(capabilitiesOf(operations_));
  }
  void setAdditionalInfo(const globaldefs::NamingAttributes_T&, globaldefs::NVSList_T&) override;

 private:
  const CommonOperations common_;
  const OperationNames operations_;
};

// Refuses: the EMS keeps no additional information.
void refuseAdditionalInfo();

template <class Skeleton>
void ManagerServant<Skeleton>::setAdditionalInfo(const globaldefs::NamingAttributes_T&,
                                                 globaldefs::NVSList_T&) {
  refuseAdditionalInfo();
}

}  // namespace zk::agent

#endif
