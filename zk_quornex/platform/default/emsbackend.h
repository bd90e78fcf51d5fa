// The EMS behind the contract's static services.
#ifndef ZK_PLATFORM_DEFAULT_EMSBACKEND_H
#define ZK_PLATFORM_DEFAULT_EMSBACKEND_H

#include <string>

#include "zk_quornex/platform/ems.h"

namespace zk::platform {

// The standard backend knows no device and accepts no change: everything
// returns NO_EMS until a process installs its own. Called on any thread.
class EmsBackend {
 public:
  static constexpr unsigned long NO_EMS = 0x41180001;

  virtual ~EmsBackend() = default;
  virtual unsigned long setOwner() { return NO_EMS; }
  virtual unsigned long setUserLabel() { return NO_EMS; }
  virtual unsigned long getVersionOfDev(int, std::string&) { return NO_EMS; }
  virtual unsigned long getLocationOfDev(long, std::string&) { return NO_EMS; }
};

// Puts another backend in place; null puts the standard one back. See
// Replaceable.
EmsBackend* install(EmsBackend* replacement);

}  // namespace zk::platform

#endif
