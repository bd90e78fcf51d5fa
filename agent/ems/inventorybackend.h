// The embedded EMS behind the platform's EMS services, and what the calling
// thread's request is about: those services take no arguments.
#ifndef ZK_AGENT_EMS_INVENTORYBACKEND_H
#define ZK_AGENT_EMS_INVENTORYBACKEND_H

#include <string>

#include "agent/ems/changes.h"
#include "agent/ems/inventory.h"
#include "zk_quornex/platform/default/emsbackend.h"

namespace zk::agent {

// A servant holds one of these on its stack while it calls the library's
// setters. They nest: the innermost of the thread counts, and the one outside
// it counts again when it ends. Lives and ends on one thread.
class EmsRequest {
 public:
  EmsRequest(ObjectKey target, std::string text, bool enforceUniqueness = false);
  ~EmsRequest();
  EmsRequest(const EmsRequest&) = delete;
  EmsRequest& operator=(const EmsRequest&) = delete;

  const ObjectKey& target() const { return target_; }
  const std::string& text() const { return text_; }
  bool enforceUniqueness() const { return enforceUniqueness_; }

  // The calling thread's, or null.
  static const EmsRequest* current();

 private:
  ObjectKey target_;
  std::string text_;
  bool enforceUniqueness_;
  const EmsRequest* outer_;
};

// The setters apply what the calling thread's EmsRequest says; without one they
// return Result::NO_REQUEST. A failing storage is traced and returned as
// Result::STORAGE_FAILURE: nothing is thrown. Safe on any thread.
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
  unsigned long copyText(const char* operation, long deviceId, std::string DeviceRecord::*text,
                         std::string& out) const;

  Inventory& inventory_;
};

}  // namespace zk::agent

#endif
