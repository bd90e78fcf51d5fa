// The service interfaces that the library asks the bundle manager for.
#ifndef ZK_PLATFORM_SERVICES_H
#define ZK_PLATFORM_SERVICES_H

#include <memory>

#include "zk_quornex/platform/bundle.h"

namespace NS_LOG_SERVICE1 {

// Registered as "LogSvcInterface".
class LogSvcInterface : public NS_BUNDLEMGR1::ServiceInterface {
 public:
  // A log for this bundle, module and level name; null when there is none.
  virtual std::shared_ptr<NS_BUNDLEMGR1::LogProxy> GetLogger(const char* bundle, const char* module,
                                                             const char* level) = 0;
};

}  // namespace NS_LOG_SERVICE1

namespace NS_SECURITY_SERVICE1 {

// Registered as "SecurityIF". Called for every client on every pushed event:
// keep it cheap, never call back into the event cache from it, and do not throw.
// A service that was replaced is let go of by the next push to each class.
class SecurityIF : public NS_BUNDLEMGR1::ServiceInterface {
 public:
  // Whether the client is still to be served. The event cache passes the
  // client's id twice and three empty texts.
  virtual bool IsClientValid(long clientId, long sessionId, const char* user, const char* operation,
                             const char* object) = 0;
};

}  // namespace NS_SECURITY_SERVICE1

#endif
