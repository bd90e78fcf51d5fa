// The EMS's services that the library calls, and its device record. All
// operations return 0 for success and the EMS's own code otherwise; all are
// safe on any thread.
#ifndef ZK_PLATFORM_EMS_H
#define ZK_PLATFORM_EMS_H

#include <string>

// One device of the EMS's topology.
struct Device {
  long id = 0;              // also the managed element's id
  std::string name;         // as the EMS shows it
  std::string productName;  // type of the device
};

// The managed-object service. Its operations take no arguments: what they
// apply to is known to the EMS from the request that the calling thread is
// serving.
class EMFMOMgrI {
 public:
  static unsigned long setOwner();
  static unsigned long setUserLabel();
};

// The topology service. The out-parameter is written on success only.
class EMFTopoI {
 public:
  static unsigned long getVersionOfDev(int deviceId, std::string& version);
  static unsigned long getLocationOfDev(long deviceId, std::string& location);
};

#endif
