// The embedded EMS behind the platform's EMS services. Safe on any thread.
#ifndef ZK_AGENT_EMS_INVENTORYBACKEND_H
#define ZK_AGENT_EMS_INVENTORYBACKEND_H

#include <string>

#include "agent/ems/changes.h"
#include "agent/ems/inventory.h"
#include "zk_quornex/platform/default/emsbackend.h"

namespace zk::agent {

// The setters apply what the calling thread's EmsRequest says; without one they
// return Result::NoRequest. A failing storage is traced and returned as
// Result::StorageFailure: nothing is thrown.
class InventoryBackend : public zk::platform::EmsBackend {
 public:
  // inventory must outlive this object.
  explicit InventoryBackend(Inventory& inventory) : inventory_(inventory) {}

  unsigned long setOwner() override;
  unsigned long setUserLabel() override;
  unsigned long getVersionOfDev(int deviceId, std::string& version) override;
  unsigned long getLocationOfDev(long deviceId, std::string& location) override;

 private:
  unsigned long apply(Attribute attribute);

  Inventory& inventory_;
};

}  // namespace zk::agent

#endif
