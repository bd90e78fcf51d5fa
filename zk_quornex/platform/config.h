// The agent's configuration, as the library reads it. Both singletons are set
// up before the first call into the library and only read afterwards, on any
// thread.
#ifndef ZK_PLATFORM_CONFIG_H
#define ZK_PLATFORM_CONFIG_H

#include <string>

namespace NS_CORBA {

class CorbaBaseAgentConfig {
 public:
  // Never null. Owned by the platform.
  static CorbaBaseAgentConfig* Instance();

  virtual ~CorbaBaseAgentConfig() = default;

  // The EMS's name: the value of the first pair of every object name. The
  // reference stays good as long as the configuration is installed.
  virtual const std::string& EmsName() const = 0;

  // The EMS's software version, as shown to the NMS.
  virtual const std::string& EmsVersion() const = 0;
};

}  // namespace NS_CORBA

namespace NS_QUORCORBA {

class CorbaAgentConfig {
 public:
  // Never null. Owned by the platform.
  static CorbaAgentConfig* Instance();

  virtual ~CorbaAgentConfig() = default;

  // How notifications reach the NMS. The event cache is used with 2 and 3.
  virtual int GetNotifyModel() const = 0;

  // The most events that wait for one client; 0, negative and anything above
  // 10000 mean 10000.
  virtual long GetCachesize() const = 0;

  // Nominal length of a client's event list; 0 means 500.
  virtual long GetEventlistsize() const = 0;
};

}  // namespace NS_QUORCORBA

#endif
