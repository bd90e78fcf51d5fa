// The agent's settings behind the contract's configuration singletons.
#ifndef ZK_PLATFORM_DEFAULT_CONFIGURATION_H
#define ZK_PLATFORM_DEFAULT_CONFIGURATION_H

#include <string>

#include "zk_quornex/platform/config.h"

namespace zk::platform {

struct Configuration {
  std::string emsName = "Quor/1";
  std::string emsVersion = "1.0";
  int notifyModel = 2;       // 2 and 3 use the event cache
  long cachesize = 10000;    // events waiting for one client, at most
  long eventlistsize = 500;  // nominal length of a client's event list
};

// Fills the standard configuration. Call it before any thread reads it.
void configure(const Configuration& configuration);

// Puts another configuration in place; null puts the standard one back.
// Returns what was in place before. See Replaceable.
NS_CORBA::CorbaBaseAgentConfig* install(NS_CORBA::CorbaBaseAgentConfig* replacement);
NS_QUORCORBA::CorbaAgentConfig* install(NS_QUORCORBA::CorbaAgentConfig* replacement);

}  // namespace zk::platform

#endif
