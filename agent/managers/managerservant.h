// What every manager is made of: labels, owners and native names of any object,
// its capabilities, its lists. Safe on any thread.
#ifndef ZK_AGENT_MANAGERS_MANAGERSERVANT_H
#define ZK_AGENT_MANAGERS_MANAGERSERVANT_H

#include <utility>
#include <vector>

#include "agent/ems/inventory.h"
#include "agent/managers/iterators.h"
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
  // inventory as above.
  ManagerServant(Paging paging, Inventory& inventory, OperationNames operations)
      : inventory_(inventory),
        common_(inventory),
        paging_(std::move(paging)),
        operations_(std::move(operations)) {}

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
  // The EMS keeps no additional information.
  void setAdditionalInfo(const globaldefs::NamingAttributes_T&, globaldefs::NVSList_T&) override {
    throw notImplemented();
  }

 protected:
  // Answers a list operation with what makeList gives.
  template <class ListOut, class IteratorOut, class MakeList>
  void answer(const char* operation, CORBA::ULong howMany, ListOut list, IteratorOut iterator,
              MakeList makeList) const {
    refusingFailures(operation, [&] { answerList(makeList(), howMany, paging_, list, iterator); });
  }

  const Inventory& inventory_;

 private:
  const CommonOperations common_;
  const Paging paging_;
  const OperationNames operations_;
};

}  // namespace zk::agent

#endif
