// The registry of services behind the contract's bundle manager. From the start
// it holds a "LogSvcInterface" that writes to the logs and a "SecurityIF" to
// which every client is valid. Safe on any thread.
#ifndef ZK_PLATFORM_DEFAULT_BUNDLES_H
#define ZK_PLATFORM_DEFAULT_BUNDLES_H

#include <memory>
#include <string>

#include "zk_quornex/platform/bundle.h"
#include "zk_quornex/platform/services.h"

namespace zk::platform {

// Registers the service under the name, in place of any other, or removes the
// name for null. Returns what was registered before.
std::shared_ptr<NS_BUNDLEMGR1::ServiceInterface> registerService(
    const std::string& name, std::shared_ptr<NS_BUNDLEMGR1::ServiceInterface> service);

// The same for the bundle manager's own logs; none is there from the start.
std::shared_ptr<NS_BUNDLEMGR1::LogProxy> registerLogProxy(
    const std::string& name, std::shared_ptr<NS_BUNDLEMGR1::LogProxy> log);

}  // namespace zk::platform

#endif
