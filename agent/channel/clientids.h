// How proxies are numbered as clients of the event cache, and which of them are
// still to be served.
#ifndef ZK_AGENT_CHANNEL_CLIENTIDS_H
#define ZK_AGENT_CHANNEL_CLIENTIDS_H

#include <functional>
#include <utility>

#include "zk_quornex/platform/services.h"

namespace zk::agent {

// The session's id is in the upper bits, so that the cache's question about a
// client is one about its session. Proxy numbers run from 1 to 65535.
constexpr long PROXIES_PER_SESSION = 65536;

constexpr long clientIdOf(long session, long proxy) {
  return session * PROXIES_PER_SESSION + proxy;
}
constexpr long sessionOf(long clientId) { return clientId / PROXIES_PER_SESSION; }

// Answers the event cache from the live sessions: what a dead session left in the
// cache is gone with the next event.
class ClientValidity : public NS_SECURITY_SERVICE1::SecurityIF {
 public:
  // isAlive is asked for every client on every event, under locks of the cache:
  // it must be quick and must not call into the cache.
  explicit ClientValidity(std::function<bool(long session)> isAlive)
      : isAlive_(std::move(isAlive)) {}

  bool IsClientValid(long clientId, long, const char*, const char*, const char*) override {
    return isAlive_(sessionOf(clientId));
  }

 private:
  const std::function<bool(long)> isAlive_;
};

}  // namespace zk::agent

#endif
